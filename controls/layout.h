#pragma once
// Where widgets stand: a tree of boxes that know their least size and share out what there is. Arithmetic only.
// All lengths given to constructors are at 96 dots an inch.
#include <memory>
#include <utility>
#include <vector>

#include "controls/frame.h"
#include "controls/geometry.h"
#include "controls/widget.h"

namespace orv::controls {

class LayoutBox {
  public:
    virtual ~LayoutBox() = default;
    /// Smallest size at which nothing inside is clipped and nothing overlaps. Invisible widgets keep their room.
    virtual Size Minimum(const TextMeasure& measure) const = 0;
    /// `area` is at least the minimum, in the coordinates of the widgets' parent.
    virtual void Place(const Rect& area, const TextMeasure& measure) = 0;
    bool GrowsAcross() const { return growsAcross_; }
    bool GrowsDown() const { return growsDown_; }

  protected:
    LayoutBox(bool growsAcross, bool growsDown) : growsAcross_(growsAcross), growsDown_(growsDown) {}
    bool growsAcross_;
    bool growsDown_;
};

using LayoutPtr = std::unique_ptr<LayoutBox>;

enum class Grow { None, Across, Down, Both };

/// One widget, in the middle of its area from top to bottom unless it grows down, at the left unless it grows across.
LayoutPtr Cell(Widget& widget, Grow grow = Grow::None);

/// Nothing, that takes up what is left.
LayoutPtr Spring(Grow grow);

/// Rows and columns of boxes, filled row by row; nothing for an empty place. Column widths and row heights are
/// shared, so a column of labels lines up; what is left goes in equal parts to the columns and rows in which
/// something grows. `columnGap` and `rowGap` stand in between.
class Grid : public LayoutBox {
  public:
    explicit Grid(std::size_t columns, int columnGap = 8, int rowGap = 6);
    Grid& Add(LayoutPtr box);
    Grid& Skip() { return Add(nullptr); }
    Size Minimum(const TextMeasure& measure) const override;
    void Place(const Rect& area, const TextMeasure& measure) override;

  private:
    struct Tracks {
        std::vector<int> sizes;
        std::vector<bool> grows;
    };
    std::size_t RowCount() const { return (boxes_.size() + columns_ - 1) / columns_; }
    void Measure(const TextMeasure& measure, Tracks& columns, Tracks& rows) const;

    std::size_t columns_;
    int columnGap_;
    int rowGap_;
    std::vector<LayoutPtr> boxes_;
};

/// Boxes below, or beside, each other.
LayoutPtr Column(std::vector<LayoutPtr> boxes, int gap = 8);
LayoutPtr Row(std::vector<LayoutPtr> boxes, int gap = 8);

/// Boxes in one and the same place, of which the widgets of one are visible at a time.
LayoutPtr Overlay(std::vector<LayoutPtr> boxes);

/// Takes no room unless `wanted`, which is asked on each layout and outlives the box: for what another page decides.
LayoutPtr When(const bool& wanted, LayoutPtr box);

/// A frame with its content inside, below the caption when it is a group box; `padding` all round.
LayoutPtr Group(Frame& frame, LayoutPtr content, int padding = 8);

/// Lays out `content` on a page that has its bounds already, and lets the page scroll where it is too small.
void LayoutPage(Frame& page, LayoutBox& content, const TextMeasure& measure);

template <typename... Boxes>
std::vector<LayoutPtr> Boxed(Boxes... boxes) {
    std::vector<LayoutPtr> list;
    (list.push_back(std::move(boxes)), ...);
    return list;
}

} // namespace orv::controls
