#pragma once
#include "platform/win32/system.h"

#include "controls/mb_edit.h"
#include "platform/win32/owned.h"

namespace orv::controls::win32 {

/// From FirstName on: the byte to insert.
enum class EditCommand { None, Undo, Redo, Cut, Copy, Paste, SelectAll, FirstName = 100 };

/// The context menu with what can be done at present, the names of the control characters in a menu below it.
platform::win32::OwnedMenu MakeEditMenu(const MBEdit& edit);
/// Shows it at a point of the screen; runs a loop of its own, after which the box may be gone.
EditCommand RunEditMenu(HWND window, POINT where, const MBEdit& edit);
void Perform(EditCommand command, MBEdit& edit);

} // namespace orv::controls::win32
