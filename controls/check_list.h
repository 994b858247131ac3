#pragma once
// A list of texts with a check box each.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "controls/type_ahead.h"
#include "controls/widget.h"

namespace orv::controls {

class CheckList : public Widget {
  public:
    struct Row {
        std::wstring text;
        std::int32_t data = 0;
        bool checked = false;
        bool greyed = false; ///< drawn in the colour of what is not available; gestures act on it all the same
        bool operator==(const Row&) const = default;
    };

    explicit CheckList(std::wstring name, int index = kNoIndex);

    const std::vector<Row>& Rows() const { return rows_; }
    /// The selection stays on the row with the same data, where there is one.
    void SetRows(std::vector<Row> rows);
    /// The ones below ignore a row that is not there.
    void SetChecked(int row, bool checked);
    /// 0-based; -1 is none.
    int Selected() const { return selected_; }
    void SetSelected(int row);
    /// Data of the checked rows, in their order.
    std::vector<std::int32_t> CheckedData() const;

    /// Gesture: the box of a row.
    void Toggle(int row);
    /// Gesture: a row. Raises onSelect when it was not selected.
    void Select(int row);
    /// Gesture: double click or Return.
    void Activate(int row);
    KeyOutcome HandleKey(const KeyEvent& key) override;
    Size MinimumSize(const TextMeasure& measure) const override;
    /// How many rows show at least.
    void SetLeastRows(int rows) { leastRows_ = rows; }

    /// A row was checked or unchecked. What the handler sets (the former state, to refuse it) stands.
    std::function<void(int row, bool checked)> onCheck;
    std::function<void(int row)> onSelect;
    std::function<void(int row)> onActivate;

  private:
    bool Has(int row) const { return row >= 0 && row < static_cast<int>(rows_.size()); }
    Row& At(int row) { return rows_[static_cast<std::size_t>(row)]; }
    KeyOutcome Typed(wchar_t character);
    KeyOutcome Go(int row);

    std::vector<Row> rows_;
    int selected_ = -1;
    int leastRows_ = 4;
    TypeAhead typeAhead_;
};

} // namespace orv::controls
