#pragma once
#include "platform/win32/system.h"

#include "controls/mb_edit_look.h"

namespace orv::controls::win32 {

/// The displayed lines of a rich-edit window.
class ViewLines final : public LineLayout {
  public:
    void Use(HWND window) { window_ = window; }
    LinePlace PlaceOf(std::size_t position) const override;
    std::size_t PositionAt(const LinePlace& place) const override;
    int LineCount() const override;
    int VisibleLines() const override;

  private:
    int LineOf(std::size_t position) const;
    POINT PointOf(std::size_t position) const;

    HWND window_ = nullptr;
};

} // namespace orv::controls::win32
