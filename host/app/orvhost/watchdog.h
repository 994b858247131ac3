#pragma once
// Ends the process when its user-interface thread is stuck: a played script must never hang.
#include <condition_variable>
#include <mutex>
#include <thread>

namespace orv::host {

class Watchdog {
  public:
    explicit Watchdog(int seconds);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;
    /// The thread is alive.
    void Feed();

  private:
    std::mutex lock_;
    std::condition_variable changed_;
    bool fed_ = false;
    bool ended_ = false;
    std::thread thread_;
};

} // namespace orv::host
