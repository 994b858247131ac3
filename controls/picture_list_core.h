#pragma once
// Rows under a pointer: where they stand, which is selected, and what a drag does to them. No widget, no window.
#include <optional>

#include "controls/geometry.h"

namespace orv::controls {

/// The rows as they are shown. Pixels; places are relative to the widget.
struct RowGeometry {
    Rect view{0, 0, 200, 100}; ///< the part that shows rows
    int rowHeight = 20;
    int dragDistance = 4; ///< a pointer that has gone this far drags
};

class PictureListCore {
  public:
    static constexpr int kNone = -1;

    /// Both from 0: the row and the place it goes to, counted before it is taken away.
    struct RowMove {
        int row = 0;
        int gap = 0;
        bool operator==(const RowMove&) const = default;
    };

    int Count() const { return count_; }
    /// Keeps the selection where its row still is. Ends the drag of a row when the number changes.
    void SetCount(int count);
    int Selected() const { return selected_; }
    /// Anything that is no row selects nothing.
    void Select(int row);

    const RowGeometry& Geometry() const { return geometry_; }
    void SetGeometry(const RowGeometry& geometry);
    /// The first row in view.
    int Top() const { return top_; }
    int LastTop() const;
    /// Rows that fit in whole, one at least.
    int FullRows() const;
    /// Both answer whether anything moved.
    bool ScrollTo(int top);
    bool Reveal(int row);
    int RowAt(Point at) const;
    Rect RowArea(int row) const;
    /// Where something dropped there would be inserted, 0 to Count(): always one that can be seen.
    int GapAt(int y) const;
    /// Height of the line between two rows at which a gap is.
    int GapLine(int gap) const;

    /// Pressed: the button went down on a row. Carrying: that row is being dragged. Hosting: something from outside
    /// is over the list.
    enum class State { Idle, Pressed, Carrying, Hosting };
    State GetState() const { return state_; }
    bool Dragging() const { return state_ == State::Carrying || state_ == State::Hosting; }
    /// Row pressed or carried.
    int Grabbed() const { return grabbed_; }
    /// Gap of the insert mark. None while letting go would change nothing.
    int Gap() const { return gap_; }

    /// The row pressed; nothing while something from outside is over the list.
    int Press(Point at);
    void MoveTo(Point at);
    std::optional<RowMove> Release(Point at);
    /// False while a row is held.
    bool Host(Point at);
    void Leave();
    /// The gap, none when nothing was hosted.
    int Drop(Point at);
    /// Ends the press or drag of a row and scrolls back to where it began. False when there was none.
    bool Cancel();

    /// Time passes while the pointer rests: near an edge the rows scroll, after a moment and faster further out.
    void Tick(int milliseconds);

  private:
    void Aim(Point at);
    /// Rows to scroll, below 0 towards the first.
    int ScrollStep(Point at, int milliseconds);
    bool WithinReach(Point at) const;
    void Rest();

    RowGeometry geometry_;
    int count_ = 0;
    int selected_ = kNone;
    int top_ = 0;
    State state_ = State::Idle;
    int grabbed_ = kNone;
    int gap_ = kNone;
    int topBefore_ = 0;
    Point pressed_;
    Point pointer_;
    int nearEdge_ = 0; ///< milliseconds
    int owed_ = 0;     ///< thousandths of a row
};

} // namespace orv::controls
