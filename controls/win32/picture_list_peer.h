#pragma once
#include "controls/picture_list.h"
#include "controls/win32/list_rows.h"
#include "controls/win32/picture_list_look.h"
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

/// A list view that is told how many rows there are and asks for what it shows. Pointer and keys never reach it: its
/// own ways with them begin loops of their own.
class PictureListPeer final : public WindowPeer {
  public:
    PictureListPeer(PeerHost& host, PictureList& list);
    ~PictureListPeer() override;
    void Mirror(Aspect aspect) override;
    LRESULT Notify(NMHDR& header) override;

  protected:
    LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
    bool NamedByText() const override { return false; }

  private:
    void ShowColours();
    void TellGeometry();
    void Sync();
    void Select();
    void Scroll();
    void RunDrag();
    void TellTop();

    void Ticked();
    LRESULT Pointer(UINT message, LPARAM lparam);
    void Pressed(Point at, bool twice);
    void LetGo();
    bool TakesFocus();
    void Hover(Point at);
    void ShowPointer(Point at) const;
    void RunMenu(LPARAM lparam);
    POINT MenuPlace(LPARAM lparam) const;

    LRESULT Drawing(NMLVCUSTOMDRAW& draw);
    LRESULT Wanted(NMLVDISPINFOW& wanted) const;
    LRESULT Changed(const NMLISTVIEW& change);

    /// Of the window's inside in the widget.
    Point Inset() const;

    PictureList& list_;
    PictureListLook look_;
    ListRows rows_;
    int tipRow_ = -1;
    int selected_ = -1; ///< drawn as that
    bool captured_ = false;
    bool showing_ = false; ///< what the window reports now is our own doing
    ULONGLONG ticked_ = 0;
};

} // namespace orv::controls::win32
