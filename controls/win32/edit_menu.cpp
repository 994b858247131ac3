#include "controls/win32/edit_menu.h"

#include "platform/win32/owned.h"
#include "text/texts.h"

namespace orv::controls::win32 {
namespace {

void Append(HMENU menu, EditCommand command, text::Id id, bool enabled) {
    AppendMenuW(menu, MF_STRING | (enabled ? MF_ENABLED : MF_GRAYED), static_cast<UINT_PTR>(command),
                text::Load(id).c_str());
}

} // namespace

EditCommand RunEditMenu(HWND window, POINT where, const MBEdit& edit) {
    const platform::win32::OwnedMenu menu(CreatePopupMenu());
    const bool selected = edit.Core().SelLength() > 0;
    const bool open = !edit.Locked();
    Append(menu.Get(), EditCommand::Undo, text::Id::MenuUndo, open);
    AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
    Append(menu.Get(), EditCommand::Cut, text::Id::MenuCut, open && selected);
    Append(menu.Get(), EditCommand::Copy, text::Id::MenuCopy, selected);
    Append(menu.Get(), EditCommand::Paste, text::Id::MenuPaste, open);
    AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
    Append(menu.Get(), EditCommand::SelectAll, text::Id::MenuSelectAll, edit.Core().TextLength() > 0);
    return static_cast<EditCommand>(
        TrackPopupMenuEx(menu.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, where.x, where.y, window, nullptr));
}

void Perform(EditCommand command, MBEdit& edit) {
    switch (command) {
    case EditCommand::None:
        break;
    case EditCommand::Undo:
        edit.Undo();
        break;
    case EditCommand::Cut:
        edit.Cut();
        break;
    case EditCommand::Copy:
        edit.Copy();
        break;
    case EditCommand::Paste:
        edit.Paste();
        break;
    case EditCommand::SelectAll:
        edit.HandleKey({.key = Key::A, .ctrl = true});
        break;
    }
}

} // namespace orv::controls::win32
