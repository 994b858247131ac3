#pragma once
#include "platform/win32/system.h"

#include "controls/mb_edit.h"

namespace orv::controls::win32 {

enum class EditCommand { None, Undo, Cut, Copy, Paste, SelectAll };

/// Context menu at a point of the screen; runs a loop of its own, after which the box may be gone.
EditCommand RunEditMenu(HWND window, POINT where, const MBEdit& edit);
void Perform(EditCommand command, MBEdit& edit);

} // namespace orv::controls::win32
