#pragma once
#include "controls/number_box.h"
#include "controls/win32/edit_peer.h"

namespace orv::controls::win32 {

/// The arrows stand inside the edit window, so that both move, show and hide as one.
class NumberPeer final : public EditPeer {
  public:
    NumberPeer(PeerHost& host, NumberBox& box);
    ~NumberPeer() override;
    void Mirror(Aspect aspect) override;
    void Command(WORD code) override;
    HWND Arrows() const { return arrows_; }

  protected:
    LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
    const std::wstring& Content() const override { return box_.Text(); }

  private:
    void MakeArrows();
    void PlaceArrows();
    LRESULT Arrow(const NMHDR& header);
    LRESULT Wheel(WPARAM wparam, LPARAM lparam);

    NumberBox& box_;
    HWND arrows_ = nullptr; ///< goes with the edit window
    int wheel_ = 0;         ///< of a turn that has not made a notch yet
};

} // namespace orv::controls::win32
