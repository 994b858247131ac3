#pragma once
#include <atomic>
#include <deque>
#include <mutex>

#include "platform/services.h"
#include "platform/win32/owned.h"

namespace orv::platform::win32 {

/// The message queue of the thread that made it. Post and Close may be called from any thread, everything else from
/// that one only. Tasks still waiting when it is closed or destroyed are dropped unseen.
class SystemPump final : public MessagePump {
  public:
    SystemPump();
    SystemPump(const SystemPump&) = delete;
    SystemPump& operator=(const SystemPump&) = delete;
    ~SystemPump() override;

    Wait PumpUntil(const std::function<bool()>& predicate) override;
    void ProcessPending() override;
    void Post(std::function<void()> task) override;
    void Close() override;

    bool Closing() const { return closing_; }
    /// Waits running at present: what they stand on must not be released.
    int Depth() const { return depth_; }

    /// Sees each message before it is dispatched; true when it has dealt with it. So keyboard and modeless dialogs
    /// work while the component waits and the container's own loop does not run.
    void SetPreTranslate(std::function<bool(MSG&)> hook) { preTranslate_ = std::move(hook); }
    /// Called in the catch block of a task that failed: none may leave the window procedure it ran in.
    void SetFailureHook(std::function<void()> hook) { failed_ = std::move(hook); }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    void Dispatch(MSG& message);
    void RunOne();

    OwnedWindow window_;
    std::function<bool(MSG&)> preTranslate_;
    std::function<void()> failed_;
    std::mutex lock_;
    std::deque<std::function<void()>> tasks_;
    std::atomic<bool> closing_ = false;
    int depth_ = 0;
};

} // namespace orv::platform::win32
