#pragma once
// Border, pointer, font and colours of an edit box's window.
#include "platform/win32/owned.h"

#include "controls/mb_edit.h"
#include "controls/win32/rich_view.h"

namespace orv::controls::win32 {

/// As the box says; the system where it says nothing, and always while the system shows high contrast.
ViewColours ColoursOf(const MBEdit& edit);
/// Of the box's choice; nothing when it has none.
platform::win32::OwnedFont FontOf(const MBEditLook& look, int dpi);
void PaintBorder(HWND window, bool border, COLORREF inside);

/// The pointer over a box: the window's own, one of the system's, or one from a file.
class PointerOver {
  public:
    void Choose(const MBEditLook& look);
    /// False to leave it to the window.
    bool Show() const;

  private:
    struct Destroy {
        void operator()(HCURSOR cursor) const { DestroyCursor(cursor); }
    };
    HCURSOR shown_ = nullptr;
    platform::win32::Owned<HCURSOR, Destroy> own_;
};

} // namespace orv::controls::win32
