#pragma once
#include "controls/win32/window_peer.h"
#include "platform/win32/owned.h"

namespace orv::controls::win32 {

/// Labels and the hint line. A label precedes its field in reading order, so that screen readers name the field by it.
class LabelPeer final : public WindowPeer {
  public:
    LabelPeer(PeerHost& host, Widget& label);
    void Mirror(Aspect aspect) override;

  protected:
    std::wstring WindowText() const override;

  private:
    void MakeHeading();

    platform::win32::OwnedFont heading_;
};

} // namespace orv::controls::win32
