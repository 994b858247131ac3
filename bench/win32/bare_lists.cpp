#include "bench/win32/bare_lists.h"

namespace orv::bench {
namespace {

constexpr DWORD kStyle = LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS;
constexpr UINT_PTR kSubclass = 2;

HWND MakeList(Stage& stage, const controls::Rect& like, DWORD style, DWORD extendedStyle) {
    const HWND window = stage.Bare(WC_LISTVIEWW, kStyle | style, WS_EX_CLIENTEDGE, like);
    ListView_SetExtendedListViewStyle(window, extendedStyle | LVS_EX_DOUBLEBUFFER | LVS_EX_FULLROWSELECT);
    RECT client{};
    GetClientRect(window, &client);
    LVCOLUMNW column{};
    column.mask = LVCF_WIDTH;
    column.cx = static_cast<int>(client.right) - GetSystemMetrics(SM_CXVSCROLL);
    ListView_InsertColumn(window, 0, &column);
    return window;
}

} // namespace

VirtualList::VirtualList(Stage& stage, const controls::Rect& like, HIMAGELIST pictures)
    : parent_(stage.parent.Get()), window_(MakeList(stage, like, LVS_OWNERDATA, 0)) {
    ListView_SetImageList(window_, pictures, LVSIL_SMALL);
    SetWindowSubclass(parent_, &VirtualList::Procedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
}

VirtualList::~VirtualList() {
    RemoveWindowSubclass(parent_, &VirtualList::Procedure, kSubclass);
    DestroyWindow(window_);
}

void VirtualList::Changed() const {
    SendMessageW(window_, LVM_SETITEMCOUNT, rows.size(), LVSICF_NOSCROLL);
    InvalidateRect(window_, nullptr, TRUE);
}

void VirtualList::Select(int row) const {
    ListView_SetItemState(window_, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(window_, row, FALSE);
}

void VirtualList::Answer(NMLVDISPINFOW& wanted) {
    const Row& row = rows[static_cast<std::size_t>(wanted.item.iItem)];
    if ((wanted.item.mask & LVIF_IMAGE) != 0)
        wanted.item.iImage = row.picture;
    if ((wanted.item.mask & LVIF_TEXT) != 0) {
        shown_ = std::to_wstring(wanted.item.iItem + 1) + L"  " + row.text;
        wanted.item.pszText = shown_.data();
    }
}

LRESULT CALLBACK VirtualList::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                                        DWORD_PTR self) {
    if (message == WM_NOTIFY && reinterpret_cast<NMHDR*>(lparam)->code == LVN_GETDISPINFOW) {
        reinterpret_cast<VirtualList*>(self)->Answer(*reinterpret_cast<NMLVDISPINFOW*>(lparam));
        return 0;
    }
    return DefSubclassProc(window, message, wparam, lparam);
}

ItemList::ItemList(Stage& stage, const controls::Rect& like, DWORD extendedStyle)
    : window(MakeList(stage, like, 0, extendedStyle)) {}

void ItemList::Fill(const std::vector<VirtualList::Row>& rows) const {
    SendMessageW(window, WM_SETREDRAW, FALSE, 0);
    ListView_DeleteAllItems(window);
    SendMessageW(window, LVM_SETITEMCOUNT, rows.size(), 0);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_IMAGE;
        item.iItem = static_cast<int>(i);
        item.iImage = rows[i].picture;
        item.pszText = const_cast<wchar_t*>(rows[i].text.c_str());
        ListView_InsertItem(window, &item);
    }
    SendMessageW(window, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(window, nullptr, TRUE);
}

} // namespace orv::bench
