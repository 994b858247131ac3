#pragma once
#include "controls/mb_edit.h"
#include "controls/win32/rich_view.h"
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

/// A rich-edit window that never edits: keys, pointer and clipboard messages go to the widget, and what its core
/// says is shown.
class MBEditPeer final : public WindowPeer {
  public:
    MBEditPeer(PeerHost& host, MBEdit& edit);
    void Mirror(Aspect aspect) override;
    LRESULT Notify(NMHDR& header) override;

  protected:
    LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
    bool NamedByText() const override { return false; }

  private:
    void ShowContent();
    void ShowSelection();
    bool EditMessage(UINT message, LPARAM lparam);
    LRESULT Press(POINT point, bool extend, bool token);
    LRESULT Drag(POINT point);
    LRESULT Menu(LPARAM lparam);
    LRESULT PlaceText(WPARAM wparam, LPARAM lparam);
    LRESULT PaintBorder();

    MBEdit& edit_;
    RichView view_;
};

} // namespace orv::controls::win32
