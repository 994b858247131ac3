#include "addon/com/reaper.h"

#include <algorithm>
#include <vector>

#include "addon/com/control.h"

namespace orv::addon::com {
namespace {

// Long enough not to be busy while a box stays open, short enough that nobody waits for it.
constexpr UINT kMilliseconds = 20;

std::vector<Control*>& Waiting() {
    static std::vector<Control*> waiting;
    return waiting;
}

} // namespace

struct ReaperTimer {
    static void CALLBACK Tick(HWND, UINT, UINT_PTR id, DWORD) {
        Reaper::Look();
        if (Waiting().empty())
            KillTimer(nullptr, id);
    }
};

void Reaper::Collect(Control& control) {
    if (Waiting().empty())
        SetTimer(nullptr, 0, kMilliseconds, &ReaperTimer::Tick);
    Waiting().push_back(&control);
}

void Reaper::Dispose(Control& control) {
    if (control.Idle())
        delete &control;
    else
        Collect(control);
}

void Reaper::Look() {
    const std::vector<Control*> candidates = Waiting();
    for (Control* control : candidates) {
        if (!control->Idle())
            continue;
        std::erase(Waiting(), control);
        delete control;
    }
}

} // namespace orv::addon::com
