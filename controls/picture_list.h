#pragma once
// A list of pictured rows that are put in order, taken in from outside and deleted, by pointer and by keyboard.
#include <functional>
#include <string>
#include <vector>

#include "controls/drag.h"
#include "controls/picture_list_core.h"
#include "controls/type_ahead.h"
#include "controls/widget.h"

namespace orv::controls {

/// The list never changes its rows: it says what is asked for, and whoever fills it fills it anew. Without onMove rows
/// are not dragged, without onDelete not deleted: a list to look at.
class PictureList : public Widget, public DropTarget {
  public:
    struct Row {
        std::wstring key;
        std::wstring picture; ///< key of its picture, see Pictures of the windows
        std::wstring caption;
        std::wstring tip; ///< shown below the caption where that is cut
        bool greyed = false;
        bool operator==(const Row&) const = default;
    };
    enum class Command { Delete, MoveUp, MoveDown };

    explicit PictureList(std::wstring name, int index = kNoIndex);

    const std::vector<Row>& Rows() const { return rows_; }
    /// The selection stays at its position where there still is a row; the row being dragged is let go when the keys
    /// are others.
    void SetRows(std::vector<Row> rows);
    /// 0-based; -1 is none.
    int Selected() const { return core_.Selected(); }
    /// Brings the row into view too.
    void SetSelected(int row);

    /// Shown while there are no rows: how to come by one.
    const std::wstring& EmptyText() const { return emptyText_; }
    void SetEmptyText(std::wstring text);

    const PictureListCore& Core() const { return core_; }
    /// Tip of a row: its own, below the caption if that is not seen whole.
    std::wstring TipOf(int row, bool cut) const;
    bool CanDo(Command command) const;

    static int RowHeight(const TextMeasure& measure);
    /// The peer tells how it shows rows.
    void SetGeometry(const RowGeometry& geometry);
    /// Gesture and programmatic alike.
    void ScrollTo(int top);

    // Gestures; points are relative to the widget.
    /// Raises onSelect when that changes the selection.
    void Select(int row);
    /// The button goes down: selects the row and may begin to drag it. `twice`: let go without a drag, it activates.
    void Press(Point at, bool twice = false);
    void PointTo(Point at);
    void Release(Point at);
    /// Escape, another button, or the pointer was taken away. Nothing changes then.
    void CancelDrag();
    /// Time during a drag, for the scrolling.
    void Tick(int milliseconds);
    /// On the selected row.
    void Do(Command command);
    KeyOutcome HandleKey(const KeyEvent& key) override;

    bool Accepts(const DragItem& item) const override;
    void DragOver(const DragItem& item, Point at) override;
    void DragLeave() override;
    void Drop(const DragItem& item, Point at) override;

    Size MinimumSize(const TextMeasure& measure) const override;

    std::function<void()> onSelect;
    /// Key of what was dropped; the gap it goes to, 0 to the number of rows.
    std::function<void(const std::wstring& key, int gap)> onDrop;
    /// Both count from 1, and `to` is the place before the item is taken away: one down is `item` + 2.
    std::function<void(int item, int to)> onMove;
    /// Counts from 1.
    std::function<void(int item)> onDelete;
    /// Counts from 1.
    std::function<void(int item)> onActivate;

  private:
    /// Runs `change` and tells the peer what of the picture is another one now.
    template <typename Change>
    auto Mirrored(Change&& change);
    void StepTo(int row);
    void Move(int row, int gap);
    void Activate();
    KeyOutcome Character(wchar_t character);
    KeyOutcome AltKey(Key key);

    std::vector<Row> rows_;
    std::wstring emptyText_;
    PictureListCore core_;
    TypeAhead typing_;
    bool twice_ = false;
};

} // namespace orv::controls
