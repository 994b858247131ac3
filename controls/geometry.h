#pragma once
// Pixels, and the one thing layout needs to know of a font.
#include <string_view>

namespace orv::controls {

struct Point {
    int x = 0;
    int y = 0;
    bool operator==(const Point&) const = default;
};

struct Size {
    int width = 0;
    int height = 0;
    bool operator==(const Size&) const = default;
};

struct Rect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    int Right() const { return x + width; }
    int Bottom() const { return y + height; }
    bool Overlaps(const Rect& other) const {
        return x < other.Right() && other.x < Right() && y < other.Bottom() && other.y < Bottom();
    }
    bool operator==(const Rect&) const = default;
};

/// The font that the peers draw with, at the present resolution. Pixels throughout.
class TextMeasure {
  public:
    virtual ~TextMeasure() = default;
    virtual int Width(std::wstring_view text) const = 0;
    /// Of one line, with its leading.
    virtual int LineHeight() const = 0;
    /// Dots an inch; 96 is 100 %.
    virtual int Dpi() const = 0;
    /// A length at 96 dots an inch as pixels of this screen, rounded.
    int Scale(int length) const { return (length * Dpi() + 48) / 96; }
};

} // namespace orv::controls
