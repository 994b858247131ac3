#include "host/app/orvhost/watchdog.h"

#include <chrono>

#include "host/app/orvhost/system.h"
#include "host/app/orvhost/transcript.h"

namespace orv::host {

Watchdog::Watchdog(int seconds)
    : thread_([this, seconds] {
          std::unique_lock guard(lock_);
          while (!ended_) {
              fed_ = false;
              if (changed_.wait_for(guard, std::chrono::seconds(seconds), [this] { return fed_ || ended_; }))
                  continue;
              Transcript::Complain("the host did not answer in time and was ended");
              TerminateProcess(GetCurrentProcess(), 1);
          }
      }) {}

Watchdog::~Watchdog() {
    {
        const std::lock_guard guard(lock_);
        ended_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void Watchdog::Feed() {
    {
        const std::lock_guard guard(lock_);
        fed_ = true;
    }
    changed_.notify_all();
}

} // namespace orv::host
