#include "controls/win32/list_rows.h"

#include <algorithm>

namespace orv::controls::win32 {

void ListRows::Prepare(int rowHeight) {
    LVCOLUMNW column{};
    column.mask = LVCF_WIDTH;
    column.cx = 10;
    SendMessageW(list_, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
    // What the list adds to a picture differs by system: set, look, correct.
    SetCount(1);
    int picture = rowHeight;
    for (int i = 0; i < 2; ++i) {
        OwnedImageList next(ImageList_Create(1, std::max(picture, 1), ILC_COLOR, 0, 1));
        SendMessageW(list_, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(next.Get()));
        height_ = std::move(next);
        const RECT row = AreaOf(0);
        picture += rowHeight - static_cast<int>(row.bottom - row.top);
    }
}

void ListRows::SetCount(int count) {
    SendMessageW(list_, LVM_SETITEMCOUNT, static_cast<WPARAM>(count), LVSICF_NOSCROLL);
}

void ListRows::Select(int row) {
    LVITEMW state{};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    if (row >= 0)
        state.state = state.stateMask;
    // Item -1 stands for all.
    SendMessageW(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&state));
}

int ListRows::Top() const {
    return static_cast<int>(SendMessageW(list_, LVM_GETTOPINDEX, 0, 0));
}

void ListRows::ScrollTo(int top) {
    const RECT row = AreaOf(0);
    if (const int by = top - Top(); by != 0)
        SendMessageW(list_, LVM_SCROLL, 0, by * (row.bottom - row.top));
}

RECT ListRows::AreaOf(int row) const {
    RECT area{};
    if (!ListView_GetItemRect(list_, row, &area, LVIR_BOUNDS))
        return {};
    area.left = 0;
    area.right = Client().right;
    return area;
}

RECT ListRows::Client() const {
    RECT client{};
    GetClientRect(list_, &client);
    return client;
}

void ListRows::FillWidth() {
    const int width = static_cast<int>(Client().right);
    if (SendMessageW(list_, LVM_GETCOLUMNWIDTH, 0, 0) != width)
        SendMessageW(list_, LVM_SETCOLUMNWIDTH, 0, width);
}

} // namespace orv::controls::win32
