#pragma once
#include <atomic>
#include <deque>
#include <list>
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

    using PreTranslate = std::function<bool(MSG&)>;
    class PreTranslation;
    /// Sees each message before it is dispatched, the one added last first; true when it has dealt with it. So the
    /// keyboard works while the component waits and the container's own loop does not run.
    [[nodiscard]] PreTranslation AddPreTranslate(PreTranslate hook);
    /// Called in the catch block of a task that failed: none may leave the window procedure it ran in.
    void SetFailureHook(std::function<void()> hook) { failed_ = std::move(hook); }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    void Dispatch(MSG& message);
    void RunOne();

    OwnedWindow window_;
    std::list<PreTranslate> preTranslates_; ///< newest first; a list, for a hook may add and remove others
    std::function<void()> failed_;
    std::mutex lock_;
    std::deque<std::function<void()>> tasks_;
    std::atomic<bool> closing_ = false;
    int depth_ = 0;
};

/// Takes its hook away again. The pump outlives it.
class SystemPump::PreTranslation {
  public:
    PreTranslation() = default;
    PreTranslation(PreTranslation&& other) noexcept : pump_(std::exchange(other.pump_, nullptr)), hook_(other.hook_) {}
    PreTranslation& operator=(PreTranslation&& other) noexcept {
        std::swap(pump_, other.pump_);
        std::swap(hook_, other.hook_);
        return *this;
    }
    PreTranslation(const PreTranslation&) = delete;
    PreTranslation& operator=(const PreTranslation&) = delete;
    ~PreTranslation() {
        if (pump_)
            pump_->preTranslates_.erase(hook_);
    }

  private:
    friend class SystemPump;
    PreTranslation(SystemPump& pump, std::list<PreTranslate>::iterator hook) : pump_(&pump), hook_(hook) {}
    SystemPump* pump_ = nullptr;
    std::list<PreTranslate>::iterator hook_;
};

} // namespace orv::platform::win32
