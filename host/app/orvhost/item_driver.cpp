#include "host/app/orvhost/item_driver.h"

#include <stdexcept>

#include "host/sim/utf8.h"

namespace orv::host {
namespace {

constexpr int kSteps = 4;
constexpr int kLongest = 512;

enum class Kind { None, List, Tabs, Toolbar };

Kind KindOf(HWND window) {
    wchar_t name[64];
    GetClassNameW(window, name, 64);
    const auto is = [&name](const wchar_t* type) { return lstrcmpiW(name, type) == 0; };
    return is(WC_LISTVIEWW)        ? Kind::List
           : is(WC_TABCONTROLW)    ? Kind::Tabs
           : is(TOOLBARCLASSNAMEW) ? Kind::Toolbar
                                   : Kind::None;
}

LRESULT Ask(HWND window, UINT message, int item, const void* structure) {
    return SendMessageW(window, message, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(structure));
}

int Count(HWND window) {
    switch (KindOf(window)) {
    case Kind::List:
        return static_cast<int>(SendMessageW(window, LVM_GETITEMCOUNT, 0, 0));
    case Kind::Tabs:
        return static_cast<int>(SendMessageW(window, TCM_GETITEMCOUNT, 0, 0));
    case Kind::Toolbar:
        return static_cast<int>(SendMessageW(window, TB_BUTTONCOUNT, 0, 0));
    case Kind::None:
        break;
    }
    return 0;
}

TBBUTTON ButtonAt(HWND toolbar, int item) {
    TBBUTTON button{};
    Ask(toolbar, TB_GETBUTTON, item, &button);
    return button;
}

std::wstring TextAt(HWND window, int item) {
    wchar_t text[kLongest] = L"";
    switch (KindOf(window)) {
    case Kind::List: {
        LVITEMW query{};
        query.pszText = text;
        query.cchTextMax = kLongest;
        Ask(window, LVM_GETITEMTEXTW, item, &query);
        return query.pszText; // the list may answer with a text of its own
    }
    case Kind::Tabs: {
        TCITEMW query{};
        query.mask = TCIF_TEXT;
        query.pszText = text;
        query.cchTextMax = kLongest;
        Ask(window, TCM_GETITEMW, item, &query);
        return query.pszText;
    }
    case Kind::Toolbar:
        Ask(window, TB_GETBUTTONTEXTW, ButtonAt(window, item).idCommand, text);
        break;
    case Kind::None:
        break;
    }
    return text;
}

RECT PlaceOf(HWND window, int item) {
    RECT place{};
    switch (KindOf(window)) {
    case Kind::List:
        SendMessageW(window, LVM_ENSUREVISIBLE, static_cast<WPARAM>(item), FALSE);
        place.left = LVIR_BOUNDS;
        Ask(window, LVM_GETITEMRECT, item, &place);
        break;
    case Kind::Tabs:
        Ask(window, TCM_GETITEMRECT, item, &place);
        break;
    case Kind::Toolbar:
        Ask(window, TB_GETITEMRECT, item, &place);
        break;
    case Kind::None:
        break;
    }
    return place;
}

bool IsChecked(HWND list, int item) {
    return SendMessageW(list, LVM_GETITEMSTATE, static_cast<WPARAM>(item), LVIS_STATEIMAGEMASK) ==
           static_cast<LRESULT>(INDEXTOSTATEIMAGEMASK(2u));
}

bool HasBoxes(HWND list) {
    return (SendMessageW(list, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_CHECKBOXES) != 0;
}

LPARAM Middle(const RECT& place) {
    return MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
}

/// Where a row dropped into `gap` would go, in the list's coordinates.
POINT GapAt(HWND list, int gap) {
    const int rows = Count(list);
    RECT client{};
    GetClientRect(list, &client);
    const LONG across = client.right / 2;
    if (rows == 0)
        return {across, client.bottom / 2};
    const RECT row = PlaceOf(list, gap < rows ? gap : rows - 1);
    return {across, gap < rows ? row.top + 1 : row.bottom - 1};
}

} // namespace

bool Matches(const std::wstring& text, const std::wstring& pattern) {
    return !pattern.empty() && pattern.back() == L'*' ? text.starts_with(pattern.substr(0, pattern.size() - 1))
                                                      : text == pattern;
}

std::vector<std::wstring> ItemTexts(HWND window) {
    std::vector<std::wstring> texts;
    for (int item = 0; item < Count(window); ++item)
        texts.push_back(TextAt(window, item));
    return texts;
}

std::wstring ItemsShown(HWND window) {
    const Kind kind = KindOf(window);
    std::wstring shown;
    for (int item = 0; item < Count(window); ++item) {
        if (kind == Kind::Tabs && SendMessageW(window, TCM_GETCURSEL, 0, 0) != item)
            continue;
        if (kind == Kind::Toolbar && (ButtonAt(window, item).fsState & TBSTATE_CHECKED) == 0)
            continue;
        const bool boxed = kind == Kind::List && HasBoxes(window);
        shown += (shown.empty() ? L"" : L" | ");
        shown += (boxed ? IsChecked(window, item) ? L"[x] " : L"[ ] " : L"") + TextAt(window, item);
    }
    return shown;
}

int FindItem(HWND window, const std::wstring& text) {
    const auto texts = ItemTexts(window);
    for (std::size_t item = 0; item < texts.size(); ++item) {
        if (Matches(texts[item], text))
            return static_cast<int>(item);
    }
    throw std::runtime_error("there is no \"" + sim::Excerpt(sim::ToUtf8(text)) + "\" among " +
                             std::to_string(texts.size()));
}

void ClickItem(HWND window, int item, bool twice) {
    const LPARAM at = Middle(PlaceOf(window, item));
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageW(window, WM_LBUTTONUP, 0, at);
    if (!twice)
        return;
    PostMessageW(window, WM_LBUTTONDBLCLK, MK_LBUTTON, at);
    PostMessageW(window, WM_LBUTTONUP, 0, at);
}

void CheckItem(HWND list, int item, bool checked) {
    if (!HasBoxes(list))
        throw std::runtime_error("its rows have no check boxes");
    if (IsChecked(list, item) == checked)
        return;
    const RECT row = PlaceOf(list, item);
    RECT text{};
    text.left = LVIR_LABEL;
    Ask(list, LVM_GETITEMRECT, item, &text);
    const LPARAM at = Middle({row.left, row.top, text.left, row.bottom});
    PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageW(list, WM_LBUTTONUP, 0, at);
}

void DragItem(HWND toolbar, int item, HWND list, int gap) {
    if (KindOf(toolbar) != Kind::Toolbar || KindOf(list) != Kind::List)
        throw std::runtime_error("a button of a toolbar is dragged to a list");
    if (gap > Count(list))
        throw std::runtime_error("the list has " + std::to_string(Count(list)) + " rows");
    const RECT button = PlaceOf(toolbar, item);
    const POINT from{(button.left + button.right) / 2, (button.top + button.bottom) / 2};
    // The press may scroll the toolbar to what it is on: where the list stands is looked at behind it.
    SendMessageW(toolbar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from.x, from.y));
    POINT to = GapAt(list, gap);
    MapWindowPoints(list, toolbar, &to, 1);
    for (int step = 1; step <= kSteps; ++step)
        PostMessageW(toolbar, WM_MOUSEMOVE, MK_LBUTTON,
                     MAKELPARAM(from.x + (to.x - from.x) * step / kSteps, from.y + (to.y - from.y) * step / kSteps));
    PostMessageW(toolbar, WM_LBUTTONUP, 0, MAKELPARAM(to.x, to.y));
}

} // namespace orv::host
