#pragma once
#include "platform/win32/system.h"

namespace orv::controls::win32 {

/// Colour of control characters on `background`: the system's colour for what can be followed, or blue where that
/// one can hardly be read, or the text's where blue cannot either.
COLORREF TokenColour(COLORREF background);

/// Background of what is selected where the focus is not: the window's, a little towards the selection's. Text keeps
/// the window's colour on it.
COLORREF InactiveSelection();

} // namespace orv::controls::win32
