#pragma once
// Window classes of this module. Each is registered once, by whichever thread needs it first, and stays until the
// module goes: with controls on several threads no end of one may take the class from under the others.
#include "platform/win32/system.h"

namespace orv::platform::win32 {

/// Registers `type` for this module if that was not done yet. Size and module are filled in; the name must be a
/// literal, and the same one each time. Any thread. Raises the system's error.
void RequireWindowClass(WNDCLASSEXW type);

/// Gives all of them back, for a module that is unloaded: the system keeps a class whose procedure is gone. No window
/// of the module is left, and no other thread runs in it.
void ReturnWindowClasses() noexcept;

} // namespace orv::platform::win32
