#include "host/sim/protocol_handler.h"

#include "device/value.h"
#include "text/error.h"

namespace orv::sim {
namespace {

constexpr std::wstring_view kVersion = L"1";

std::string ErrorLine(std::int32_t code, std::wstring_view reason) {
    return FormatLine("ERR", {std::to_wstring(code), reason});
}

ProtocolHandler::Reply Refused(std::wstring_view reason) {
    return {ErrorLine(device_code::kBadRequest, reason), false, std::chrono::milliseconds{0}};
}

/// Number of a field; nothing for what is no 32-bit decimal.
std::optional<std::int32_t> Number(const std::wstring& field) {
    try {
        return device::ToInt32(field);
    } catch (const Error&) {
        return {};
    }
}

std::wstring_view TypeName(device::WireType type) {
    switch (type) {
    case device::WireType::Int16:
        return L"int16";
    case device::WireType::Int32:
        return L"int32";
    case device::WireType::Byte:
        return L"byte";
    case device::WireType::Text:
        return L"text";
    case device::WireType::ByteArray:
        break;
    }
    return L"bytes";
}

} // namespace

ProtocolHandler::ProtocolHandler(std::shared_ptr<SimDevice> device) : device_(std::move(device)) {}

ProtocolHandler::~ProtocolHandler() {
    if (greeted_)
        device_->Disconnected();
}

std::vector<ProtocolHandler::Reply> ProtocolHandler::Feed(std::string_view bytes) {
    std::vector<Reply> replies;
    for (const LineSplitter::Line& line : splitter_.Feed(bytes)) {
        if (closed_)
            break;
        Reply reply = Handle(line);
        closed_ = reply.close;
        if (!reply.bytes.empty() || reply.close)
            replies.push_back(std::move(reply));
    }
    return replies;
}

ProtocolHandler::Reply ProtocolHandler::Handle(const LineSplitter::Line& line) {
    if (line.oversized)
        return Refused(L"line too long");
    const std::optional<ProtocolLine> parsed = ParseLine(line.text);
    if (!parsed)
        return Refused(L"malformed line");
    return Dispatch(*parsed);
}

ProtocolHandler::Reply ProtocolHandler::Dispatch(const ProtocolLine& line) {
    if (line.verb == "HELLO")
        return Hello(line);
    if (line.verb == "ASK")
        return Ask(line);
    if (line.verb == "BYE" && line.fields.empty())
        return {FormatLine("OK", {L"OK"}), true, {}};
    return Request(line);
}

ProtocolHandler::Reply ProtocolHandler::Hello(const ProtocolLine& line) {
    if (greeted_)
        return Refused(L"already connected");
    if (line.fields.size() != 2 || line.fields[0] != kVersion)
        return Refused(L"unknown version of the protocol");
    const std::optional<std::int32_t> address = Number(line.fields[1]);
    if (!address)
        return Refused(L"the address is not a number");
    const DeviceAnswer answer = device_->Connect(*address);
    greeted_ = answer.code == 0 && !answer.drop && !answer.silent;
    return Render(answer);
}

ProtocolHandler::Reply ProtocolHandler::Request(const ProtocolLine& line) {
    const auto is = [&](std::string_view verb, std::size_t fields) {
        return line.verb == verb && line.fields.size() == fields;
    };
    const bool known = is("SESSION", 2) || is("END", 1) || is("GET", 1) || is("SETN", 2) || is("SETS", 2);
    if (!known)
        return Refused(L"unknown request");
    if (!greeted_)
        return Refused(L"not connected");
    if (line.verb == "SESSION")
        return Render(device_->StartSession(line.fields[0], line.fields[1]));
    if (line.verb == "END")
        return Render(device_->EndSession(line.fields[0]));
    if (line.verb == "GET")
        return Render(device_->GetEntry(line.fields[0]));
    if (line.verb == "SETN")
        return Render(device_->SetNumericEntry(line.fields[0], line.fields[1]));
    return Render(device_->SetStringEntry(line.fields[0], line.fields[1]));
}

ProtocolHandler::Reply ProtocolHandler::Ask(const ProtocolLine& line) {
    const std::optional<std::int32_t> number = line.fields.size() == 2 ? Number(line.fields[0]) : std::nullopt;
    const std::optional<std::int32_t> element = number ? Number(line.fields[1]) : std::nullopt;
    if (!element)
        return Refused(L"ASK takes a number and an element");
    std::optional<ElementAddress> address = device_->Store().FindNumber(*number);
    if (!address || *element < 0 || *element >= device_->Store().Parameter(*address).details.elementCount)
        return {ErrorLine(device_code::kUnknownEntry, L"no such parameter or element"), false, {}};
    address->element = *element;
    const std::wstring value = FormatValue(device_->Store().Get(*address));
    return {FormatLine("VALUE", {TypeName(device_->Store().Parameter(*address).type), value}), false, {}};
}

ProtocolHandler::Reply ProtocolHandler::Render(const DeviceAnswer& answer) const {
    if (answer.silent)
        return {};
    if (answer.drop)
        return {{}, true, {}};
    if (answer.code != 0)
        return {ErrorLine(answer.code, answer.text), false, device_->Delay()};
    return {FormatLine("OK", {answer.text}), false, device_->Delay()};
}

std::string BusyAnswer() {
    return ErrorLine(device_code::kBusy, L"another client is connected");
}

} // namespace orv::sim
