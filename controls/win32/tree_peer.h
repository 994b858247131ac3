#pragma once
#include "controls/tree.h"
#include "controls/win32/tree_nodes.h"
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

/// The window never selects or expands by itself: it asks the widget and shows what that says.
class TreePeer final : public WindowPeer {
  public:
    TreePeer(PeerHost& host, Tree& tree);
    void Mirror(Aspect aspect) override;
    LRESULT Notify(NMHDR& header) override;

  protected:
    LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
    bool NamedByText() const override { return false; }

  private:
    void ShowColours();
    void Sync();
    void Select();
    LRESULT Drawing(NMTVCUSTOMDRAW& draw);
    LRESULT Clicked();
    LRESULT Expanding(const NMTREEVIEWW& change);

    Tree& tree_;
    TreeNodes nodes_;
    POINT pressed_{}; ///< of the last press: the pointer may be elsewhere by the time it is told
    bool stale_ = true;
    bool showing_ = false; ///< what the window reports now is our own doing
};

} // namespace orv::controls::win32
