#pragma once
// In-place activation: what is said to the container's site, and when.
#include "addon/com/control_window.h"
#include "addon/com/site.h"

#include <oleidl.h>

namespace orv::addon::com {

/// Every call to the site may come back into the control; each step looks again at what is left of the activation.
class InPlace {
  public:
    /// All outlive the object.
    InPlace(Site& site, ControlWindow& window, IOleInPlaceActiveObject& active)
        : site_(site), window_(window), active_(active) {}

    bool Active() const { return isActive_; }
    bool UIActive() const { return isUIActive_; }
    const RECT& Position() const { return position_; }

    HRESULT Activate();
    HRESULT UIActivate(bool takeFocus);
    void UIDeactivate();
    void Deactivate();
    void SetRects(const RECT& position, const RECT* clip);
    void EnableModeless(bool enable);
    bool TranslateAccelerator(MSG& message) const;

  private:
    HRESULT Enter(IOleInPlaceSite& site);
    HRESULT Announce();

    Site& site_;
    ControlWindow& window_;
    IOleInPlaceActiveObject& active_;
    ComPtr<IOleInPlaceFrame> frame_;
    ComPtr<IOleInPlaceUIWindow> document_;
    RECT position_{};
    int modal_ = 0; ///< boxes and dialogs that the frame was told of
    bool isActive_ = false;
    bool isUIActive_ = false;
};

} // namespace orv::addon::com
