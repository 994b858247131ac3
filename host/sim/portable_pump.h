#pragma once
// A message loop without windows: a queue of tasks that any thread may fill.
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>

#include "platform/services.h"

namespace orv::sim {

/// PumpUntil and ProcessPending belong to one thread, the rest to any.
class PortablePump final : public platform::MessagePump {
  public:
    using Clock = std::chrono::steady_clock;

    platform::Wait PumpUntil(const std::function<bool()>& predicate) override;
    void ProcessPending() override;
    void Post(std::function<void()> task) override;
    void Close() override;

    void PostAfter(std::chrono::milliseconds delay, std::function<void()> task);
    /// Every wait answers Quit from now on (Closing goes before it).
    void Quit();
    /// A wait that sleeps longer in one go raises std::runtime_error; for tests that must not hang. None at first.
    void SetLimit(std::chrono::milliseconds longestSleep);

    /// Sleeps so far, and waits open now.
    std::int64_t SleepCount() const;
    int Depth() const { return depth_; }

  private:
    std::function<void()> Take();
    std::optional<platform::Wait> Ended() const;
    void Sleep(std::unique_lock<std::mutex>& lock);
    void PromoteDue();

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::function<void()>> ready_;
    std::multimap<Clock::time_point, std::function<void()>> delayed_;
    std::optional<std::chrono::milliseconds> limit_;
    std::int64_t sleeps_ = 0;
    int depth_ = 0;
    bool closed_ = false;
    bool quit_ = false;
};

} // namespace orv::sim
