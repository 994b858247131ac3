#pragma once
#include "controls/win32/window_peer.h"

namespace orv::controls::win32 {

/// What peers with a line of the system's own have in common. The window edits by itself where the widget lets it and
/// reports the text; it shows the widget's text when that changes.
class EditPeer : public WindowPeer {
  public:
    void Mirror(Aspect aspect) override;

  protected:
    EditPeer(PeerHost& host, Widget& widget, DWORD style);
    virtual const std::wstring& Content() const = 0;
    void ShowContent();
    /// What the window reports now is our own doing.
    bool Showing() const { return showing_; }

    LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override;
    LRESULT TakeKey(UINT message, WPARAM wparam, LPARAM lparam) override;
    bool NamedByText() const override { return false; }
    bool UsesNativeKeys() const override { return true; }

  private:
    bool EditingKey(WPARAM key);
    LRESULT PlaceText(WPARAM wparam, LPARAM lparam);
    void DrawBorder() const;

    bool showing_ = false;
};

} // namespace orv::controls::win32
