#include "host/sim/line_service.h"

#include <optional>
#include <utility>

#include "device/value.h"
#include "host/sim/answer_count.h"
#include "host/sim/line_protocol.h"
#include "host/sim/sim_device.h"
#include "host/sim/utf8.h"

namespace orv::sim {
namespace {

/// Nothing but what the protocol calls so: whoever says OK and more may mean something else.
bool IsGood(const ProtocolLine& line) {
    return line.verb == "OK" && line.fields.size() <= 1;
}

/// A code of an error answer; a line that makes no sense counts as a bad request, and so does an error with the code of
/// success.
std::int32_t CodeOf(const ProtocolLine& line) {
    try {
        const bool error = line.verb == "ERR" && !line.fields.empty();
        const std::int32_t code = error ? device::ToInt32(line.fields[0]) : 0;
        return code != 0 ? code : device_code::kBadRequest;
    } catch (const Error&) {
        return device_code::kBadRequest;
    }
}

std::string_view WithoutBreak(std::string_view line) {
    return line.ends_with('\n') ? line.substr(0, line.size() - 1) : line;
}

} // namespace

void LineService::Connect(std::int32_t deviceAddress, std::shared_ptr<device::MibSapEvents> events) {
    Close();
    events_ = std::move(events);
    address_ = deviceAddress;
    open_ = false;
    lossCode_ = device_code::kNotConnected;
    pending_ = Pending::Connection;
    Open(deviceAddress);
}

void LineService::Disconnect() {
    Close();
    events_.reset();
    open_ = false;
    lossCode_ = device_code::kNotConnected;
    pending_ = Pending::Nothing;
}

void LineService::StartSession(const std::wstring& accessLevel, const std::wstring& password) {
    const std::string shown = FormatLine("SESSION", {accessLevel, password.empty() ? L"" : L"***"});
    Request(FormatLine("SESSION", {accessLevel, password}), shown, Pending::Answer);
}

void LineService::EndSession(const std::wstring& mode) {
    Request(FormatLine("END", {mode}), Pending::End);
}
void LineService::GetEntry(const std::wstring& entry) {
    Request(FormatLine("GET", {entry}));
}

void LineService::SetNumericEntry(const std::wstring& entry, const std::wstring& decimal) {
    Request(FormatLine("SETN", {entry, decimal}));
}

void LineService::SetStringEntry(const std::wstring& entry, const std::wstring& text) {
    Request(FormatLine("SETS", {entry, text}));
}

void LineService::Request(std::string line, Pending pending) {
    const std::string shown = line;
    Request(std::move(line), shown, pending);
}

void LineService::Request(std::string line, std::string_view shown, Pending pending) {
    if (!open_) {
        RaiseError(lossCode_);
        return;
    }
    pending_ = pending;
    Report(L'>', shown);
    Send(std::move(line));
}

void LineService::OnOpened() {
    const std::string line = FormatLine("HELLO", {L"1", std::to_wstring(address_)});
    Report(L'>', line);
    Send(line);
}

void LineService::OnLine(std::string_view text) {
    Report(L'<', text);
    if (pending_ == Pending::Nothing || pending_ == Pending::Closing) {
        Close();
        OnLost(device_code::kConnectionLost, Describe(Breach::Unasked));
        return;
    }
    const Pending answered = std::exchange(pending_, Pending::Nothing);
    const std::optional<ProtocolLine> line = ParseLine(text);
    if (line && IsGood(*line)) {
        Accept(answered, line->fields.empty() ? std::wstring() : line->fields[0]);
        return;
    }
    if (answered == Pending::Connection)
        Close();
    RaiseError(line ? CodeOf(*line) : device_code::kBadRequest);
}

void LineService::Accept(Pending answered, std::wstring text) {
    // The handler may drop the last reference but this one.
    const std::shared_ptr<device::MibSapEvents> events = events_;
    if (answered == Pending::End) {
        farewell_ = std::move(text);
        pending_ = Pending::Closing;
        Finish();
    } else if (answered == Pending::Connection) {
        open_ = true;
        events->Connected();
    } else {
        events->ResponseReceived(text);
    }
}

void LineService::OnClosed() {
    if (pending_ != Pending::Closing) {
        OnLost(device_code::kConnectionLost, L"the device closed the connection");
        return;
    }
    open_ = false;
    lossCode_ = device_code::kNotConnected;
    pending_ = Pending::Nothing;
    const std::shared_ptr<device::MibSapEvents> events = events_;
    events->ResponseReceived(std::exchange(farewell_, {}));
}

void LineService::OnLost(std::int32_t code, std::wstring_view reason) {
    open_ = false;
    lossCode_ = code;
    if (!reason.empty())
        Tell(L'!', std::to_wstring(code) + L" " + std::wstring(reason));
    if (std::exchange(pending_, Pending::Nothing) != Pending::Nothing)
        RaiseError(code);
}

void LineService::RaiseError(std::int32_t code) {
    if (const std::shared_ptr<device::MibSapEvents> events = events_)
        events->Error(code);
}

void LineService::Report(wchar_t direction, std::string_view line) {
    if (traffic_)
        Tell(direction, FromUtf8(WithoutBreak(line)));
}

void LineService::Tell(wchar_t mark, const std::wstring& text) {
    if (traffic_)
        traffic_(std::wstring(1, mark) + L" " + text);
}

} // namespace orv::sim
