#include "bench/win32/twin_kinds.h"

#include <commctrl.h>
#include <richedit.h>

#include "controls/win32/pictures.h"

namespace orv::bench {
namespace {

using Shown = Twin::Shown;

void Nothing(HWND, HWND) {}
void ReadNothing(HWND, Shown&) {}
void FillNothing(HWND, const Shown&) {}

void FillText(HWND window, const Shown& shown) {
    SetWindowTextW(window, shown.text.c_str());
}

void ReadButton(HWND window, Shown& shown) {
    shown.chosen = static_cast<int>(SendMessageW(window, BM_GETCHECK, 0, 0));
}
void FillButton(HWND window, const Shown& shown) {
    FillText(window, shown);
    SendMessageW(window, BM_SETCHECK, static_cast<WPARAM>(shown.chosen), 0);
}

// The entries of a combo box come from the device's description: they do not change from page to page.
void PrepareCombo(HWND original, HWND copy) {
    const auto count = static_cast<WPARAM>(SendMessageW(original, CB_GETCOUNT, 0, 0));
    for (WPARAM i = 0; i < count; ++i) {
        std::wstring text(static_cast<std::size_t>(SendMessageW(original, CB_GETLBTEXTLEN, i, 0)) + 1, L'\0');
        SendMessageW(original, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data()));
        SendMessageW(copy, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    }
    SendMessageW(copy, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1),
                 SendMessageW(original, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
}
void ReadCombo(HWND window, Shown& shown) {
    shown.chosen = static_cast<int>(SendMessageW(window, CB_GETCURSEL, 0, 0));
}
void FillCombo(HWND window, const Shown& shown) {
    SendMessageW(window, CB_SETCURSEL, static_cast<WPARAM>(shown.chosen), 0);
}

void PrepareList(HWND original, HWND copy) {
    ListView_SetExtendedListViewStyle(copy, ListView_GetExtendedListViewStyle(original));
    LVCOLUMNW column{};
    column.mask = LVCF_WIDTH;
    column.cx = ListView_GetColumnWidth(original, 0);
    ListView_InsertColumn(copy, 0, &column);
}
void ReadList(HWND window, Shown& shown) {
    const int count = ListView_GetItemCount(window);
    for (int i = 0; i < count; ++i) {
        wchar_t text[260] = {};
        ListView_GetItemText(window, i, 0, text, ARRAYSIZE(text));
        shown.items.emplace_back(text);
        shown.states.push_back(ListView_GetItemState(window, i, LVIS_STATEIMAGEMASK | LVIS_SELECTED | LVIS_FOCUSED));
    }
}
void FillList(HWND window, const Shown& shown) {
    SendMessageW(window, WM_SETREDRAW, FALSE, 0);
    ListView_DeleteAllItems(window);
    for (std::size_t i = 0; i < shown.items.size(); ++i) {
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = static_cast<int>(i);
        item.pszText = const_cast<wchar_t*>(shown.items[i].c_str());
        ListView_InsertItem(window, &item);
        ListView_SetItemState(window, static_cast<int>(i), shown.states[i],
                              LVIS_STATEIMAGEMASK | LVIS_SELECTED | LVIS_FOCUSED);
    }
    SendMessageW(window, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(window, nullptr, TRUE);
}

void ReadTabs(HWND window, Shown& shown) {
    const int count = TabCtrl_GetItemCount(window);
    for (int i = 0; i < count; ++i) {
        wchar_t text[64] = {};
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        item.cchTextMax = ARRAYSIZE(text);
        TabCtrl_GetItem(window, i, &item);
        shown.items.emplace_back(text);
    }
    shown.chosen = TabCtrl_GetCurSel(window);
}
void FillTabs(HWND window, const Shown& shown) {
    TabCtrl_DeleteAllItems(window);
    for (std::size_t i = 0; i < shown.items.size(); ++i) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<wchar_t*>(shown.items[i].c_str());
        TabCtrl_InsertItem(window, static_cast<int>(i), &item);
    }
    TabCtrl_SetCurSel(window, shown.chosen);
}

TBBUTTON ButtonAt(HWND window, int index) {
    TBBUTTON button{};
    SendMessageW(window, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
    return button;
}
// What can be chosen comes from the device, too.
void PrepareToolbar(HWND original, HWND copy) {
    SendMessageW(copy, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(copy, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_DOUBLEBUFFER);
    SendMessageW(copy, TB_SETBUTTONSIZE, 0, SendMessageW(original, TB_GETBUTTONSIZE, 0, 0));
    const auto count = static_cast<int>(SendMessageW(original, TB_BUTTONCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        TBBUTTON button = ButtonAt(original, i);
        SendMessageW(copy, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
}
void ReadToolbar(HWND window, Shown& shown) {
    const auto count = static_cast<int>(SendMessageW(window, TB_BUTTONCOUNT, 0, 0));
    for (int i = 0; i < count; ++i)
        shown.states.push_back(ButtonAt(window, i).fsState);
}
void FillToolbar(HWND window, const Shown& shown) {
    for (std::size_t i = 0; i < shown.states.size(); ++i)
        SendMessageW(window, TB_SETSTATE, static_cast<WPARAM>(ButtonAt(window, static_cast<int>(i)).idCommand),
                     static_cast<LPARAM>(shown.states[i]));
}

HTREEITEM Following(HWND window, HTREEITEM item) {
    return item ? TreeView_GetNextVisible(window, item) : TreeView_GetRoot(window);
}
// The nodes are there before a page is opened; opening it selects one.
void PrepareTree(HWND original, HWND copy) {
    HTREEITEM root = nullptr;
    for (HTREEITEM item = Following(original, nullptr); item; item = Following(original, item)) {
        wchar_t text[260] = {};
        TVINSERTSTRUCTW insert{};
        insert.item.mask = TVIF_TEXT | TVIF_HANDLE;
        insert.item.hItem = item;
        insert.item.pszText = text;
        insert.item.cchTextMax = ARRAYSIZE(text);
        TreeView_GetItem(original, &insert.item);
        const bool below = TreeView_GetParent(original, item) != nullptr;
        insert.hParent = below ? root : TVI_ROOT;
        insert.hInsertAfter = TVI_LAST;
        insert.item.mask = TVIF_TEXT;
        const HTREEITEM made = TreeView_InsertItem(copy, &insert);
        root = below ? root : made;
        TreeView_Expand(copy, root, TVE_EXPAND);
    }
}
void ReadTree(HWND window, Shown& shown) {
    const HTREEITEM selected = TreeView_GetSelection(window);
    shown.chosen = 0;
    for (HTREEITEM item = Following(window, nullptr); item && item != selected; item = Following(window, item))
        ++shown.chosen;
}
void FillTree(HWND window, const Shown& shown) {
    HTREEITEM item = Following(window, nullptr);
    for (int i = 0; i < shown.chosen; ++i)
        item = Following(window, item);
    TreeView_SelectItem(window, item);
}

DWORD CALLBACK Append(DWORD_PTR cookie, LPBYTE bytes, LONG count, LONG* taken) {
    reinterpret_cast<std::string*>(cookie)->append(reinterpret_cast<const char*>(bytes),
                                                   static_cast<std::size_t>(count));
    *taken = count;
    return 0;
}
DWORD CALLBACK Give(DWORD_PTR cookie, LPBYTE buffer, LONG wanted, LONG* given) {
    std::string_view& rest = *reinterpret_cast<std::string_view*>(cookie);
    const std::size_t count = rest.copy(reinterpret_cast<char*>(buffer), static_cast<std::size_t>(wanted));
    rest.remove_prefix(count);
    *given = static_cast<LONG>(count);
    return 0;
}
void ReadRich(HWND window, Shown& shown) {
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&shown.rich), 0, &Append};
    SendMessageW(window, EM_STREAMOUT, SF_RTF, reinterpret_cast<LPARAM>(&stream));
}
void FillRich(HWND window, const Shown& shown) {
    std::string_view rest = shown.rich;
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&rest), 0, &Give};
    SendMessageW(window, EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
}

constexpr TwinKind kKinds[] = {
    {L"Static", nullptr, 0, &Nothing, &ReadNothing, &FillText},
    {L"Edit", nullptr, 0, &Nothing, &ReadNothing, &FillText},
    {L"Button", nullptr, 0, &Nothing, &ReadButton, &FillButton},
    {L"ComboBox", nullptr, 0, &PrepareCombo, &ReadCombo, &FillCombo},
    // A list that asks for its texts would have nobody to answer.
    {WC_LISTVIEWW, nullptr, LVS_OWNERDATA | LVS_SHAREIMAGELISTS, &PrepareList, &ReadList, &FillList},
    {WC_TABCONTROLW, nullptr, 0, &Nothing, &ReadTabs, &FillTabs},
    {TOOLBARCLASSNAMEW, nullptr, 0, &PrepareToolbar, &ReadToolbar, &FillToolbar},
    {MSFTEDIT_CLASS, nullptr, 0, &Nothing, &ReadRich, &FillRich},
    {WC_TREEVIEWW, nullptr, 0, &PrepareTree, &ReadTree, &FillTree},
    {UPDOWN_CLASSW, nullptr, 0, &Nothing, &ReadNothing, &FillNothing},
};
constexpr TwinKind kPlain = {L"", L"STATIC", 0, &Nothing, &ReadNothing, &FillNothing};

} // namespace

const TwinKind& TwinKindOf(HWND window) {
    wchar_t type[64] = {};
    GetClassNameW(window, type, ARRAYSIZE(type));
    for (const TwinKind& kind : kKinds)
        if (_wcsicmp(kind.type, type) == 0)
            return kind;
    return kPlain;
}

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

} // namespace orv::bench
