#pragma once
#include "platform/win32/owned.h"

#include <commctrl.h>

#include "controls/check_list.h"
#include "controls/win32/pictures.h"
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

/// The window never checks or selects by itself: it asks the widget and shows what that says.
class CheckListPeer final : public WindowPeer {
  public:
    CheckListPeer(PeerHost& host, CheckList& list);
    void Mirror(Aspect aspect) override;
    LRESULT Notify(NMHDR& header) override;

  protected:
    LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
    bool NamedByText() const override { return false; }

  private:
    void ShowLook();
    void MakeBoxes();
    void MirrorItems();
    void MirrorText(std::size_t row);
    void MirrorChecks();
    void MirrorSelection();
    void FitColumn();
    LRESULT Changing(const NMLISTVIEW& change);
    LRESULT Drawing(NMLVCUSTOMDRAW& draw) const;
    LRESULT Press(POINT at, bool twice);

    /// What the window has of a row: messages cost more than a look at it.
    struct Shown {
        std::wstring text;
        bool checked = false;
        bool marked = false; ///< has a box at all
    };

    CheckList& list_;
    OwnedImageList boxes_;
    std::vector<Shown> shown_;
    bool showing_ = false; ///< what the window reports now is our own doing
};

} // namespace orv::controls::win32
