#pragma once
#include "controls/simple_widgets.h"
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

struct CloseIcon {
    void operator()(HICON icon) const { DestroyIcon(icon); }
};
using OwnedIcon = platform::win32::Owned<HICON, CloseIcon>;

/// The system's window for a picture holds it as an icon, so that others can ask it for one (STM_GETICON).
class PicturePeer final : public WindowPeer {
  public:
    PicturePeer(PeerHost& host, Picture& picture);
    ~PicturePeer() override;

  private:
    OwnedIcon icon_;
};

} // namespace orv::controls::win32
