#pragma once
#include "controls/simple_widgets.h"
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

/// A small button with an arrow; opens its entries as a menu below itself. A tab in an entry sets off its code.
class DropButtonPeer final : public WindowPeer {
  public:
    DropButtonPeer(PeerHost& host, DropButton& button);
    ~DropButtonPeer() override;
    void Mirror(Aspect aspect) override;
    void Draw(const DRAWITEMSTRUCT& item) override;

  protected:
    LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
    bool NamedByText() const override { return false; }

  private:
    void RunMenu();

    DropButton& button_;
    bool open_ = false;
};

} // namespace orv::controls::win32
