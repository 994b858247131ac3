#pragma once
// How an edit box looks beyond its content, and what the window knows about its lines.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace orv::controls {

/// Red in the lowest byte, then green, then blue.
using ColourValue = std::uint32_t;

struct FontChoice {
    std::wstring face;
    int points = 9;
    bool bold = false;
    bool italic = false;
    bool operator==(const FontChoice&) const = default;
};

/// What is not set follows the system: its colours, its message font.
struct MBEditLook {
    std::optional<ColourValue> textColor = {};    ///< bytes shown as themselves
    std::optional<ColourValue> specialColor = {}; ///< tokens
    std::optional<ColourValue> backColor = {};
    int borderStyle = 1;         ///< 0 none, 1 the usual one
    int mousePointer = 0;        ///< PointerShape as a number; others are the usual one
    std::wstring mouseIcon = {}; ///< file of the pointer for PointerShape::Icon
    std::optional<FontChoice> font = {};
    bool operator==(const MBEditLook&) const = default;
};

enum class PointerShape {
    Usual = 0,
    Arrow = 1,
    Cross = 2,
    Beam = 3,
    SizeDiagonal = 6,
    SizeVertical = 7,
    SizeOther = 8,
    SizeHorizontal = 9,
    UpArrow = 10,
    Wait = 11,
    NoDrop = 12,
    ArrowWait = 13,
    ArrowHelp = 14,
    SizeAll = 15,
    Icon = 99,
};

struct LinePlace {
    int line = 0; ///< displayed line, from 0
    int x = 0;    ///< distance from the left, in the window's own unit
};

/// The displayed lines of a box of several lines: only its window knows where they wrap.
class LineLayout {
  public:
    virtual ~LineLayout() = default;
    virtual LinePlace PlaceOf(std::size_t position) const = 0;
    /// Position on that line nearest to x; for a line that wraps, its end counts although it is displayed as the
    /// start of the next one.
    virtual std::size_t PositionAt(const LinePlace& place) const = 0;
    virtual int LineCount() const = 0;
    virtual int VisibleLines() const = 0;
};

} // namespace orv::controls
