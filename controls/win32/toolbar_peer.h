#pragma once
#include "platform/win32/owned.h"

#include <commctrl.h>

#include "controls/toolbar.h"
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

/// The system's window, so that screen readers know buttons, names and states of it. It neither acts on the pointer
/// nor draws its buttons: its own pressing cannot be taken back into a drag, and its captions are cut without a sign
/// and its pressed buttons hardly seen in some schemes.
class ToolbarPeer final : public WindowPeer {
  public:
    ToolbarPeer(PeerHost& host, Toolbar& toolbar);
    ~ToolbarPeer() override;
    void Mirror(Aspect aspect) override;
    LRESULT Notify(NMHDR& header) override;

  protected:
    LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
    bool NamedByText() const override { return false; }

  private:
    void MirrorButtons();
    void MirrorStates();
    void MirrorCurrent();
    BYTE StateOf(int button) const;
    bool Cut(const Toolbar::Button& button) const;
    LRESULT Drawing(const NMTBCUSTOMDRAW& draw);
    void DrawButton(HDC dc, int button);
    void PointerOver(int button);
    LRESULT Tip(NMTBGETINFOTIPW& tip) const;
    LRESULT Press(POINT at, bool twice);
    LRESULT PointTo(POINT at);
    LRESULT Release(POINT at);
    void Cancel();

    Toolbar& toolbar_;
    std::vector<BYTE> states_; ///< of the window's buttons
    int over_ = -1;            ///< the button under the pointer
    bool captured_ = false;
};

} // namespace orv::controls::win32
