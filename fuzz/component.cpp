#include "fuzz/component.h"

#include "controls/simple_widgets.h"
#include "fuzz/fuzz.h"
#include "host/sim/utf8.h"

namespace orv::fuzz {

platform::Wait WakefulPump::PumpUntil(const std::function<bool()>& predicate) {
    while (!closed_) {
        if (predicate()) {
            if (onSatisfied)
                onSatisfied();
            return platform::Wait::Satisfied;
        }
        if (tasks_.empty() && onIdle)
            onIdle();
        else
            RunNext();
    }
    return platform::Wait::Closing;
}

void WakefulPump::RunNext() {
    Require(!tasks_.empty(), "somebody ends a wait that nothing is left for");
    const std::function<void()> task = std::move(tasks_.front());
    tasks_.pop_front();
    task();
}

void WakefulPump::ProcessPending() {
    for (std::size_t pending = tasks_.size(); pending > 0 && !tasks_.empty() && !closed_; --pending)
        RunNext();
}

Component::Component(const sim::SystemDescription& system)
    : host(system), addOn(std::make_unique<addon::AddOn>(state, container)) {
    host.Windows().commitPanel = [](device::WindowHandle) {};
    state.current.cluster = system.devices.front().cluster;
    state.current.device = system.devices.front().device;
    host.SetAccessLevel(system.accessLevel);
}

Component::~Component() {
    if (!addOn)
        return;
    addOn->Terminate();
    Require(addOn->Terminated(), "a component that is not busy terminates at once");
    Require(host.OpenConfigurations() == 0, "every configuration was handed back");
}

void Component::Start() {
    addOn->Register(host.Application());
    addOn->Enable();
    addOn->Show();
    addOn->Activate();
}

void Component::Press(const wchar_t* button) {
    auto* found = dynamic_cast<controls::Button*>(Editor().Root().Find(button));
    Require(found != nullptr, "the button is there");
    if (found->Enabled())
        found->Press();
}

const sim::SystemDescription& Tiny() {
    static const sim::SystemDescription system = sim::LoadDescription(ORV_SOURCE_DIR "/samples/tiny.json");
    return system;
}

std::string Narrow(const std::wstring& text) {
    return sim::ToUtf8(text);
}

} // namespace orv::fuzz
