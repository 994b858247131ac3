#pragma once
// What surrounds the control, as its life cycle needs it.
#include "device/host.h"

namespace orv::addon {

/// Implemented by the control: over the container's extender object, or over the control's own window where the
/// container has none.
class Container {
  public:
    virtual ~Container() = default;
    virtual void SetVisible(bool visible) = 0;
    virtual void SetEnabled(bool enabled) = 0;
    /// The ambient UserMode; true where the container has none.
    virtual bool UserMode() = 0;
    /// The control's window, owner of the progress display; 0 while it has none.
    virtual device::WindowHandle Window() = 0;
};

} // namespace orv::addon
