#pragma once
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

/// Output strip and warning strip: lines that we paint. The window's text says the same to screen readers.
class StripPeer final : public WindowPeer {
  public:
    StripPeer(PeerHost& host, Widget& strip);
    void Mirror(Aspect aspect) override;
    void Draw(const DRAWITEMSTRUCT& item) override;

  protected:
    std::wstring WindowText() const override;

  private:
    void DrawWarning(HDC dc, RECT area);
    void DrawOutput(HDC dc, RECT area);
};

} // namespace orv::controls::win32
