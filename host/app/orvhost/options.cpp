#include "host/app/orvhost/options.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <sstream>

#include "host/sim/utf8.h"
#include "text/version.h"

namespace orv::host {
namespace {

template <typename Number>
std::optional<Number> WholeNumber(std::string_view text, int base = 10) {
    Number number{};
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (failure != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

/// Cuts the text before the next colon off `rest`.
std::string_view TakeField(std::string_view& rest) {
    const auto end = std::min(rest.find(':'), rest.size());
    const auto field = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return field;
}

std::optional<std::int32_t> ErrorNumber(std::string_view text) {
    if (text.starts_with("0x") || text.starts_with("0X")) {
        if (const auto bits = WholeNumber<std::uint32_t>(text.substr(2), 16))
            return static_cast<std::int32_t>(*bits);
        return std::nullopt;
    }
    return WholeNumber<std::int32_t>(text);
}

std::filesystem::path PathOf(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

bool ParseSize(std::string_view text, Options& options) {
    const auto cross = text.find('x');
    if (cross == std::string_view::npos)
        return false;
    const auto width = WholeNumber<int>(text.substr(0, cross));
    const auto height = WholeNumber<int>(text.substr(cross + 1));
    if (!width || !height || *width < 320 || *height < 240 || *width > 8192 || *height > 8192)
        return false;
    options.width = *width;
    options.height = *height;
    return true;
}

/// An option whose text `parse` takes apart; a text that it refuses is reported as not of the form `form`.
template <typename Parse>
void AddParsed(CLI::App& app, const std::string& name, const std::string& form, const std::string& help, Parse parse) {
    app.add_option_function<std::vector<std::string>>(
           name,
           [name, form, parse](const std::vector<std::string>& texts) {
               for (const std::string& text : texts) {
                   if (!parse(text))
                       throw CLI::ValidationError(
                           name, std::string("\"").append(sim::Excerpt(text)).append("\" is not ").append(form));
               }
           },
           help)
        ->type_name(form)
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void Declare(CLI::App& app, Options& options) {
    const auto path = [&app](const std::string& name, std::filesystem::path& target, const std::string& help) {
        return app.add_option_function<std::string>(
            name, [&target](const std::string& text) { target = PathOf(text); }, help);
    };
    app.set_version_flag("--version", std::string("orvhost ") + text::kVersion);
    path("FILE", options.file, "Device description to open");
    AddParsed(
        app, "--device-at", "HOST:PORT", "Where the device listens; without it, it is simulated in this process",
        [&options](const std::string& text) { return (options.deviceAt = ParseDeviceAddress(text)).has_value(); });
    app.add_option("--cluster", options.cluster, "Current cluster")->check(CLI::Range(0, 1023));
    app.add_option("--device", options.device, "Current device; 0 is the master")->check(CLI::Range(0, 31));
    app.add_option("--level", options.level, "Access level of the configuration")->check(CLI::Range(0, 3));
    AddParsed(app, "--language", "DIGITS", "Language of the guide, four hexadecimal digits",
              [&options](const std::string& text) {
                  options.language = text.size() == 4 ? WholeNumber<std::int32_t>(text, 16) : std::nullopt;
                  return options.language.has_value();
              });
    path("--play", options.script, "Play a script, then end");
    path("--shots", options.shots, "Folder of the pictures that a script takes");
    path("--component", options.component, "Load the component from this file, registered or not");
    AddParsed(app, "--size", "WIDTHxHEIGHT", "Size of the window",
              [&options](const std::string& text) { return ParseSize(text, options); });
    AddParsed(app, "--fail", "CALL[:N]:NUMBER[:TEXT]", "Let the n-th call of a host object fail",
              [&options](const std::string& text) {
                  const auto fault = ParseCallFault(text);
                  if (fault)
                      options.faults.push_back(*fault);
                  return fault.has_value();
              });
    app.add_flag_callback(
        "--no-extender", [&options] { options.extender = false; }, "Host the control without an extender object");
    app.add_flag("--trace", options.trace, "Print every call of a host object");
    app.add_option("--time-limit", options.timeLimitSeconds,
                   "Seconds that a command of a script may go on without a line in the log")
        ->check(CLI::Range(1, 3600));
}

} // namespace

std::optional<CallFault> ParseCallFault(std::string_view text) {
    CallFault fault;
    fault.call = TakeField(text);
    auto rest = text;
    // "A:2:5" is the second call failing with 5, "A:5" and "A:5:Why" the first.
    const auto first = TakeField(rest);
    auto behind = rest;
    const auto second = ErrorNumber(TakeField(behind));
    const auto count = WholeNumber<std::int64_t>(first);
    if (count && second) {
        fault.nth = *count;
        fault.number = *second;
        rest = behind;
    } else if (const auto number = ErrorNumber(first)) {
        fault.number = *number;
    } else {
        return std::nullopt;
    }
    fault.description = rest.empty() ? L"Failure asked for on the command line" : sim::FromUtf8(rest);
    const auto dot = fault.call.find('.');
    const bool named = dot != std::string::npos && dot > 0 && dot + 1 < fault.call.size();
    if (!named || fault.nth < 1 || fault.number == 0)
        return std::nullopt;
    return fault;
}

std::optional<DeviceAddress> ParseDeviceAddress(std::string_view text) {
    const auto colon = text.rfind(':');
    if (colon == std::string_view::npos || colon == 0)
        return std::nullopt;
    const auto port = WholeNumber<std::uint16_t>(text.substr(colon + 1));
    if (!port || *port == 0)
        return std::nullopt;
    return DeviceAddress{std::string(text.substr(0, colon)), *port};
}

Options ParseOptions(const std::vector<std::string>& arguments) {
    Options options;
    CLI::App app("Bench host: shows the output-format add-on over a device description", "orvhost");
    Declare(app, options);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError& outcome) {
        options.status = outcome.get_exit_code() == 0 ? 0 : 2;
        std::ostringstream out;
        if (*options.status == 0)
            app.exit(outcome, out);
        else
            out << sim::Excerpt(outcome.what()) << "; orvhost --help tells more";
        options.message = out.str();
    }
    return options;
}

} // namespace orv::host
