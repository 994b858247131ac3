#include "controls/combo_box.h"

#include <algorithm>
#include <cwctype>

namespace orv::controls {

ComboBox::ComboBox(std::wstring name, int index) : Widget(Kind::ComboBox, std::move(name), index) {
    SetTabStop(true);
}

void ComboBox::SetEntries(std::vector<Entry> entries) {
    entries_ = std::move(entries);
    stranger_ = false;
    selected_ = -1;
    Mirror(Aspect::Items);
}

void ComboBox::Show(int entry) {
    selected_ = entry >= 0 && entry <= Last() ? entry : -1;
    Mirror(Aspect::Selection);
}

void ComboBox::SetSelected(int entry) {
    if (stranger_ && entry != Last()) {
        entries_.pop_back();
        stranger_ = false;
        selected_ = -1;
        Mirror(Aspect::Items);
    }
    Show(entry);
}

std::int32_t ComboBox::SelectedData() const {
    return selected_ < 0 ? 0 : entries_[static_cast<std::size_t>(selected_)].data;
}

void ComboBox::SelectData(std::int32_t data) {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [data](const Entry& e) { return e.data == data; });
    if (found != entries_.end())
        return SetSelected(static_cast<int>(found - entries_.begin()));
    SetSelected(-1);
    entries_.push_back({std::to_wstring(data), data});
    stranger_ = true;
    Mirror(Aspect::Items);
    Show(Last());
}

void ComboBox::Select(int entry) {
    if (!Interactive() || entry == selected_ || entry < 0 || entry > Last())
        return;
    Show(entry);
    if (onClick)
        onClick();
}

KeyOutcome ComboBox::SelectByLetter(wchar_t letter) {
    const int count = static_cast<int>(entries_.size());
    const auto upper = [](wchar_t c) { return std::towupper(static_cast<std::wint_t>(c)); };
    for (int step = 1; step <= count; ++step) {
        const int candidate = (std::max(selected_, -1) + step) % count;
        const std::wstring& text = entries_[static_cast<std::size_t>(candidate)].text;
        if (!text.empty() && upper(text[0]) == upper(letter)) {
            Select(candidate);
            break;
        }
    }
    return KeyOutcome::Handled;
}

KeyOutcome ComboBox::HandleKey(const KeyEvent& key) {
    if (dropped_ && key.key != Key::Tab)
        return KeyOutcome::Native;
    if (key.key == Key::F4 || (key.alt && (key.key == Key::Down || key.key == Key::Up)))
        return KeyOutcome::Native;
    if (key.ctrl || key.alt)
        return KeyOutcome::NotHandled;
    switch (key.key) {
    case Key::Up:
        Select(std::max(selected_ - 1, 0));
        return KeyOutcome::Handled;
    case Key::Down:
        Select(std::min(selected_ + 1, Last()));
        return KeyOutcome::Handled;
    case Key::Home:
        Select(0);
        return KeyOutcome::Handled;
    case Key::End:
        Select(Last());
        return KeyOutcome::Handled;
    default:
        return key.character > L' ' ? SelectByLetter(key.character) : KeyOutcome::NotHandled;
    }
}

Size ComboBox::MinimumSize(const TextMeasure& measure) const {
    int widest = measure.Scale(60);
    for (const Entry& entry : entries_)
        widest = std::max(widest, measure.Width(entry.text));
    // A long choice must not push the page apart; the opened list shows it whole.
    widest = std::min(widest, measure.Scale(180));
    const int width = width_ > 0 ? measure.Scale(width_) : widest + measure.Scale(28);
    return {width, std::max(measure.LineHeight() + measure.Scale(8), measure.Scale(22))};
}

} // namespace orv::controls
