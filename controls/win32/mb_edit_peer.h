#pragma once
#include <optional>

#include "controls/mb_edit.h"
#include "controls/win32/mb_edit_accessible.h"
#include "controls/win32/mb_edit_dress.h"
#include "controls/win32/mb_edit_layout.h"
#include "controls/win32/rich_view.h"
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

/// A rich-edit window, of one line or of several, that never edits: keys, pointer and clipboard messages go to the
/// widget, and what its core says is shown. What reaches the window all the same is handed to the widget, too.
class MBEditPeer final : public WindowPeer {
  public:
    MBEditPeer(PeerHost& host, MBEdit& edit);
    ~MBEditPeer() override;
    void Mirror(Aspect aspect) override;
    void Command(WORD code) override;
    LRESULT Notify(NMHDR& header) override;

  protected:
    LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
    bool NamedByText() const override { return false; }

  private:
    void Furnish();
    void Dress();
    void ShowLook();
    void ShowColours();
    void ShowContent();
    void ShowSelection();
    void ScrollToCaret();
    bool EditMessage(UINT message, LPARAM lparam);
    LRESULT LetIn(UINT message, WPARAM wparam, LPARAM lparam);
    void Reconcile();
    void Take(const std::wstring& before, const std::wstring& after);
    LRESULT PointerMessage(UINT message, WPARAM wparam, LPARAM lparam);
    LRESULT Press(POINT point, bool extend, bool token);
    LRESULT Drag(POINT point);
    LRESULT Wheel(UINT message, WPARAM wparam, LPARAM lparam);
    LRESULT Menu(LPARAM lparam);
    LRESULT PlaceText(WPARAM wparam, LPARAM lparam);
    LRESULT DrawBorder(WPARAM wparam, LPARAM lparam);
    LRESULT Accessible(WPARAM wparam, LPARAM lparam);

    MBEdit& edit_;
    bool several_; ///< the sort of window that is there
    RichView view_;
    ViewLines lines_;
    PointerOver pointer_;
    platform::win32::OwnedFont font_;
    std::optional<MBEditAccessible> accessible_;
};

} // namespace orv::controls::win32
