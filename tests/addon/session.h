#pragma once
// A component's life on the portable host.
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "addon/add_on.h"
#include "controls/mb_edit.h"
#include "controls/simple_widgets.h"
#include "controls/tree.h"
#include "tests/support/bench.h"

namespace orv::test {

class RecordedContainer : public addon::Container {
  public:
    void SetVisible(bool on) override {
        Enter("Container.SetVisible", on);
        visible = on;
        ++visibleCalls;
    }
    void SetEnabled(bool on) override {
        Enter("Container.SetEnabled", on);
        enabled = on;
        sawDisabled |= !on;
    }
    bool UserMode() override { return userMode; }
    device::WindowHandle Window() override {
        if (gate != nullptr)
            gate->Enter("Container.Window");
        return 77;
    }

    bool visible = true;
    bool enabled = true;
    bool sawDisabled = false;
    bool userMode = true;
    int visibleCalls = 0;
    sim::CallGate* gate = nullptr; ///< lists the calls, where there is one

  private:
    void Enter(std::string_view name, bool on) const {
        if (gate != nullptr)
            gate->Enter(name, [on] { return std::wstring(on ? L"on" : L"off"); });
    }
};

/// What stands between the component and the bench host, where something does.
class Surroundings {
  public:
    Surroundings() = default;
    Surroundings(const Surroundings&) = delete;
    Surroundings& operator=(const Surroundings&) = delete;
    virtual ~Surroundings() = default;
    virtual addon::ProcessState& State() = 0;
    virtual std::shared_ptr<device::HostApplication> Application() = 0;
    /// Runs a call into the component.
    virtual void Enter(const std::function<void()>& call) = 0;
};

struct Session {
    using Surround = std::function<std::unique_ptr<Surroundings>(Bench&)>;

    explicit Session(const std::string& sample = "tiny.json", sim::FaultPlan faults = {}, std::int16_t device = 0)
        : Session(sample, std::move(faults), device, {}) {
        Create();
    }
    /// Without a component yet.
    Session(const std::string& sample, sim::FaultPlan faults, std::int16_t device, const Surround& surround)
        : bench(sample, std::move(faults), device), around(surround ? surround(bench) : nullptr),
          state(around ? around->State() : bench.state) {}

    void Create() { addOn = std::make_unique<addon::AddOn>(state, container); }
    void Begin() {
        addOn->Register(around ? around->Application() : bench.host.Application());
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
    std::unique_ptr<Surroundings> around;
    addon::ProcessState& state;
    std::unique_ptr<addon::AddOn> addOn;
};

} // namespace orv::test
