#pragma once
// The host's message loop, as the simulated objects need it: tasks posted from any thread run from the loop, whoever
// runs the loop at that moment.
#include <deque>
#include <functional>
#include <mutex>

#include "host/app/orvhost/system.h"
#include "host/sim/tcp_service.h"

namespace orv::host {

class HostPump final : public platform::MessagePump {
  public:
    HostPump();
    ~HostPump() override;

    /// Looks at a message before it is dispatched; answers whether it has dealt with it.
    void SetFilter(std::function<bool(MSG&)> filter) { filter_ = std::move(filter); }
    void Handle(MSG& message);

    platform::Wait PumpUntil(const std::function<bool()>& predicate) override;
    /// As above, but gives up after a time; answers whether the predicate came true.
    bool PumpFor(DWORD milliseconds, const std::function<bool()>& predicate);
    void ProcessPending() override;
    void Post(std::function<void()> task) override;
    /// Drops what is posted; every wait answers Closing from now on.
    void Close() override;

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    void RunOne();

    OwnedWindow window_;
    std::function<bool(MSG&)> filter_;
    std::mutex lock_;
    std::deque<std::function<void()>> tasks_;
    bool closed_ = false;
};

} // namespace orv::host
