#pragma once
#include "platform/win32/system.h"

#include <string>

namespace orv::controls::win32 {

struct GroupBoxLook {
    HWND window;
    HFONT font;
    std::wstring caption;
    int lineHeight;
    int indent; ///< of the caption
    bool enabled;
};

/// Border and caption of a group box over the whole client area, in the theme of the system where it has one.
/// Does nothing where the clip box of `dc` leaves neither in sight.
void PaintGroupBox(HDC dc, const GroupBoxLook& look);

} // namespace orv::controls::win32
