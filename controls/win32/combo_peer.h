#pragma once
#include "controls/combo_box.h"
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

class ComboPeer final : public WindowPeer {
  public:
    ComboPeer(PeerHost& host, ComboBox& combo);
    void Mirror(Aspect aspect) override;
    void Command(WORD code) override;

  protected:
    LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
    Rect Placement() const override;
    bool NamedByText() const override { return false; }
    bool UsesNativeKeys() const override { return true; }

  private:
    void MirrorItems();
    void MirrorBounds();
    int WidestEntry() const;
    bool Dropped() const { return Send(CB_GETDROPPEDSTATE) != 0; }

    ComboBox& combo_;
    bool cancelled_ = false;
};

} // namespace orv::controls::win32
