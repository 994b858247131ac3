// The lines between bench host and device: any bytes on the wire are cut, read, answered and taken as the protocol
// says, however they arrive.
#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "device/value.h"
#include "fuzz/component.h"
#include "fuzz/fuzz.h"
#include "fuzz/source.h"
#include "host/sim/answer_count.h"
#include "host/sim/code_page.h"
#include "host/sim/line_protocol.h"
#include "host/sim/line_service.h"
#include "host/sim/protocol_handler.h"

namespace orv::fuzz {
namespace {

using sim::ProtocolLine;
using Lines = std::vector<sim::LineSplitter::Line>;

constexpr std::uint8_t kRepeat = 0xF8;

/// A first byte of F8 and above repeats the rest up to 2^17 times: a line that is too long comes from three bytes.
std::string Wire(const std::uint8_t* data, std::size_t size) {
    const std::string_view all(reinterpret_cast<const char*>(data), size);
    if (size < 2 || data[0] < kRepeat)
        return std::string(all);
    const std::string_view part = all.substr(1);
    // Many short lines take long and show nothing else.
    const bool oneLine = part.size() <= 2 && part.find('\n') == std::string_view::npos;
    const std::size_t limit = oneLine ? 2 * sim::kMaximumLine + 9 : 3000;
    std::string wire;
    for (std::size_t count = std::size_t{1} << (10 + data[0] - kRepeat); count > 0 && wire.size() < limit; --count)
        wire += part;
    return wire;
}

/// What the cutting should come to, by looking at the whole at once.
Lines Cut(std::string_view wire) {
    Lines lines;
    while (!wire.empty()) {
        const std::size_t end = wire.find('\n');
        std::string_view text = wire.substr(0, end);
        if (text.size() > sim::kMaximumLine)
            lines.push_back({{}, true});
        if (end == std::string_view::npos)
            break;
        wire.remove_prefix(end + 1);
        const bool oversized = text.size() > sim::kMaximumLine;
        if (text.ends_with('\r'))
            text.remove_suffix(1);
        if (!oversized)
            lines.push_back({std::string(text), false});
    }
    return lines;
}

/// Pieces of lengths that the bytes themselves decide.
template <typename Take>
void InPieces(std::string_view wire, const Take& take) {
    for (std::size_t piece = 1; !wire.empty(); wire.remove_prefix(std::min(piece, wire.size()))) {
        piece = 1 + static_cast<std::uint8_t>(wire.front()) % 7;
        take(wire.substr(0, piece));
    }
}

/// Requests and answers, counted in pieces: what is asked for is given, and not a line of what is not.
void CheckCount(std::string_view wire) {
    const Lines expected = Cut(wire);
    const bool whole = wire.empty() || wire.ends_with('\n');
    const std::size_t asked = wire.empty() ? 0 : static_cast<std::uint8_t>(wire.back()) % 4 + expected.size() / 2;
    sim::AnswerCount count;
    for (std::size_t i = 0; i < asked; ++i)
        count.Ask();
    std::size_t taken = 0;
    bool broken = false;
    InPieces(wire, [&](std::string_view piece) {
        if (broken)
            return;
        const sim::AnswerCount::Taken answers = count.Take(piece);
        broken = answers.breach != sim::Breach::None;
        Require(!broken || answers.lines.empty(), "nothing of a batch with a breach is an answer");
        for (const std::string& line : answers.lines)
            Require(line == expected.at(taken++).text, "answers come as they were sent");
    });
    const bool tooLong = std::any_of(expected.begin(), expected.end(), [](const auto& line) { return line.oversized; });
    const bool tooMany = expected.size() + (whole ? 0 : 1) > asked;
    Require(broken == (tooLong || tooMany), "a line too many or too long is a breach, and nothing else");
    Require(taken <= asked && (broken || taken == expected.size()), "each request has one answer");
}

void CheckSplitter(std::string_view wire) {
    const auto same = [](const Lines& a, const Lines& b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [](const auto& x, const auto& y) { return x.oversized == y.oversized && x.text == y.text; });
    };
    const Lines expected = Cut(wire);
    sim::LineSplitter whole;
    Require(same(whole.Feed(wire), expected), "lines are cut where they end");
    sim::LineSplitter pieces;
    Lines fed;
    InPieces(wire, [&](std::string_view piece) {
        for (auto& line : pieces.Feed(piece))
            fed.push_back(std::move(line));
    });
    Require(same(fed, expected), "lines do not depend on how the bytes arrive");
}

std::optional<ProtocolLine> ParseSent(const std::string& line) {
    Require(line.ends_with('\n') && line.find('\n') == line.size() - 1, "a line that is sent ends, and once");
    return sim::ParseLine(std::string_view(line).substr(0, line.size() - 1));
}

/// What can be read of a line can be written and is read again as the same.
void CheckLine(std::string_view text) {
    const std::optional<ProtocolLine> line = sim::ParseLine(text);
    if (!line)
        return;
    ++Accepted();
    Require(!line->verb.empty(), "a line has a verb");
    for (const std::wstring& field : line->fields) {
        const auto again = ParseSent(sim::FormatLine(line->verb, {field, L"x", field}));
        Require(again && again->verb == line->verb, "a line that was written reads");
        Require(again->fields == std::vector<std::wstring>{field, L"x", field}, "fields come back as they were");
    }
}

/// What a device that keeps to the protocol answers; `asked` is the request, nothing for a line that is none.
void CheckAnswer(const std::string& answer, const std::optional<ProtocolLine>& asked) {
    const std::optional<ProtocolLine> line = ParseSent(answer);
    Require(line.has_value(), "an answer reads");
    if (line->verb == "ERR") {
        Require(line->fields.size() == 2, "an error has a code and a reason");
        Require(device::ToInt32(line->fields[0]) != 0, "the code of an error is not that of success");
        return;
    }
    Require(asked.has_value(), "what does not read is refused");
    Require(line->verb == (asked->verb == "ASK" ? "VALUE" : "OK"), "an answer fits the request");
    Require(line->fields.size() == (asked->verb == "ASK" ? 2U : 1U), "an answer is complete");
}

/// The value an entry holds after a set that was taken.
void CheckTaken(sim::SimDevice& device, const ProtocolLine& set) {
    const auto place = device.Store().FindName(set.fields[0]);
    Require(place.has_value(), "only an entry that is there can be set");
    const device::Value& value = device.Store().Get(*place);
    const std::wstring& text = set.fields[1];
    if (const auto* bytes = std::get_if<Bytes>(&value))
        Require(*bytes == sim::ToCodePage(text), "bytes are set through the code page");
    else
        Require(value == device::Convert(text, device.Store().Parameter(*place).type), "what was set is there");
}

/// Some parameters of each kind: a device is made for every input.
const sim::DeviceDescription& SmallDevice() {
    static const sim::DeviceDescription device = [] {
        sim::DeviceDescription all = Tiny().devices.front();
        std::erase_if(all.parameters, [](const auto& p) {
            static constexpr std::int32_t kKept[] = {5, 6, 7, 191, 351, 358, 368};
            return std::find(std::begin(kKept), std::end(kKept), p.number) == std::end(kKept);
        });
        return all;
    }();
    return device;
}

/// Conversation with a device that has a session open, so that more than refusals happens.
void CheckDevice(std::string_view wire) {
    auto device = std::make_shared<sim::SimDevice>(SmallDevice());
    sim::ProtocolHandler handler(device);
    if (!wire.starts_with("HELLO"))
        Require(handler.Feed("HELLO 1 0\nSESSION 3 QMVRTK4826\n").size() == 2, "the device greets");
    bool closed = false;
    // The last line has no end yet: nobody may answer it.
    for (const sim::LineSplitter::Line& line : Cut(std::string(wire) + "\n")) {
        const std::string text = line.oversized ? std::string(sim::kMaximumLine + 1, 'x') : line.text;
        const auto replies = handler.Feed(text + "\r\n");
        Require(replies.size() == (closed ? 0U : 1U), "each line is answered once, and none after the end");
        if (closed)
            continue;
        const auto asked = line.oversized ? std::nullopt : sim::ParseLine(line.text);
        CheckAnswer(replies[0].bytes, asked);
        closed = replies[0].close;
        Require(!closed || (asked && asked->verb == "BYE"), "only a farewell ends the connection");
        if (asked && (asked->verb == "SETN" || asked->verb == "SETS") && replies[0].bytes.starts_with("OK"))
            CheckTaken(*device, *asked);
    }
}

/// A connection whose other end is the input.
class Wired final : public sim::LineService {
  public:
    explicit Wired(Source& source) : source_(source) {}
    std::vector<std::string> sent;
    bool linked = false;
    bool closing = false; ///< nothing more is asked over this connection

