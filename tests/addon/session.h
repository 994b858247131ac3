#pragma once
// A component's life on the portable host.
#include <optional>
#include <string>

#include "addon/add_on.h"
#include "controls/mb_edit.h"
#include "controls/simple_widgets.h"
#include "controls/tree.h"
#include "tests/support/bench.h"

namespace orv::test {

class RecordedContainer : public addon::Container {
  public:
    void SetVisible(bool on) override {
        visible = on;
        ++visibleCalls;
    }
    void SetEnabled(bool on) override {
        enabled = on;
        sawDisabled |= !on;
    }
    bool UserMode() override { return userMode; }
    device::WindowHandle Window() override { return 77; }

    bool visible = true;
    bool enabled = true;
    bool sawDisabled = false;
    bool userMode = true;
    int visibleCalls = 0;
};

struct Session {
    explicit Session(const std::string& sample = "tiny.json", sim::FaultPlan faults = {}, std::int16_t device = 0)
        : bench(sample, std::move(faults), device), addOn(std::make_unique<addon::AddOn>(bench.state, container)) {}

    void Begin() {
        addOn->Register(bench.host.Application());
        addOn->CurrentClusterIndex(bench.cluster);
        addOn->CurrentDeviceIndex(bench.state.current.device);
        addOn->Enable();
        addOn->Show();
    }
    void Start() {
        Begin();
        addOn->Activate();
    }
    controls::Widget& Widget(const wchar_t* name) {
        controls::Widget* found = addOn->Editor().Root().Find(name);
        if (found == nullptr)
            throw std::runtime_error("no such widget");
        return *found;
    }
    void Select(const wchar_t* key) { dynamic_cast<controls::Tree&>(Widget(L"tvw")).Click(key); }
    void Press(const wchar_t* name) { dynamic_cast<controls::Button&>(Widget(name)).Press(); }
    void Type(const wchar_t* name, std::wstring_view text) {
        auto& box = dynamic_cast<controls::MBEdit&>(Widget(name));
        addOn->Editor().Form().SetFocus(box);
        box.TypeText(text);
    }
    /// Puts STX before and CR LF behind, as a technician would.
    void Edit() {
        Select(L"FormatDef");
        Type(L"mbeHeader", L"\x02");
        Type(L"mbeTerminator", L"\r\n");
    }
    std::vector<platform::MessageBox>& Boxes() { return bench.platform.boxes.shown; }
    device::Value OnDevice(std::int32_t number) { return bench.device->Store().Get(number); }
    device::Value InHost(std::int32_t number) {
        return bench.host.Store(bench.cluster, bench.state.current.device)->Get(number);
    }

    Bench bench;
    RecordedContainer container;
    std::unique_ptr<addon::AddOn> addOn;
};

} // namespace orv::test
