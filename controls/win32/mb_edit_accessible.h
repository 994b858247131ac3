#pragma once
#include "platform/win32/system.h"

#include "controls/mb_edit.h"

namespace orv::controls::win32 {

class AccessibleEdit;

/// What screen readers get to hear of an edit box: a text with the box's own name, whose value is spelled out byte
/// by byte ("STX, A, B, CR"). Clients may keep the object longer than the box; it answers no more then.
class MBEditAccessible {
  public:
    MBEditAccessible(HWND window, const MBEdit& edit);
    ~MBEditAccessible();
    MBEditAccessible(const MBEditAccessible&) = delete;
    MBEditAccessible& operator=(const MBEditAccessible&) = delete;

    /// For the message that asks for the object.
    LRESULT Answer(WPARAM wparam) const;

  private:
    AccessibleEdit* object_;
};

} // namespace orv::controls::win32
