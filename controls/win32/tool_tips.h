#pragma once
#include "platform/win32/owned.h"

#include <string>

namespace orv::controls::win32 {

/// One tool-tip window for all windows below `parent`.
class ToolTips {
  public:
    void Create(HWND parent, HFONT font, int widestLine);
    void Destroy() { window_.Reset(); }
    /// An empty text takes the tip away.
    void Set(HWND tool, const std::wstring& text);
    /// Empty for a window without one.
    std::wstring Text(HWND tool) const;

  private:
    HWND parent_ = nullptr;
    platform::win32::OwnedWindow window_;
};

} // namespace orv::controls::win32
