// A device and a host at their worst during saves: answers late, twice, out of turn, of another kind, huge; calls of
// the host from inside a wait. Every save ends, leaves nothing behind that it must put back, and the host's
// configuration holds what the device acknowledged and nothing else.
#include <algorithm>
#include <functional>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "controls/mb_edit.h"
#include "controls/simple_widgets.h"
#include "controls/tree.h"
#include "fuzz/component.h"
#include "fuzz/fixed_font.h"
#include "fuzz/fuzz.h"
#include "fuzz/source.h"
#include "host/sim/code_page.h"

namespace orv::fuzz {
namespace {

constexpr wchar_t kPassword[] = L"QMVRTK4826";
constexpr std::int32_t kForgivenForNothing = 308;

/// What a device has acknowledged, by whoever listens on the line.
class Witness {
  public:
    struct Set {
        std::wstring entry;
        std::wstring text;
    };
    std::vector<Set> acknowledged;
    std::int32_t lastError = 0;

    void Sent(std::optional<Set> set) {
        open_ = std::move(set);
        verdict_.reset();
    }
    /// 0 is success.
    void Answered(std::int32_t code) { verdict_ = code; }
    /// Something came that answers nothing: the request will be made again.
    void Misunderstood() { verdict_.reset(); }
    /// Whoever asked has seen the last of the answers.
    void Seen() {
        if (verdict_.value_or(0) != 0)
            lastError = *verdict_;
        const bool forgiven = open_ && open_->text.empty() && verdict_ == kForgivenForNothing;
        if (open_ && verdict_ && (*verdict_ == 0 || forgiven))
            acknowledged.push_back(*open_);
        open_.reset();
        verdict_.reset();
    }

  private:
    std::optional<Set> open_;
    std::optional<std::int32_t> verdict_;
};

/// Answers as the input decides; a byte a request, 0 a good answer.
class UnreliableService final : public device::MibSapService {
  public:
    UnreliableService(Source& source, WakefulPump& pump, Witness& witness)
        : source_(source), pump_(pump), witness_(witness) {}

    /// The host does something while a request is under way.
    std::function<void(std::size_t)> interrupt;
    bool sawPassword = false;

    void Connect(std::int32_t, std::shared_ptr<device::MibSapEvents> events) override {
        strangers_ = std::exchange(events_, std::move(events));
        Ask({}, Kind::Connected);
    }
    void Disconnect() override {
        strangers_ = std::exchange(events_, nullptr);
        late_.clear();
    }
    void StartSession(const std::wstring&, const std::wstring& password) override {
        sawPassword |= password == kPassword;
        Ask({}, Kind::Response);
    }
    void EndSession(const std::wstring&) override { Ask({}, Kind::Response); }
    void GetEntry(const std::wstring&) override { Ask({}, Kind::Response); }
    void SetNumericEntry(const std::wstring& entry, const std::wstring& decimal) override {
        Ask(Witness::Set{entry, decimal}, Kind::Response);
    }
    void SetStringEntry(const std::wstring& entry, const std::wstring& text) override {
        Ask(Witness::Set{entry, text}, Kind::Response);
    }

  private:
    enum class Kind { Connected, Response };
    using Event = std::function<void()>;

