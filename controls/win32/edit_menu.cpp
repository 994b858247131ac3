#include "controls/win32/edit_menu.h"

#include "text/texts.h"

namespace orv::controls::win32 {
namespace {

using platform::win32::OwnedMenu;

constexpr int kRows = 17;

void Append(HMENU menu, EditCommand command, text::Id id, bool enabled) {
    AppendMenuW(menu, MF_STRING | (enabled ? MF_ENABLED : MF_GRAYED), static_cast<UINT_PTR>(command),
                text::Load(id).c_str());
}

void AppendNames(HMENU menu, bool enabled) {
    OwnedMenu names(CreatePopupMenu());
    UINT_PTR id = static_cast<UINT_PTR>(EditCommand::FirstName);
    int row = 0;
    for (const std::wstring& name : ControlNames()) {
        // As many columns as keep the menu on a small screen.
        const UINT column = row++ == kRows ? MF_MENUBARBREAK : 0;
        AppendMenuW(names.Get(), MF_STRING | column, id++, name.c_str());
    }
    const UINT state = enabled ? MF_ENABLED : MF_GRAYED;
    if (AppendMenuW(menu, MF_POPUP | state, reinterpret_cast<UINT_PTR>(names.Get()),
                    text::Load(text::Id::MenuInsert).c_str()))
        names.Release(); // it goes with the menu
}

} // namespace

OwnedMenu MakeEditMenu(const MBEdit& edit) {
    OwnedMenu menu(CreatePopupMenu());
    const bool selected = edit.SelLength() > 0;
    const bool open = !edit.Locked();
    Append(menu.Get(), EditCommand::Undo, text::Id::MenuUndo, edit.Core().CanUndo());
    Append(menu.Get(), EditCommand::Redo, text::Id::MenuRedo, edit.Core().CanRedo());
    AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
    Append(menu.Get(), EditCommand::Cut, text::Id::MenuCut, open && selected);
    Append(menu.Get(), EditCommand::Copy, text::Id::MenuCopy, selected);
    Append(menu.Get(), EditCommand::Paste, text::Id::MenuPaste, open);
    AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
    Append(menu.Get(), EditCommand::SelectAll, text::Id::MenuSelectAll, edit.TextLength() > 0);
    AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
    AppendNames(menu.Get(), open);
    return menu;
}

EditCommand RunEditMenu(HWND window, POINT where, const MBEdit& edit) {
    const OwnedMenu menu = MakeEditMenu(edit);
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
    case EditCommand::Redo:
        edit.Redo();
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
    default:
        edit.InsertCC(static_cast<std::uint8_t>(static_cast<int>(command) - static_cast<int>(EditCommand::FirstName)));
    }
}

} // namespace orv::controls::win32
