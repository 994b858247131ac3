#pragma once
// Lists and trees as a program writes them that keeps no state of its own beside the window.
#include "bench/win32/stage.h"

#include <string>
#include <vector>

#include <commctrl.h>

namespace orv::bench {

/// Asks for the texts of what it draws; a change of its rows is a new count and a repaint.
class VirtualList {
  public:
    struct Row {
        std::wstring text;
        int picture = 0;
    };

    VirtualList(Stage& stage, const controls::Rect& like, HIMAGELIST pictures);
    ~VirtualList();
    VirtualList(const VirtualList&) = delete;
    VirtualList& operator=(const VirtualList&) = delete;

    HWND Window() const { return window_; }
    void Changed() const;
    void Select(int row) const;

    std::vector<Row> rows;

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR id,
                                      DWORD_PTR self);
    void Answer(NMLVDISPINFOW& wanted);

    HWND parent_;
    HWND window_;
    std::wstring shown_;
};

/// A list of items with texts, filled item by item while it does not redraw.
struct ItemList {
    ItemList(Stage& stage, const controls::Rect& like, DWORD extendedStyle);
    void Fill(const std::vector<VirtualList::Row>& rows) const;
    void Check(int row, bool checked) const { ListView_SetCheckState(window, row, checked); }
    HWND window;
};

} // namespace orv::bench
