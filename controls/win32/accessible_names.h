#pragma once
#include "platform/win32/system.h"

#include <string>

struct IAccPropServices;

namespace orv::controls::win32 {

/// Names for windows whose text is not their name (boxes, lists, trees). Where the system lacks the service, or the
/// thread has not entered COM, screen readers fall back on the label in front of the window.
class AccessibleNames {
  public:
    AccessibleNames();
    ~AccessibleNames();
    AccessibleNames(const AccessibleNames&) = delete;
    AccessibleNames& operator=(const AccessibleNames&) = delete;

    void Set(HWND window, const std::wstring& name);
    void Clear(HWND window);

  private:
    IAccPropServices* services_ = nullptr;
};

} // namespace orv::controls::win32
