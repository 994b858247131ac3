#include "host/app/orvhost/control_driver.h"

#include <stdexcept>

#include "host/app/orvhost/item_driver.h"
#include "host/app/orvhost/script.h"
#include "host/sim/utf8.h"

namespace orv::host {
namespace {

std::string Label(const std::wstring& name, std::int32_t index) {
    return sim::ToUtf8(name) + (index != kNoIndex ? "(" + std::to_string(index) + ")" : "");
}

bool IsClass(HWND window, const wchar_t* type) {
    wchar_t name[64];
    GetClassNameW(window, name, 64);
    return lstrcmpiW(name, type) == 0;
}

// Posted: what the component does about it may show a box, and the script has to go on then.
void NotifyParent(HWND child, WORD code) {
    PostMessageW(GetParent(child), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(child), code), reinterpret_cast<LPARAM>(child));
}

void SetCombo(HWND combo, const std::wstring& value) {
    const LRESULT entry =
        SendMessageW(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(value.c_str()));
    if (entry == CB_ERR)
        throw std::runtime_error("there is no such entry");
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
    NotifyParent(combo, CBN_SELCHANGE);
}

void SetButton(HWND button, const std::wstring& value) {
    if (value != L"0" && value != L"1")
        throw std::runtime_error("a check or option button is set to 0 or 1");
    // An undetermined one is checked by the first click.
    const LRESULT state = SendMessageW(button, BM_GETCHECK, 0, 0);
    if (state != BST_CHECKED && (state == BST_INDETERMINATE || value == L"1"))
        PostMessageW(button, BM_CLICK, 0, 0);
    if (state != BST_UNCHECKED && value == L"0")
        PostMessageW(button, BM_CLICK, 0, 0);
}

/// Nothing where it is neither on nor off, as an empty field.
std::wstring StateOf(HWND button) {
    const LRESULT state = SendMessageW(button, BM_GETCHECK, 0, 0);
    return state == BST_INDETERMINATE ? L"" : state == BST_CHECKED ? L"1" : L"0";
}

std::wstring ItemText(HWND tree, HTREEITEM item) {
    wchar_t text[512] = L"";
    TVITEMW query{};
    query.mask = TVIF_TEXT;
    query.hItem = item;
    query.pszText = text;
    query.cchTextMax = 512;
    SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&query));
    return text;
}

HTREEITEM Next(HWND tree, WPARAM relation, HTREEITEM item) {
    return reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

/// `path` names the nodes from `item`'s level down; a single text is found on any level.
HTREEITEM FindNode(HWND tree, HTREEITEM item, const std::wstring& path) {
    const auto slash = path.find(L'/');
    for (; item != nullptr; item = Next(tree, TVGN_NEXT, item)) {
        const HTREEITEM child = Next(tree, TVGN_CHILD, item);
        const std::wstring text = ItemText(tree, item);
        if (Matches(text, path))
            return item;
        const bool down = slash != std::wstring::npos && Matches(text, path.substr(0, slash));
        if (const HTREEITEM found = down ? FindNode(tree, child, path.substr(slash + 1)) : nullptr)
            return found;
        if (const HTREEITEM found = slash == std::wstring::npos ? FindNode(tree, child, path) : nullptr)
            return found;
    }
    return nullptr;
}

BOOL CALLBACK FindDialog(HWND window, LPARAM found) {
    if (!IsClass(window, L"OrvOutFormat.Dialog") || !IsWindowVisible(window) || !IsWindowEnabled(window))
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

} // namespace

HWND OpenDialog() {
    HWND found = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &FindDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

HWND ControlDriver::Find(const std::wstring& name, std::int32_t index) const {
    static const UINT question = RegisterWindowMessageW(L"OrvFindControl");
    const ATOM atom = control_ != nullptr ? GlobalAddAtomW(name.c_str()) : static_cast<ATOM>(0);
    if (atom == 0)
        throw std::runtime_error("the add-on is not shown");
    const LRESULT found = SendMessageW(control_, question, atom, index);
    GlobalDeleteAtom(atom);
    if (found == 0)
        throw std::runtime_error("there is no control " + Label(name, index));
    return reinterpret_cast<HWND>(found);
}

HWND ControlDriver::FindUsable(const std::wstring& name, std::int32_t index) const {
    const HWND window = Find(name, index);
    if (!IsWindowVisible(window))
        throw std::runtime_error(Label(name, index) + " is not visible");
    for (HWND part = window; part != nullptr && part != GetParent(control_); part = GetParent(part)) {
        if (!IsWindowEnabled(part))
            throw std::runtime_error(Label(name, index) + " is disabled");
    }
    return window;
}

void ControlDriver::Focus(const std::wstring& name, std::int32_t index) const {
    const HWND window = FindUsable(name, index);
    SetFocus(window);
    const HWND focus = GetFocus();
    if (focus != window && !IsChild(window, focus))
        throw std::runtime_error(Label(name, index) + " does not take the keyboard");
}

void ControlDriver::Press(const std::wstring& name, std::int32_t index) const {
    PostMessageW(FindUsable(name, index), BM_CLICK, 0, 0);
}

void ControlDriver::Set(const std::wstring& name, std::int32_t index, const std::wstring& value) const {
    const HWND window = FindUsable(name, index);
    SetFocus(window);
    if (IsClass(window, WC_COMBOBOXW))
        SetCombo(window, value);
    else if (IsClass(window, WC_BUTTONW))
        SetButton(window, value);
    else if (!SetWindowTextW(window, value.c_str()))
        throw std::runtime_error(Label(name, index) + " refuses the value");
}

std::wstring ControlDriver::Value(const std::wstring& name, std::int32_t index) const {
    const HWND window = Find(name, index);
    if (IsClass(window, WC_BUTTONW) && (GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK) > BS_DEFPUSHBUTTON)
        return StateOf(window);
    if (IsClass(window, WC_TREEVIEWW))
        return ItemText(window, Next(window, TVGN_CARET, nullptr));
    const bool items =
        IsClass(window, WC_LISTVIEWW) || IsClass(window, WC_TABCONTROLW) || IsClass(window, TOOLBARCLASSNAMEW);
    return items ? ItemsShown(window) : WindowText(window);
}

void ControlDriver::Enter(const std::wstring& name, std::int32_t index, const std::wstring& text) const {
    Focus(name, index);
    const HWND edit = GetFocus();
    SendMessageW(edit, EM_SETSEL, 0, -1);
    if (text.empty())
        PostMessageW(edit, WM_KEYDOWN, VK_DELETE, 1);
    TypeText(text);
}

bool ControlDriver::HasNode(const std::wstring& path) const {
    const HWND tree = Find(L"tvw", kNoIndex);
    return FindNode(tree, Next(tree, TVGN_ROOT, nullptr), path) != nullptr;
}

void ControlDriver::SelectNode(const std::wstring& path) const {
    const HWND tree = FindUsable(L"tvw", kNoIndex);
    const HTREEITEM item = FindNode(tree, Next(tree, TVGN_ROOT, nullptr), path);
    if (item == nullptr)
        throw std::runtime_error("the tree has no node \"" + sim::Excerpt(sim::ToUtf8(path)) + "\"");
    SendMessageW(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
    RECT place{};
    TreeView_GetItemRect(tree, item, &place, TRUE);
    const LPARAM point = MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    // Both at once: the tree waits for the release inside the press.
    PostMessageW(tree, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(tree, WM_LBUTTONUP, 0, point);
}

} // namespace orv::host
