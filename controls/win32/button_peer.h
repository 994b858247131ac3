#pragma once
#include "controls/simple_widgets.h"
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

class ButtonPeer final : public WindowPeer {
  public:
    ButtonPeer(PeerHost& host, Button& button);
    void Command(WORD code) override;

  private:
    Button& button_;
};

} // namespace orv::controls::win32
