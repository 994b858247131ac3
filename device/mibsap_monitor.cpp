#include "device/mibsap_monitor.h"

#include <new>
#include <utility>

#include "device/parameter_access.h"
#include "platform/guarded.h"

namespace orv::device {
namespace {

// Codes of the host's service.
constexpr std::int32_t kNoAnswerYet = 200;
constexpr std::int32_t kBusy = 308;
constexpr std::int32_t kTryAgain = 309;
constexpr int kConnectAttempts = 5;
constexpr int kTransientFailures = 6;

bool IsTransient(std::int32_t code) {
    return code == kBusy || code == kTryAgain;
}

} // namespace

/// An object of its own: the service may hold it longer than the monitor lives, and late answers fall on the floor.
class COrvMIBSAPMonitor::Sink : public MibSapEvents {
  public:
    explicit Sink(platform::DebugOutput& debug) : debug_(&debug) {}

    void Connected() override { status = Status::Connected; }
    void Error(std::int32_t code) override {
        status = Status::Error;
        lastError = code;
        Log([&] { return L"(Receive) MIBSAP ERROR " + std::to_wstring(code); });
    }
    void ResponseReceived(const std::wstring& text) override {
        // An answer that there is no room for ends the wait all the same; an older one must not pass for it.
        const std::int32_t before = std::exchange(lastError, error_number::kOutOfMemory);
        status = Status::Error;
        lastResponse = text;
        status = Status::Answered;
        lastError = before;
        Log([&] { return L"(Receive) MIBSAP Response " + text; });
    }
    void Silence() { debug_ = nullptr; }

    Status status = Status::Idle;
    std::int32_t lastError = 0;
    std::wstring lastResponse;

  private:
    /// The service is no place to fail in for want of a line.
    template <typename Line>
    void Log(const Line& line) {
        try {
            if (debug_ != nullptr)
                debug_->Line(line());
        } catch (const std::bad_alloc&) {
        }
    }

