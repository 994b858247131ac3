#pragma once
#include "controls/simple_widgets.h"
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

/// Check boxes and option buttons.
class MarkPeer final : public WindowPeer {
  public:
    MarkPeer(PeerHost& host, Widget& widget);
    void Mirror(Aspect aspect) override;
    void Command(WORD code) override;

  protected:
    LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;

  private:
    bool focusing_ = false;
};

} // namespace orv::controls::win32
