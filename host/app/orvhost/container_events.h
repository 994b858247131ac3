#pragma once
// What the container's objects tell the rest of the host.
#include <string>

#include "host/app/orvhost/system.h"

namespace orv::host {

class ContainerEvents {
  public:
    virtual ~ContainerEvents() = default;
    virtual HWND Frame() = 0;
    virtual HWND Area() = 0;
    virtual void SetStatusText(const std::wstring& text) = 0;
    /// False while the control shows something modal.
    virtual void SetModeless(bool enabled) = 0;
    /// Tab went past the control's end.
    virtual void LeaveControl(bool backwards) = 0;
    /// The extender's properties.
    virtual bool ControlVisible() = 0;
    virtual void SetControlVisible(bool visible) = 0;
    virtual bool ControlEnabled() = 0;
    virtual void SetControlEnabled(bool enabled) = 0;
    virtual IDispatch* Control() = 0; ///< not counted; null when there is none
};

} // namespace orv::host
