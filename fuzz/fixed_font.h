#pragma once
// A font whose characters are all of one width.
#include "controls/geometry.h"

namespace orv::fuzz {

class FixedFont final : public controls::TextMeasure {
  public:
    int Width(std::wstring_view text) const override { return static_cast<int>(text.size()) * 7; }
    int LineHeight() const override { return 16; }
    int Dpi() const override { return 96; }
};

} // namespace orv::fuzz
