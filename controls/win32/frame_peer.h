#pragma once
#include "controls/frame.h"
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

/// A window class of ours: control parent, paints the group box, scrolls, hands notifications back to the children.
class FramePeer final : public WindowPeer {
  public:
    FramePeer(PeerHost& host, Frame& frame);
    void Mirror(Aspect aspect) override;

  protected:
    LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
    std::wstring WindowText() const override;

  private:
    LRESULT Paint();
    void PaintOn(HDC dc);
    void Erase(HDC dc);
    void MirrorScroll();
    void ScrollBy(int bar, WPARAM wparam);
    LRESULT Wheel(WPARAM wparam, LPARAM lparam);

    Frame& frame_;
    int wheel_ = 0; ///< of a turn that has not made a notch yet
};

} // namespace orv::controls::win32
