#pragma once
#include "controls/tab_strip.h"
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

/// The window scrolls its tabs by itself; it selects none.
class TabPeer final : public WindowPeer {
  public:
    TabPeer(PeerHost& host, TabStrip& strip);
    void Mirror(Aspect aspect) override;

  protected:
    LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
    bool NamedByText() const override { return false; }

  private:
    void FitHeight();
    void MirrorItems();
    LRESULT Press(POINT at);

    TabStrip& strip_;
};

} // namespace orv::controls::win32
