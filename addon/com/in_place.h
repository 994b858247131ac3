#pragma once
// In-place activation: what is said to the container's site, and when.
#include <algorithm>

#include "addon/com/control_window.h"
#include "addon/com/site.h"

#include <oleidl.h>

namespace orv::addon::com {

/// Every call to the site may come back into the control. One step is made at a time: while it is being made, a call
/// that takes something back is noted and carried out when the container has returned, and one that wants more is told
/// that it cannot be done now. So the container hears of each end as often as of each beginning, in order.
class InPlace {
  public:
    /// All outlive the object.
    InPlace(Site& site, ControlWindow& window, IOleInPlaceActiveObject& active)
        : site_(site), window_(window), active_(active) {}

    bool Active() const { return level_ != Level::None; }
    bool UIActive() const { return level_ == Level::UI; }
    const RECT& Position() const { return position_; }

    /// S_OK when it is active now; OLEOBJ_S_CANNOT_DOVERB_NOW inside a step.
    HRESULT Activate();
    HRESULT UIActivate(bool takeFocus);
    void UIDeactivate() { Lower(Level::InPlace); }
    void Deactivate() { Lower(Level::None); }
    void SetRects(const RECT& position, const RECT* clip);
    void EnableModeless(bool enable);
    bool TranslateAccelerator(MSG& message) const;

  private:
    enum class Level { None, InPlace, UI };
    class Step;

    bool Wanted(Level level) const { return limit_ >= level; }
    void Lower(Level limit);
    void Settle();
    HRESULT Enter();
    HRESULT MakeWindow();
    HRESULT Announce();
    void Retract();
    void Leave();

    Site& site_;
    ControlWindow& window_;
    IOleInPlaceActiveObject& active_;
    ComPtr<IOleInPlaceSite> place_; ///< the site that was told, whatever the control's site is by now
    ComPtr<IOleInPlaceFrame> frame_;
    ComPtr<IOleInPlaceUIWindow> document_;
    RECT position_{};
    int modal_ = 0; ///< boxes and dialogs that the frame was told of
    Level level_ = Level::None;
    Level limit_ = Level::None; ///< more than this nobody wants any longer
    bool stepping_ = false;
};

} // namespace orv::addon::com
