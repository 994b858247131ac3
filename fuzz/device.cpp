// A device and a host at their worst during saves: answers late, twice, out of turn, of another kind, huge; calls of
// the host from inside a wait. Every save ends, leaves nothing behind that it must put back, and the host's
// configuration holds what the device acknowledged and nothing else.
#include <algorithm>
#include <memory>

#include "controls/mb_edit.h"
#include "controls/simple_widgets.h"
#include "controls/tree.h"
#include "fuzz/component.h"
#include "fuzz/fixed_font.h"
#include "fuzz/fuzz.h"
#include "fuzz/source.h"
#include "fuzz/unreliable_service.h"
#include "host/sim/code_page.h"

namespace orv::fuzz {
namespace {

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
        if (component_.addOn->Terminated())
            return;
        CheckTold(toDevice);
        Require(!toDevice || component_.Root().LastSave().written == witness_.acknowledged.size(),
                "what counts as written was acknowledged");
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
