// orvdevice: a simulated device in a process of its own, and the question what one holds.
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "host/app/library_search.h"
#include "host/sim/ask_device.h"
#include "host/sim/device_server.h"
#include "host/sim/utf8.h"
#include "platform/system_file.h"
#include "text/error.h"
#include "text/version.h"

namespace {

using namespace orv::sim;

constexpr int kUsageError = 2;

struct Options {
    std::string file;
    std::int16_t cluster = 0;
    std::int16_t device = 0;
    std::uint16_t port = 0;
    std::int64_t delay = 0;
    std::vector<std::string> failSet;
    FaultCount failConnect = 0;
    bool failSession = false;
    std::int64_t dropAfter = -1;
    std::int64_t silentAfter = -1;
    std::vector<std::string> ask;
    std::string saveOnExit;
};

/// What goes wrong for the user, in one line.
int Complain(const std::string& line) {
    std::cerr << "orvdevice: " << line << '\n';
    return kUsageError;
}

/// Bytes as they are, and no failure without its reason.
void Print(const std::string& bytes) {
    try {
        orv::platform::SystemFile::StandardOutput().Write(bytes);
    } catch (const orv::Error& error) {
        throw std::runtime_error("standard output cannot be written: " + ToUtf8(error.Description()));
    }
}

void Declare(CLI::App& app, Options& options) {
    app.set_version_flag("--version", std::string("orvdevice ") + orv::text::kVersion);
    app.add_option("file", options.file, "Device description file");
    app.add_option("--cluster", options.cluster, "Cluster of the device");
    app.add_option("--device", options.device, "Index of the device in its cluster, 0 is the master");
    app.add_option("--port", options.port, "Port to listen on, 0 for any free one");
    app.add_option("--delay", options.delay, "Milliseconds before each answer")->check(CLI::Range(0, 3600000));
    app.add_option("--fail-set", options.failSet,
                   "ENTRY:CODE[:TIMES]: answer sets of ENTRY with CODE; ENTRY may be * or #k, the k-th set")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("--fail-connect", options.failConnect, "Refuse to connect, [TIMES] times or always")
        ->expected(0, 1)
        ->default_str("-1")
        ->check(CLI::Range(std::int64_t{-1}, std::int64_t{1000000}));
    app.add_flag("--fail-session", options.failSession, "Refuse to start a session");
    app.add_option("--drop-after", options.dropAfter, "Lose the connection, once, after so many answered requests")
        ->check(CLI::Range(0, 1000000));
    app.add_option("--silent-after", options.silentAfter, "Answer no more after so many answered requests")
        ->check(CLI::Range(0, 1000000));
    app.add_option("--ask", options.ask, "HOST:PORT NUMBER[:ELEMENT]...: print the values that a running device holds")
        ->expected(2, 10000);
    app.add_option("--save-on-exit", options.saveOnExit,
                   "Write the device's contents to this file at the end, - for standard output");
}

int Ask(const std::vector<std::string>& words) {
    const std::size_t colon = words[0].rfind(':');
    std::uint16_t port = 0;
    if (colon == std::string::npos || !CLI::detail::lexical_cast(words[0].substr(colon + 1), port))
        return Complain("--ask wants HOST:PORT, not " + Excerpt(words[0]));
    std::vector<Question> questions;
    for (std::size_t i = 1; i < words.size(); ++i) {
        const auto question = ParseQuestion(words[i]);
        if (!question)
            return Complain("--ask wants NUMBER or NUMBER:ELEMENT, not " + Excerpt(words[i]));
        questions.push_back(*question);
    }
    try {
        std::string lines;
        for (const std::string& answer : AskDevice(words[0].substr(0, colon), port, questions))
            lines += Printable(answer) + '\n';
        Print(lines);
    } catch (const AskError& error) {
        return Complain(error.what());
    }
    return 0;
}

/// Empty when the options make sense.
std::string PlanFaults(const Options& options, FaultPlan& plan) {
    plan.delay = std::chrono::milliseconds(options.delay);
    plan.failConnect = options.failConnect;
    plan.failSession = options.failSession;
    if (options.dropAfter >= 0)
        plan.dropAfter = options.dropAfter;
    if (options.silentAfter >= 0)
        plan.silentAfter = options.silentAfter;
    for (const std::string& text : options.failSet) {
        const auto fault = ParseSetFault(text);
        if (!fault)
            return "--fail-set wants ENTRY:CODE or ENTRY:CODE:TIMES, not " + Excerpt(text);
        plan.sets.push_back(*fault);
    }
    return {};
}

/// `system` with what the device holds at the end in place of what it began with.
void Save(SystemDescription system, const SimDevice& device, const std::string& file) {
    for (DeviceDescription& candidate : system.devices)
        if (candidate.Address() == device.Address())
            candidate = device.Store().Contents();
    if (file == "-")
        Print(FormatDescription(system));
    else
        SaveDescription(system, std::filesystem::u8path(file));
}

int Serve(const Options& options) {
    FaultPlan plan;
    if (const std::string wrong = PlanFaults(options, plan); !wrong.empty())
        return Complain(wrong);
    const SystemDescription system = LoadDescription(std::filesystem::u8path(options.file));
    const DeviceDescription* found = system.Find(options.cluster, options.device);
    if (!found)
        return Complain(Excerpt(options.file) + ": there is no device " + std::to_string(options.device) +
                        " in cluster " + std::to_string(options.cluster));
    const auto device = std::make_shared<SimDevice>(*found, plan);
    DeviceServer server(device, options.port);
    server.StopOnSignals();
    // Whoever started this reads the port from a pipe.
    std::cout << "listening on 127.0.0.1:" << server.Port() << std::endl;
    server.Run();
    if (!options.saveOnExit.empty())
        Save(system, *device, options.saveOnExit);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    orv::host::SearchSystemLibrariesOnly();
    orv::platform::FailWritesQuietly();
    CLI::App app("Simulated device", "orvdevice");
    Options options;
    Declare(app, options);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return error.get_exit_code() == 0 ? app.exit(error)
                                          : Complain(Excerpt(error.what()) + "; orvdevice --help tells more");
    }
    if (options.ask.empty() && options.file.empty())
        return Complain("a device description file is wanted");
    try {
        return options.ask.empty() ? Serve(options) : Ask(options.ask);
    } catch (const FileError& error) {
        return Complain(error.what());
    } catch (const std::bad_alloc&) {
        return Complain(Excerpt(options.file) + ": there is not enough memory for it");
    } catch (const std::exception& error) {
        return Complain(Excerpt(error.what()));
    }
}
