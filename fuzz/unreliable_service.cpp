#include "fuzz/unreliable_service.h"

#include <iterator>

#include "fuzz/fuzz.h"

namespace orv::fuzz {

void UnreliableService::Connect(std::int32_t, std::shared_ptr<device::MibSapEvents> events) {
    strangers_ = std::exchange(events_, std::move(events));
    Ask({}, Kind::Connected);
}

void UnreliableService::Disconnect() {
    strangers_ = std::exchange(events_, nullptr);
    late_.clear();
}

void UnreliableService::StartSession(const std::wstring&, const std::wstring& password) {
    Require(password == kPassword, "a session is started with its password");
    Ask({}, Kind::Response);
}

UnreliableService::Event UnreliableService::Good(Kind kind) {
    return [this, kind] {
        if (!events_)
            return;
        if (kind == Kind::Connected) {
            witness_.Misunderstood();
            events_->Connected();
        } else {
            Respond(L"OK");
        }
    };
}

void UnreliableService::Respond(const std::wstring& text) {
    witness_.Answered(0);
    events_->ResponseReceived(text);
}

UnreliableService::Event UnreliableService::Bad(std::int32_t code) {
    return [this, code] {
        if (!events_)
            return;
        // 0 is no code of an error, but a device may send it all the same.
        witness_.Answered(code == 0 ? -1 : code);
        events_->Error(code);
    };
}

std::int32_t UnreliableService::Code() {
    static constexpr std::int32_t kCodes[] = {308, 309, 401, 404, 200, 0, -1, 504};
    const std::size_t chosen = source_.Below(12);
    return chosen < std::size(kCodes) ? kCodes[chosen] : source_.Number();
}

UnreliableService::Event UnreliableService::Odd() {
    const std::wstring text = source_.Flag() ? std::wstring(70000, L'\x4E00') : source_.Text(40);
    return [this, text] {
        if (events_)
            Respond(text);
    };
}

UnreliableService::Event UnreliableService::Stranger() {
    return [this, events = strangers_] {
        // A second attempt to connect is for the same one.
        if (events == events_)
            Good(Kind::Response)();
        else if (events)
            events->ResponseReceived(L"for somebody else");
    };
}

UnreliableService::Event UnreliableService::Interruption() {
    return [this, what = source_.Below(8)] {
        if (interrupt)
            interrupt(what);
    };
}

std::vector<UnreliableService::Event> UnreliableService::Answers(std::size_t choice, Kind kind) {
    switch (choice) {
    case 1:
    case 2:
        return {Bad(Code())};
    case 3:
        return {Good(kind == Kind::Connected ? Kind::Response : Kind::Connected), Good(kind)};
    case 4:
        return {Good(kind), Good(kind)};
    case 5:
        return {Good(kind), Bad(Code())};
    case 6:
        return {Bad(Code()), Good(kind)};
    case 7:
        return {Odd()};
    case 8:
        return {};
    case 9:
        late_.push_back(Good(kind));
        return {};
    case 10:
        return {Stranger(), Good(kind)};
    case 11:
        return {Interruption(), Good(kind)};
    default:
        return {Good(kind)};
    }
}

void UnreliableService::Ask(std::optional<Witness::Set> set, Kind kind) {
    witness_.Sent(std::move(set));
    const std::uint8_t how = source_.Byte();
    std::vector<Event> events = std::exchange(late_, {});
    for (Event& event : Answers(how % 16, kind))
        events.push_back(std::move(event));
    // An answer may come before the request has returned, or several at once.
    if ((how & 0x30) == 0x10)
        return Run(events);
    if ((how & 0x30) == 0x20)
        return pump_.Post([events] { Run(events); });
    for (Event& event : events)
        pump_.Post(std::move(event));
}

void UnreliableService::Run(const std::vector<Event>& events) {
    for (const Event& event : events)
        event();
}

} // namespace orv::fuzz
