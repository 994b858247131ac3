#include "controls/tab_strip.h"

#include <algorithm>

namespace orv::controls {

TabStrip::TabStrip(std::wstring name, int index) : Widget(Kind::TabStrip, std::move(name), index) {
    SetTabStop(true);
}

void TabStrip::SetTabs(std::vector<Tab> tabs) {
    const std::wstring key = SelectedKey();
    tabs_ = std::move(tabs);
    const auto same = std::find_if(tabs_.begin(), tabs_.end(), [&key](const Tab& tab) { return tab.key == key; });
    selected_ = tabs_.empty() ? -1 : same == tabs_.end() ? 0 : static_cast<int>(same - tabs_.begin());
    Mirror(Aspect::Items);
}

void TabStrip::SetSelected(int tab) {
    if (tab < 0 || tab >= static_cast<int>(tabs_.size()))
        return;
    selected_ = tab;
    Mirror(Aspect::Selection);
}

std::wstring TabStrip::SelectedKey() const {
    return selected_ < 0 ? std::wstring() : tabs_[static_cast<std::size_t>(selected_)].key;
}

void TabStrip::SetCaptionOf(const std::wstring& key, std::wstring caption) {
    for (Tab& tab : tabs_) {
        if (tab.key != key || tab.caption == caption)
            continue;
        tab.caption = std::move(caption);
        Mirror(Aspect::Items);
        return;
    }
}

void TabStrip::Select(int tab) {
    if (!Interactive() || tab == selected_ || tab < 0 || tab >= static_cast<int>(tabs_.size()))
        return;
    if (onSelecting && !onSelecting())
        return;
    const int before = selected_;
    SetSelected(tab);
    if (selected_ != before && onSelect)
        onSelect(selected_);
}

void TabStrip::Step(int by) {
    const int count = static_cast<int>(tabs_.size());
    if (count > 0)
        Select((selected_ + by % count + count) % count);
}

KeyOutcome TabStrip::HandleKey(const KeyEvent& key) {
    if (key.ctrl || key.alt || tabs_.empty())
        return KeyOutcome::NotHandled;
    const int last = static_cast<int>(tabs_.size()) - 1;
    switch (key.key) {
    case Key::Left:
        Select(std::max(selected_ - 1, 0));
        return KeyOutcome::Handled;
    case Key::Right:
        Select(std::min(selected_ + 1, last));
        return KeyOutcome::Handled;
    case Key::Home:
        Select(0);
        return KeyOutcome::Handled;
    case Key::End:
        Select(last);
        return KeyOutcome::Handled;
    default:
        return KeyOutcome::NotHandled;
    }
}

Size TabStrip::MinimumSize(const TextMeasure& measure) const {
    // One tab and the arrows that lead to the others.
    int widest = measure.Scale(60);
    for (const Tab& tab : tabs_)
        widest = std::max(widest, measure.Width(tab.caption) + measure.Scale(16));
    return {widest + measure.Scale(40), measure.LineHeight() + measure.Scale(10)};
}

} // namespace orv::controls
