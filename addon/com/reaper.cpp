#include "addon/com/reaper.h"

#include <atomic>
#include <mutex>
#include <utility>

#include "addon/com/control.h"

namespace orv::addon::com {
namespace {

// Long enough not to be busy while a box stays open, short enough that nobody waits for it.
constexpr UINT kMilliseconds = 20;

std::mutex lock;
Control* waiting = nullptr;          ///< linked through the controls' places
std::atomic<int> countOfWaiting = 0; ///< so that a call need not lock to find nobody
thread_local UINT_PTR timer = 0;

} // namespace

void Reaper::Dispose(Control& control) {
    if (control.Idle())
        delete &control;
    else
        Collect(control);
}

void Reaper::Collect(Control& control) {
    control.place_.thread = GetCurrentThreadId();
    control.place_.running.Reset(OpenThread(SYNCHRONIZE, FALSE, control.place_.thread));
    {
        const std::lock_guard guard(lock);
        control.place_.next = std::exchange(waiting, &control);
        ++countOfWaiting;
    }
    if (timer == 0)
        timer = SetTimer(nullptr, 0, kMilliseconds, &Reaper::Tick);
}

bool Reaper::MayGo(const Control& control) {
    const Place& place = control.place_;
    if (place.thread == GetCurrentThreadId())
        return control.Idle();
    return place.running && WaitForSingleObject(place.running.Get(), 0) == WAIT_OBJECT_0 && control.Settled();
}

bool Reaper::AnyOfThisThread() {
    const std::lock_guard guard(lock);
    for (const Control* control = waiting; control; control = control->place_.next)
        if (control->place_.thread == GetCurrentThreadId())
            return true;
    return false;
}

Control* Reaper::TakeNext() {
    const std::lock_guard guard(lock);
    for (Control** link = &waiting; *link; link = &(*link)->place_.next)
        if (MayGo(**link)) {
            --countOfWaiting;
            return std::exchange(*link, (*link)->place_.next);
        }
    return nullptr;
}

// Before the last control goes: without one the file may be unloaded, and the timer would lead nowhere.
void Reaper::StopTicking() {
    if (timer != 0 && !AnyOfThisThread())
        KillTimer(nullptr, std::exchange(timer, 0));
}

void Reaper::Look() {
    if (countOfWaiting == 0)
        return;
    while (Control* const control = TakeNext()) {
        StopTicking();
        delete control;
    }
}

void CALLBACK Reaper::Tick(HWND, UINT, UINT_PTR, DWORD) {
    Look();
}

} // namespace orv::addon::com