    Event Good(Kind kind) {
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
    void Respond(const std::wstring& text) {
        witness_.Answered(0);
        events_->ResponseReceived(text);
    }
    Event Bad(std::int32_t code) {
        return [this, code] {
            if (!events_)
                return;
            // 0 is no code of an error, but a device may send it all the same.
            witness_.Answered(code == 0 ? -1 : code);
            events_->Error(code);
        };
    }
    std::int32_t Code() {
        static constexpr std::int32_t kCodes[] = {308, 309, 401, 404, 200, 0, -1, 504};
        const std::size_t chosen = source_.Below(12);
        return chosen < std::size(kCodes) ? kCodes[chosen] : source_.Number();
    }
    Event Odd() {
        const std::wstring text = source_.Flag() ? std::wstring(70000, L'\x4E00') : source_.Text(40);
        return [this, text] {
            if (events_)
                Respond(text);
        };
    }
    std::vector<Event> Answers(std::size_t choice, Kind kind) {
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
    /// To whom an earlier connection belonged.
    Event Stranger() {
        return [this, events = strangers_] {
            // A second attempt to connect is for the same one.
            if (events == events_)
                Good(Kind::Response)();
            else if (events)
                events->ResponseReceived(L"for somebody else");
        };
    }
    Event Interruption() {
        return [this, what = source_.Below(8)] {
            if (interrupt)
                interrupt(what);
        };
    }
    void Ask(std::optional<Witness::Set> set, Kind kind) {
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
    static void Run(const std::vector<Event>& events) {
        for (const Event& event : events)
            event();
    }

    Source& source_;
    WakefulPump& pump_;
    Witness& witness_;
    std::shared_ptr<device::MibSapEvents> events_;
    std::shared_ptr<device::MibSapEvents> strangers_;
    std::vector<Event> late_;
};

/// A component on that service, and what it must not depart from.
class Play {
  public:
    explicit Play(Source& source)
        : source_(source), service_(std::make_shared<UnreliableService>(source, component_.pump, witness_)) {
        component_.host.SetService(service_);
        component_.pump.onIdle = [this] { component_.addOn->Terminate(); };
        component_.pump.onSatisfied = [this] { witness_.Seen(); };
        component_.platform.boxes.defaultAnswer = platform::Answer::Yes;
        component_.Start();
        Require(component_.platform.boxes.shown.empty(), "a good device loads without a word");
        service_->interrupt = [this](std::size_t what) { Interrupt(what); };
    }

    void Run() {
        for (int saves = 0; saves < 4 && !component_.addOn->Terminated(); ++saves) {
            Edit();
            SaveOnce();
            if (source_.Empty())
                break;
        }
    }

  private:
    void Edit() {
        component_.addOn->CurrentClusterIndex(0);
        component_.addOn->CurrentDeviceIndex(0);
        controls::Widget& root = component_.Editor().Root();
        dynamic_cast<controls::Tree&>(*root.Find(L"tvw")).Click(L"FormatDef");
        auto& header = dynamic_cast<controls::MBEdit&>(*root.Find(L"mbeHeader"));
        if (!component_.Editor().Form().SetFocus(header))
            return;
        header.TypeText(source_.Text(3) + L"!");
        auto& silent = dynamic_cast<controls::CheckBox&>(*root.Find(L"chkNoInteractive"));
        if (source_.OneIn(8))
            silent.Toggle();
    }

    void SaveOnce() {
        sim::BenchHost& host = component_.host;
        host.SetConfigurationInteractive(source_.OneIn(3));
        const bool interactive = host.ConfigurationInteractive();
        const sim::SystemDescription before = host.Contents();
        const bool closes = source_.OneIn(4);
        const bool toDevice = !closes && !component_.Editor().NoInteractive();
        witness_.acknowledged.clear();
        component_.platform.boxes.shown.clear();
        component_.platform.debug.lines.clear();
        witness_.lastError = 0;
        component_.Press(closes ? L"cmdOK" : L"cmdApply");
        CheckPutBack(interactive);
        if (toDevice)
            CheckContents(before);
        CheckSecrets();
        if (!component_.addOn->Terminated())
            CheckTold(toDevice);
    }

    void CheckPutBack(bool interactive) {
        Require(component_.host.ConfigurationInteractive() == interactive, "the interactive switch is put back");
        Require(component_.host.AccessLevel() == 3, "the access level is put back");
        Require(!component_.host.Progress().shown, "no progress display stays behind");
        Require(component_.container.enabled, "the control is enabled again");
        Require(!component_.addOn->Saving() && !component_.addOn->Busy(), "nothing runs on");
    }

    void CheckContents(const sim::SystemDescription& before) {
        const sim::SystemDescription after = component_.host.Contents();
        sim::ParameterStore expected(before.devices.front());
        for (const Witness::Set& set : witness_.acknowledged) {
            const auto place = expected.FindName(set.entry);
            Require(place.has_value(), "only entries of the device are set");
            const bool bytes = expected.Parameter(*place).type == device::WireType::ByteArray;
            expected.Set(*place, bytes ? device::Value(sim::ToCodePage(set.text)) : device::Value(set.text));
        }
        const auto& held = after.devices.front().parameters;
        for (std::size_t i = 0; i < held.size(); ++i)
            Require(held[i] == expected.Contents().parameters[i],
                    ("the host holds what the device acknowledged: " + Narrow(held[i].path)).c_str());
    }

    void CheckSecrets() {
        const auto tells = [](const std::wstring& text) { return text.find(kPassword) != std::wstring::npos; };
        const auto& lines = component_.platform.debug.lines;
        Require(std::none_of(lines.begin(), lines.end(), tells), "no password in the log");
        const auto& boxes = component_.platform.boxes.shown;
        Require(std::none_of(boxes.begin(), boxes.end(), [&](const auto& box) { return tells(box.text); }),
                "no password in a message");
    }

    /// A save that failed says so; one that did not leaves nothing to save.
    void CheckTold(bool toDevice) {
        const bool stopped = component_.Editor().Modified();
        const auto& boxes = component_.platform.boxes.shown;
        const auto warns = [](const auto& box) { return box.icon == platform::Icon::Warning; };
        for (const platform::MessageBox& box : boxes)
            Require(!Component::TellsOfFailure(box), Narrow(box.text).c_str());
        if (toDevice && stopped && witness_.lastError != -1)
            Require(std::any_of(boxes.begin(), boxes.end(), warns), "a save that failed is no secret");
        if (!stopped)
            ++Accepted();
    }

    /// What a host may do while a save waits.
    void Interrupt(std::size_t what) {
        addon::AddOn& addOn = *component_.addOn;
        switch (what) {
        case 0:
            return addOn.Activate();
        case 1:
            return component_.Press(L"cmdApply");
        case 2:
            return addOn.CurrentDeviceIndex(static_cast<std::int16_t>(source_.Below(4)));
        case 3:
            return addOn.CurrentClusterIndex(static_cast<std::int16_t>(source_.Below(2)));
        case 4:
            return addOn.Show();
        case 5:
            return component_.pump.ProcessPending();
        case 6:
            return component_.Editor().Resize({700, 500}, font_);
        default:
            if (source_.OneIn(4))
                addOn.Terminate();
        }
    }

    Source& source_;
    Witness witness_;
    FixedFont font_;
    Component component_{Tiny()};
    std::shared_ptr<UnreliableService> service_;
};

} // namespace
} // namespace orv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orv::fuzz::Source source(data, size);
    orv::fuzz::Play(source).Run();
    return 0;
}