    platform::DebugOutput* debug_;
};

COrvMIBSAPMonitor::COrvMIBSAPMonitor(DeviceState& state, const Target& target)
    : state_(state), target_(target), sink_(std::make_shared<Sink>(state.platform.debug)) {}

COrvMIBSAPMonitor::~COrvMIBSAPMonitor() {
    sink_->Silence();
}

std::int32_t COrvMIBSAPMonitor::LastError() const {
    return sink_->lastError;
}
COrvMIBSAPMonitor::Status COrvMIBSAPMonitor::State() const {
    return sink_->status;
}
void COrvMIBSAPMonitor::Log(std::wstring_view line) {
    state_.platform.debug.Line(line);
}

void COrvMIBSAPMonitor::WaitWhile(bool (*waiting)(Status)) {
    const auto sink = sink_;
    const auto outcome = state_.platform.pump.PumpUntil([&sink, waiting] { return !waiting(sink->status); });
    if (outcome != platform::Wait::Satisfied)
        throw platform::WaitAbandoned{};
}

bool COrvMIBSAPMonitor::Connect() {
    Log(L"MIBSAP.Connect");
    if (!state_.mibSap)
        throw Error(error_number::kObjectNotSet);
    for (int attempt = 1; attempt <= kConnectAttempts; ++attempt) {
        sink_->lastError = kNoAnswerYet;
        sink_->status = Status::Idle;
        state_.mibSap->Connect(deviceAddress_, sink_);
        WaitWhile([](Status status) { return status != Status::Connected && status != Status::Error; });
        if (sink_->status == Status::Connected)
            return true;
        Log(L"MIBSAP.Connect: Retry #" + std::to_wstring(attempt));
    }
    return false;
}

bool COrvMIBSAPMonitor::Disconnect() {
    Log(L"MIBSAP Disconnect");
    if (sink_->status == Status::Idle)
        return false;
    sink_->status = Status::Idle;
    state_.mibSap->Disconnect();
    return true;
}

/// Sends until answered, refused for good, or refused for the moment too often. `forgive` hears of every error event,
/// with the number of transient ones before it, and answers true to let it pass as a success.
template <typename Send, typename Forgive>
bool COrvMIBSAPMonitor::Request(const Send& send, const Forgive& forgive) {
    int failures = 0;
    do {
        sink_->status = Status::Waiting;
        send();
        WaitWhile([](Status status) { return status == Status::Waiting; });
        if (sink_->status != Status::Error)
            continue;
        if (forgive(failures))
            sink_->status = Status::Answered;
        else if (IsTransient(sink_->lastError))
            ++failures;
        else
            break;
    } while (sink_->status != Status::Answered && failures < kTransientFailures);
    return sink_->status == Status::Answered;
}

bool COrvMIBSAPMonitor::StartSession() {
    if (target_.accessLevel == 0)
        return true;
    // No log line: the request carries the password.
    return Request([this] { state_.mibSap->StartSession(std::to_wstring(target_.accessLevel), password_); },
                   [](int) { return false; });
}

bool COrvMIBSAPMonitor::EndSession(const std::wstring& mode) {
    Log(L"(Send) MIBSAP EndSession");
    return Request([&] { state_.mibSap->EndSession(mode); },
                   [this](int) {
                       if (!IsTransient(sink_->lastError))
                           Log(std::to_wstring(sink_->lastError) + L":Error in EndSession");
                       return false;
                   });
}

Value COrvMIBSAPMonitor::GetEntry(const std::wstring& entry) {
    Log(L"(Send) MIBSAP Get " + entry);
    if (!Request([&] { state_.mibSap->GetEntry(entry); }, [](int) { return false; }))
        return {};
    return sink_->lastResponse;
}

bool COrvMIBSAPMonitor::SetEntry(const std::wstring& entry, const Value& value) {
    const std::wstring shown = LogForm(value);
    Log(L"(Send) MIBSAP Set " + entry + L" = " + shown);
    if (std::holds_alternative<std::monostate>(value)) {
        // Nothing that could be sent, so no answer to wait for.
        sink_->status = Status::Error;
        sink_->lastError = error_number::kTypeMismatch;
        LogSetError(entry, shown);
        return false;
    }
    const auto* bytes = std::get_if<Bytes>(&value);
    const bool isText = bytes != nullptr || std::holds_alternative<std::wstring>(value);
    const std::wstring text = bytes != nullptr ? ParameterAccess(state_).BytesToString(*bytes) : ToText(value);
    const auto send = [&] {
        if (isText)
            state_.mibSap->SetStringEntry(entry, text);
        else
            state_.mibSap->SetNumericEntry(entry, text);
    };
    return Request(send, [&](int failures) {
        if (!IsTransient(sink_->lastError)) {
            LogSetError(entry, shown);
            return false;
        }
        // Devices refuse to clear a text with 308 and clear it all the same: meant, and for 308 alone.
        const bool forgiven = text.empty() && sink_->lastError == kBusy;
        Log(L"SetEntry failed (" + std::to_wstring(sink_->lastError) + L"). Retry:" +
            std::to_wstring(forgiven ? failures : failures + 1));
        return forgiven;
    });
}

void COrvMIBSAPMonitor::LogSetError(const std::wstring& entry, const std::wstring& shown) {
    Log(L"Error " + std::to_wstring(sink_->lastError) + L" in SetEntry - " + entry + L"=" + shown);
}

std::optional<Value> COrvMIBSAPMonitor::GetData(const std::wstring& entry) {
    if (!Connect())
        return std::nullopt;
    const platform::Restoring disconnect([this] { Disconnect(); });
    if (!StartSession())
        return std::nullopt;
    Value value = GetEntry(entry);
    if (sink_->status != Status::Answered)
        return std::nullopt;
    return value;
}

bool COrvMIBSAPMonitor::SetData(const std::wstring& entry, const Value& value) {
    if (!Connect()) {
        state_.common->lastTransportError = LastError();
        return false;
    }
    const platform::Restoring disconnect([this] { Disconnect(); });
    if (!StartSession()) {
        state_.common->lastTransportError = LastError();
        return false;
    }
    const bool set = SetEntry(entry, value);
    if (!EndSession(L"V")) {
        state_.common->lastTransportError = LastError();
        return false;
    }
    return set;
}

} // namespace orv::device
