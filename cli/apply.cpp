#include <algorithm>
#include <memory>
#include <optional>
#include <ostream>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/progress_bar.h"
#include "cli/values.h"
#include "host/sim/line_protocol.h"
#include "host/sim/tcp_service.h"
#include "host/sim/utf8.h"
#include "text/excerpt.h"

namespace orv::cli {
namespace {

using sim::ToUtf8;

sim::TcpMibSapService::Endpoint ParseEndpoint(const std::string& text) {
    const std::size_t colon = text.rfind(':');
    sim::TcpMibSapService::Endpoint endpoint;
    try {
        if (colon == std::string::npos || colon == 0)
            throw ValueError(L"no port");
        endpoint.port = static_cast<std::uint16_t>(ParseNumber(sim::FromUtf8(text.substr(colon + 1)), 16, false));
    } catch (const ValueError&) {
    }
    if (endpoint.port == 0)
        throw Failure(status::kUsage, "--to wants HOST:PORT, not " + sim::Excerpt(text));
    const std::string host = text.substr(0, colon);
    endpoint.host = host == "localhost" ? "127.0.0.1" : host;
    if (host.starts_with('[') && host.ends_with(']'))
        endpoint.host = host.substr(1, host.size() - 2);
    else if (endpoint.host.find_first_not_of("0123456789.") != std::string::npos)
        throw Failure(status::kUsage, "--to wants a numeric address or localhost, not " + sim::Excerpt(host));
    return endpoint;
}

/// What went over the line last, for the report of a failure.
class LastTraffic {
  public:
    void Note(std::wstring_view line) {
        if (line.starts_with(L'!'))
            refusal_ = "transport error " + ToUtf8(text::Excerpt(line.substr(2)));
        const auto parsed = sim::ParseLine(ToUtf8(line.substr(2)));
        if (!parsed)
            return;
        if (line.starts_with(L'>')) {
            request_ = *parsed;
            refusal_.clear();
        } else if (line.starts_with(L'<') && parsed->verb == "ERR") {
            refusal_ = "the device answers " + sim::Excerpt(Joined(parsed->fields));
        }
    }
    /// "connecting", "/X/Y[2]".
    std::string Step() const {
        if (request_.verb.empty() || request_.verb == "HELLO")
            return "connecting";
        if (request_.verb == "SESSION")
            return "starting the session";
        if (request_.verb == "END")
            return "ending the session";
        return request_.fields.empty() ? request_.verb : ToUtf8(text::Excerpt(request_.fields[0]));
    }
    const std::string& Refusal() const { return refusal_; }

  private:
    static std::string Joined(const std::vector<std::wstring>& fields) {
        std::string joined;
        for (const std::wstring& field : fields)
            joined += (joined.empty() ? "" : " ") + ToUtf8(field);
        return fields.empty() ? "with an error without a code" : joined;
    }

    sim::ProtocolLine request_;
    std::string refusal_;
};

/// One interactive save.
class Application {
  public:
    Application(DeviceFile& file, const ApplyOptions& options)
        : file_(file), options_(options),
          service_(std::make_shared<sim::TcpMibSapService>(file.Platform().pump, ParseEndpoint(options.to))) {
        service_->SetTraffic([this](std::wstring_view line) { traffic_.Note(line); });
        file_.Host().SetService(service_);
        if (options.timeout.count() > 0)
            file_.Platform().pump.SetLimit(options.timeout);
    }
    ~Application() { file_.Host().SetService(nullptr); }
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// How many parameters were written. Raises Failure unless all were, and the session was ended.
    std::size_t Run() {
        total_ = file_.Model().Plan().writes.size();
        if (!Save())
            Fail(Stop(file_.Model().LastSave().stoppedAt));
        if (file_.State().common->lastTransportError != 0)
            Fail("all parameters accepted, but the session did not end, so what the device holds is not known");
        return file_.Model().LastSave().written;
    }

  private:
    bool Save() {
        std::optional<ProgressBar> bar;
        if (options_.progress != nullptr)
            bar.emplace(file_.Host().Progress(), *options_.progress);
        try {
            return file_.Model().Save(true);
        } catch (const Error& error) {
            bar.reset();
            Fail(Stop({}) + ": " + ToUtf8(text::Excerpt(error.Description())));
        } catch (const std::runtime_error&) {
            // The wait's limit; nothing else raises this.
            bar.reset();
            Fail(Stop({}) + ": no answer within " + std::to_string(options_.timeout.count()) + " s");
        }
    }

    /// Each parameter that was written moved the display once.
    std::string Stop(const std::wstring& entry) {
        return "stopped at " + (entry.empty() ? traffic_.Step() : ToUtf8(text::Excerpt(entry))) + ", " +
               std::to_string(file_.Host().Progress().percents.size()) + " of " + std::to_string(total_) +
               " parameters written";
    }

    [[noreturn]] void Fail(std::string line) {
        if (!traffic_.Refusal().empty())
            line += ": " + traffic_.Refusal();
        else if (file_.Platform().boxes.shown.empty() && file_.State().common->lastTransportError != 0)
            line += ": transport error " + std::to_string(file_.State().common->lastTransportError);
        for (const platform::MessageBox& box : file_.Platform().boxes.shown)
            line += "; " + ToUtf8(box.text);
        throw Failure(status::kDevice, file_.Name() + ": " + sim::Excerpt(options_.to) + ": " + line);
    }

    DeviceFile& file_;
    const ApplyOptions& options_;
    LastTraffic traffic_;
    std::shared_ptr<sim::TcpMibSapService> service_;
    std::size_t total_ = 0;
};

} // namespace

void ApplyToDevice(DeviceFile& file, const ApplyOptions& options, std::ostream& out, std::ostream& err) {
    if (!options.quiet)
        PrintLeftOut(file, file.Model().Plan().leftOut, err);
    const std::size_t written = Application(file, options).Run();
    if (!options.quiet)
        out << written << " parameters written to " << options.to << '\n';
}

} // namespace orv::cli
