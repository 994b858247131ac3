#pragma once
// How the rows of a pictured list are drawn.
#include "platform/win32/system.h"

#include "controls/picture_list.h"

namespace orv::controls::win32 {

class PeerHost;

class PictureListLook {
  public:
    PictureListLook(PeerHost& host, const PictureList& list) : host_(host), list_(list) {}

    /// Number, picture and caption; `focused`: the list has the focus.
    void DrawRow(HDC dc, const RECT& area, int row, bool focused) const;
    /// A line between rows at `y`, inside `view` in whole.
    void DrawMark(HDC dc, const RECT& view, int y) const;
    /// What an empty list says, or where the focus is while nothing is selected.
    void DrawRest(HDC dc, const RECT& view, bool focused) const;
    bool IsCut(int row, int width) const;
    static COLORREF Background(bool enabled);

  private:
    int NumberRight() const;
    int CaptionLeft() const;
    int CaptionRight(int width) const;

    PeerHost& host_;
    const PictureList& list_;
};

} // namespace orv::controls::win32
