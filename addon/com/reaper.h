#pragma once
// Destroys controls whose last reference went while their own code was still on the stack.
#include "platform/win32/owned.h"

namespace orv::addon::com {

class Control;

/// Controls wait here until nothing of them runs. Each is destroyed by the thread it lives on: at the end of a call
/// into the component, or from the message loop. Where that thread has ended without either, whoever looks next does
/// it.
class Reaper {
  public:
    /// A control's place among those that wait; its own, so that a last release needs no memory.
    struct Place {
        Control* next = nullptr;
        DWORD thread = 0;
        platform::win32::OwnedHandle running; ///< of that thread; its number is nobody else's while this is open
    };

    /// Destroys the control at once when nothing of it runs, else later.
    static void Dispose(Control& control);
    /// Any thread; cheap when none waits.
    static void Look();

  private:
    static void Collect(Control& control);
    static bool MayGo(const Control& control);
    static bool AnyOfThisThread();
    static Control* TakeNext();
    static void StopTicking();
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD);
};

} // namespace orv::addon::com
