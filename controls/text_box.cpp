#include "controls/text_box.h"

#include <algorithm>

namespace orv::controls {

TextBox::TextBox(std::wstring name, int index) : Widget(Kind::TextBox, std::move(name), index) {
    SetTabStop(true);
}

void TextBox::SetText(std::wstring text) {
    if (text_ == text)
        return;
    text_ = std::move(text);
    Mirror(Aspect::Content);
}

KeyOutcome TextBox::HandleKey(const KeyEvent& key) {
    if (key.alt)
        return KeyOutcome::NotHandled;
    switch (key.key) {
    case Key::Left:
    case Key::Right:
    case Key::Home:
    case Key::End:
        return KeyOutcome::Native;
    case Key::A:
    case Key::C:
    case Key::Insert:
        return key.ctrl ? KeyOutcome::Native : KeyOutcome::NotHandled;
    default:
        return KeyOutcome::NotHandled;
    }
}

void TextBox::FocusEntered(bool byKeyboard) {
    if (byKeyboard)
        Mirror(Aspect::Selection);
}

Size TextBox::MinimumSize(const TextMeasure& measure) const {
    return {measure.Width(L"n") * widthInCharacters_ + measure.Scale(8),
            std::max(measure.LineHeight() + measure.Scale(8), measure.Scale(22))};
}

} // namespace orv::controls
