#pragma once
// The rows of a list view that asks for what it shows, one column wide.
#include "controls/win32/pictures.h"

namespace orv::controls::win32 {

class ListRows {
  public:
    explicit ListRows(HWND list) : list_(list) {}

    /// Makes the one column, and rows of this height.
    void Prepare(int rowHeight);
    void SetCount(int count);
    /// -1 selects nothing.
    void Select(int row);
    int Top() const;
    void ScrollTo(int top);
    /// In the window's inside; empty for a row that is not there.
    RECT AreaOf(int row) const;
    RECT Client() const;
    /// The column as wide as the window's inside.
    void FillWidth();

  private:
    HWND list_;
    OwnedImageList height_; ///< holds no picture: the height of its pictures is that of the rows
};

} // namespace orv::controls::win32
