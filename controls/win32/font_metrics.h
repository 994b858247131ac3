#pragma once
// The system's message font at the resolution of one window, and what layout asks of it.
#include "platform/win32/owned.h"

#include <map>
#include <string>

#include "controls/geometry.h"

namespace orv::controls::win32 {

class FontMetrics final : public TextMeasure {
  public:
    /// At 96 dots an inch until a window is known.
    FontMetrics();
    /// Reads resolution and font anew.
    void Refresh(HWND window);
    HFONT Font() const { return font_.Get(); }

    int Width(std::wstring_view text) const override;
    int LineHeight() const override { return lineHeight_; }
    int Dpi() const override { return dpi_; }

  private:
    void Measure();

    platform::win32::OwnedFont font_;
    int dpi_ = 96;
    int lineHeight_ = 16;
    mutable std::map<std::wstring, int, std::less<>> widths_; ///< layout asks for the same captions again and again
};

} // namespace orv::controls::win32