    void Deliver(std::string_view line) {
        if (linked)
            OnLine(line);
    }
    /// The device closes its side.
    void Hang() {
        if (std::exchange(linked, false))
            OnClosed();
    }
    void Lose(std::int32_t code) {
        if (std::exchange(linked, false))
            OnLost(code);
    }

  protected:
    void Open(std::int32_t) override {
        if (source_.OneIn(8)) {
            OnLost(sim::device_code::kConnectRefused);
            return;
        }
        linked = true;
        closing = false;
        OnOpened();
    }
    void Close() override { linked = false; }
    void Finish() override {
        closing = true;
        if (source_.OneIn(3))
            Hang();
    }
    void Send(std::string line) override { sent.push_back(std::move(line)); }

  private:
    Source& source_;
};

/// Counts what the service tells, and goes on asking from inside of it as a client may.
class Client final : public device::MibSapEvents {
  public:
    Client(Wired& service, Source& source) : service_(service), source_(source) {}
    int open = 0; ///< requests without an event yet
    int others = 0;

    void Connected() override { Told(); }
    void Error(std::int32_t) override { Told(); }
    void ResponseReceived(const std::wstring& text) override {
        Told();
        last = text;
    }
    void Ask(std::size_t what);
    std::wstring last;

  private:
    void Told() {
        Require(open == 1, "every event answers a request");
        --open;
        if (source_.OneIn(4) && ++others < 20)
            Ask(1 + source_.Below(6));
    }
    Wired& service_;
    Source& source_;
};

/// One request at a time, as the service wants it.
void Client::Ask(std::size_t what) {
    if (open != 0 && what < 6 && what > 0)
        return;
    open = 1;
    switch (what) {
    case 1:
        return service_.GetEntry(source_.Text(6));
    case 2:
        return service_.SetStringEntry(source_.Text(6), source_.Text(9));
    case 3:
        return service_.SetNumericEntry(source_.Text(6), source_.Text(4));
    case 4:
        return service_.EndSession(L"V");
    case 5:
        return service_.StartSession(L"3", L"QMVRTK4826");
    default:
        open = 0;
        service_.Disconnect();
    }
}

/// The service's side: lines of the input as answers, between requests, after a loss.
void CheckService(std::string_view wire) {
    Source source(reinterpret_cast<const std::uint8_t*>(wire.data()), std::min<std::size_t>(wire.size(), 600));
    Wired service(source);
    auto client = std::make_shared<Client>(service, source);
    bool secret = false;
    service.SetTraffic([&](std::wstring_view line) {
        secret |= line.starts_with(L"> SESSION") && line.find(L"QMVRTK4826") != std::wstring_view::npos;
    });
    while (!source.Empty()) {
        const std::size_t what = source.Below(16);
        if (what < 7)
            client->Ask(what);
        else if (what == 7)
            service.Lose(sim::device_code::kConnectionLost);
        else if (what == 8)
            service.Hang();
        else if (what == 9) {
            client->open = 1;
            service.Connect(0, client);
        } else {
            const Bytes line = source.Some(20);
            const std::string text = what < 13 ? "OK " : "";
            const bool unasked = client->open == 0 || service.closing;
            service.Deliver(text + std::string(line.begin(), line.end()));
            Require(!unasked || !service.linked, "a line that nothing asked for ends the connection");
        }
    }
    for (const std::string& line : service.sent)
        Require(ParseSent(line).has_value(), "what the service sends reads");
    Require(!secret, "no password is shown");
    service.Disconnect();
    Require(client.use_count() == 1, "a service that was disconnected lets go of its client");
}

void Check(const std::string& wire) {
    CheckSplitter(wire);
    CheckCount(wire);
    for (const auto& line : Cut(wire))
        CheckLine(line.text);
    CheckDevice(wire);
    CheckService(wire);
}

} // namespace
} // namespace orv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orv::fuzz::Check(orv::fuzz::Wire(data, size));
    return 0;
}
