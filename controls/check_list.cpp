#include "controls/check_list.h"

#include <algorithm>

namespace orv::controls {
namespace {

constexpr int kPage = 10;
constexpr int kCheckBox = 22;
constexpr int kMostWidth = 220;

} // namespace

CheckList::CheckList(std::wstring name, int index) : Widget(Kind::CheckList, std::move(name), index) {
    SetTabStop(true);
}

void CheckList::SetRows(std::vector<Row> rows) {
    const bool had = Has(selected_);
    const std::int32_t data = had ? At(selected_).data : 0;
    rows_ = std::move(rows);
    const auto same = std::find_if(rows_.begin(), rows_.end(), [data](const Row& row) { return row.data == data; });
    selected_ = had && same != rows_.end() ? static_cast<int>(same - rows_.begin()) : -1;
    Mirror(Aspect::Items);
}

void CheckList::SetChecked(int row, bool checked) {
    if (!Has(row) || At(row).checked == checked)
        return;
    At(row).checked = checked;
    Mirror(Aspect::Check);
}

void CheckList::SetSelected(int row) {
    selected_ = Has(row) ? row : -1;
    Mirror(Aspect::Selection);
}

std::vector<std::int32_t> CheckList::CheckedData() const {
    std::vector<std::int32_t> data;
    for (const Row& row : rows_)
        if (row.checked)
            data.push_back(row.data);
    return data;
}

void CheckList::Toggle(int row) {
    if (!Interactive() || !Has(row))
        return;
    const bool checked = !At(row).checked;
    SetChecked(row, checked);
    if (onCheck)
        onCheck(row, checked);
}

void CheckList::Select(int row) {
    if (!Interactive() || !Has(row) || row == selected_)
        return;
    SetSelected(row);
    if (onSelect)
        onSelect(row);
}

void CheckList::Activate(int row) {
    if (Interactive() && Has(row) && onActivate)
        onActivate(row);
}

KeyOutcome CheckList::Go(int row) {
    typeAhead_.Reset();
    Select(std::clamp(row, 0, std::max(0, static_cast<int>(rows_.size()) - 1)));
    return KeyOutcome::Handled;
}

KeyOutcome CheckList::Typed(wchar_t character) {
    if (character < L' ')
        return KeyOutcome::NotHandled;
    if (character == L' ' && !typeAhead_.Typing()) {
        Toggle(selected_);
        return KeyOutcome::Handled;
    }
    Select(typeAhead_.Find(character, selected_, static_cast<int>(rows_.size()),
                           [this](int row) -> const std::wstring& { return At(row).text; }));
    return KeyOutcome::Handled;
}

KeyOutcome CheckList::HandleKey(const KeyEvent& key) {
    if (key.character != 0 && key.alt == key.ctrl)
        return Typed(key.character);
    if (key.ctrl || key.alt)
        return KeyOutcome::NotHandled;
    switch (key.key) {
    case Key::Up:
        return Go(selected_ - 1);
    case Key::Down:
        return Go(selected_ + 1);
    case Key::PageUp:
        return Go(selected_ - kPage);
    case Key::PageDown:
        return Go(selected_ + kPage);
    case Key::Home:
        return Go(0);
    case Key::End:
        return Go(static_cast<int>(rows_.size()) - 1);
    case Key::Space:
        return Typed(L' ');
    case Key::Return:
        if (!onActivate) // a dialog's default button has a use for it
            return KeyOutcome::NotHandled;
        Activate(selected_);
        return KeyOutcome::Handled;
    default:
        return KeyOutcome::NotHandled;
    }
}

Size CheckList::MinimumSize(const TextMeasure& measure) const {
    int widest = measure.Scale(100);
    for (const Row& row : rows_)
        widest = std::max(widest, measure.Width(row.text));
    // The list scrolls and its texts end in an ellipsis: a long one must not push the page apart.
    widest = std::min(widest, measure.Scale(kMostWidth));
    return {widest + measure.Scale(kCheckBox + 24), leastRows_ * (measure.LineHeight() + measure.Scale(6))};
}

} // namespace orv::controls
