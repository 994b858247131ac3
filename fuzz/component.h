#pragma once
// The whole component over the bench host, driven by a fuzzer's decisions.
#include <deque>
#include <functional>
#include <memory>

#include "addon/add_on.h"
#include "host/sim/bench_host.h"
#include "host/sim/portable_platform.h"

namespace orv::fuzz {

/// A queue of tasks that never sleeps: a wait that nothing is left for asks whoever drives it to end it.
class WakefulPump final : public platform::MessagePump {
  public:
    std::function<void()> onIdle;      ///< posts something or closes the pump
    std::function<void()> onSatisfied; ///< a wait got what it waited for

    platform::Wait PumpUntil(const std::function<bool()>& predicate) override;
    void ProcessPending() override;
    void Post(std::function<void()> task) override { tasks_.push_back(std::move(task)); }
    void Close() override { closed_ = true; }

  private:
    void RunNext();

    std::deque<std::function<void()>> tasks_;
    bool closed_ = false;
};

class SilentContainer final : public addon::Container {
  public:
    bool visible = true;
    bool enabled = true;

    void SetVisible(bool on) override { visible = on; }
    void SetEnabled(bool on) override { enabled = on; }
    bool UserMode() override { return true; }
    device::WindowHandle Window() override { return 77; }
};

/// One component in one host. The service is the caller's; without one only the configuration can be saved.
struct Component {
    explicit Component(const sim::SystemDescription& system);
    ~Component();
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    /// Registered, shown and activated, as a host does it.
    void Start();
    editor::Editor& Editor() { return addOn->Editor(); }
    model::OutFormatConfig& Root() { return *state.root; }
    void Press(const wchar_t* button);
    /// A box that tells of a failure.
    static bool TellsOfFailure(const platform::MessageBox& box) { return box.icon == platform::Icon::Critical; }

    sim::PortablePlatform platform;
    WakefulPump pump;
    platform::Services services{platform.boxes, platform.debug, pump, platform.registry, platform.desktop};
    sim::BenchHost host;
    addon::ProcessState state{services, host};
    SilentContainer container;
    std::unique_ptr<addon::AddOn> addOn;
};

/// The smallest of the samples, read once.
const sim::SystemDescription& Tiny();

/// All of it in UTF-8, for a message.
std::string Narrow(const std::wstring& text);

} // namespace orv::fuzz
