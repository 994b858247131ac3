#include "host/sim/portable_pump.h"

#include <algorithm>
#include <stdexcept>

namespace orv::sim {
namespace {

/// Counts the waits that are open, on every way out.
struct OpenWait {
    explicit OpenWait(int& depth) : depth_(depth) { ++depth_; }
    ~OpenWait() { --depth_; }
    OpenWait(const OpenWait&) = delete;
    OpenWait& operator=(const OpenWait&) = delete;
    int& depth_;
};

} // namespace

platform::Wait PortablePump::PumpUntil(const std::function<bool()>& predicate) {
    const OpenWait open(depth_);
    for (;;) {
        if (const auto ended = Ended())
            return *ended;
        if (predicate())
            return platform::Wait::Satisfied;
        if (const std::function<void()> task = Take())
            task();
    }
}

std::optional<platform::Wait> PortablePump::Ended() const {
    const std::lock_guard lock(mutex_);
    if (closed_)
        return platform::Wait::Closing;
    if (quit_)
        return platform::Wait::Quit;
    return {};
}

std::function<void()> PortablePump::Take() {
    std::unique_lock lock(mutex_);
    PromoteDue();
    if (ready_.empty() && !closed_ && !quit_)
        Sleep(lock);
    if (ready_.empty() || closed_ || quit_)
        return {};
    std::function<void()> task = std::move(ready_.front());
    ready_.pop_front();
    return task;
}

void PortablePump::Sleep(std::unique_lock<std::mutex>& lock) {
    ++sleeps_;
    const Clock::time_point never = Clock::time_point::max();
    const Clock::time_point deadline = limit_ ? Clock::now() + *limit_ : never;
    while (ready_.empty() && !closed_ && !quit_) {
        const Clock::time_point due = delayed_.empty() ? never : delayed_.begin()->first;
        const Clock::time_point until = std::min(due, deadline);
        if (until == never)
            changed_.wait(lock);
        else if (changed_.wait_until(lock, until) == std::cv_status::timeout && deadline < due)
            throw std::runtime_error("the message loop slept longer than its limit");
        PromoteDue();
    }
}

void PortablePump::PromoteDue() {
    const Clock::time_point now = Clock::now();
    while (!delayed_.empty() && delayed_.begin()->first <= now) {
        ready_.push_back(std::move(delayed_.begin()->second));
        delayed_.erase(delayed_.begin());
    }
}

void PortablePump::ProcessPending() {
    std::size_t pending = 0;
    {
        const std::lock_guard lock(mutex_);
        PromoteDue();
        pending = ready_.size();
    }
    // What a task posts waits for the next time; a nested wait may have taken some meanwhile.
    for (; pending > 0; --pending) {
        std::function<void()> task;
        {
            const std::lock_guard lock(mutex_);
            if (ready_.empty() || closed_)
                return;
            task = std::move(ready_.front());
            ready_.pop_front();
        }
        task();
    }
}

void PortablePump::Post(std::function<void()> task) {
    {
        const std::lock_guard lock(mutex_);
        ready_.push_back(std::move(task));
    }
    changed_.notify_all();
}

void PortablePump::PostAfter(std::chrono::milliseconds delay, std::function<void()> task) {
    {
        const std::lock_guard lock(mutex_);
        delayed_.emplace(Clock::now() + delay, std::move(task));
    }
    changed_.notify_all();
}

void PortablePump::Close() {
    {
        const std::lock_guard lock(mutex_);
        closed_ = true;
    }
    changed_.notify_all();
}

void PortablePump::Quit() {
    {
        const std::lock_guard lock(mutex_);
        quit_ = true;
    }
    changed_.notify_all();
}

void PortablePump::SetLimit(std::chrono::milliseconds longestSleep) {
    const std::lock_guard lock(mutex_);
    limit_ = longestSleep;
}

std::int64_t PortablePump::SleepCount() const {
    const std::lock_guard lock(mutex_);
    return sleeps_;
}

} // namespace orv::sim
