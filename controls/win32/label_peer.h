#pragma once
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

/// Labels and the hint line. A label precedes its field in reading order, so that screen readers name the field by it.
class LabelPeer final : public WindowPeer {
  public:
    LabelPeer(PeerHost& host, Widget& label);
};

} // namespace orv::controls::win32
