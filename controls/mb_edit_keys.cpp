// What the keys do in the edit box.
#include <algorithm>
#include <limits>

#include "controls/form.h"
#include "controls/mb_edit.h"
#include "controls/simple_widgets.h"

namespace orv::controls {

KeyOutcome MBEdit::HandleKey(const KeyEvent& key) {
    if (!Interactive())
        return KeyOutcome::NotHandled;
    KeyOutcome outcome = KeyOutcome::Handled;
    Guard([&] { outcome = Dispatch(key); });
    return outcome;
}

KeyOutcome MBEdit::Dispatch(const KeyEvent& key) {
    // Ctrl and Alt together type the third character of a key.
    const bool types = key.character != 0 && key.alt == key.ctrl;
    const bool control = key.character != 0 && key.character < L' ' && key.ctrl && !key.alt;
    if (types || control) {
        TypeText({&key.character, 1});
        return KeyOutcome::Handled;
    }
    if (key.alt) {
        if (key.key == Key::Down && names_)
            names_->Open();
        return key.key == Key::Down && names_ ? KeyOutcome::Handled : KeyOutcome::NotHandled;
    }
    if (key.key == Key::Return || key.key == Key::Escape)
        return core_.TypeCharacter(static_cast<std::uint16_t>(key.key)) ? KeyOutcome::Handled : KeyOutcome::Native;
    const bool used = Command(key) || (Multiline() && layout_ && NavigateLines(key)) || Navigate(key);
    return used ? KeyOutcome::Handled : KeyOutcome::NotHandled;
}

bool MBEdit::Command(const KeyEvent& key) {
    const auto is = [&key](Key code, bool ctrl, bool shift) {
        return key.key == code && key.ctrl == ctrl && key.shift == shift;
    };
    if (is(Key::C, true, false) || is(Key::Insert, true, false))
        Copy();
    else if (is(Key::X, true, false) || is(Key::Delete, false, true))
        Cut();
    else if (is(Key::V, true, false) || is(Key::Insert, false, true))
        Paste();
    else if (is(Key::Z, true, false))
        Undo();
    else if (is(Key::Y, true, false) || is(Key::Z, true, true))
        Redo();
    else if (is(Key::A, true, false))
        core_.SelectAll();
    else
        return false;
    return true;
}

bool MBEdit::Navigate(const KeyEvent& key) {
    switch (key.key) {
    case Key::Left:
        core_.StepLeft(key.shift);
        return true;
    case Key::Right:
        core_.StepRight(key.shift);
        return true;
    case Key::Home:
        core_.MoveCaret(0, key.shift);
        return true;
    case Key::End:
        core_.MoveCaret(core_.TextLength(), key.shift);
        return true;
    case Key::Back:
        PressBackspace();
        return true;
    case Key::Delete:
        core_.Delete();
        return true;
    default:
        return false;
    }
}

void MBEdit::PressBackspace() {
    // The host form sees Backspace as a key press, too, before the display acts on it.
    std::uint16_t code = static_cast<std::uint16_t>(Key::Back);
    if (onKeyPress)
        onKeyPress(code);
    if (code != 0)
        core_.Backspace();
}

bool MBEdit::NavigateLines(const KeyEvent& key) {
    const int page = std::max(layout_->VisibleLines() - 1, 1);
    switch (key.key) {
    case Key::Up:
        MoveLines(-1, key.shift);
        return true;
    case Key::Down:
        MoveLines(1, key.shift);
        return true;
    case Key::PageUp:
        MoveLines(-page, key.shift);
        return true;
    case Key::PageDown:
        MoveLines(page, key.shift);
        return true;
    case Key::Home:
        if (!key.ctrl)
            core_.MoveCaret(core_.Ceiling(layout_->PositionAt({layout_->PlaceOf(core_.Caret()).line, 0})), key.shift);
        return !key.ctrl;
    case Key::End:
        if (!key.ctrl)
            MoveToLineEnd(key.shift);
        return !key.ctrl;
    default:
        return false;
    }
}

void MBEdit::MoveLines(int lines, bool extend) {
    const LinePlace from = layout_->PlaceOf(core_.Caret());
    const int line = std::clamp(from.line + lines, 0, layout_->LineCount() - 1);
    if (line == from.line)
        return;
    const int column = column_.value_or(from.x);
    core_.MoveCaret(BorderNear({line, column}, lines > 0), extend);
    column_ = column;
}

std::size_t MBEdit::BorderNear(const LinePlace& place, bool down) const {
    const std::size_t target = layout_->PositionAt(place);
    const std::size_t below = core_.Floor(target);
    const std::size_t above = core_.Ceiling(target);
    const bool nearerBelow = target - below < above - target;
    for (const std::size_t border : {nearerBelow ? below : above, nearerBelow ? above : below})
        if (layout_->PlaceOf(border).line == place.line)
            return border;
    // A token that is longer than the line: the caret must get away from where it stands all the same.
    return down ? above : below;
}

void MBEdit::MoveToLineEnd(bool extend) {
    const int line = layout_->PlaceOf(core_.Caret()).line;
    std::size_t end = core_.Floor(layout_->PositionAt({line, std::numeric_limits<int>::max()}));
    // Behind the last character of a line that wraps, the caret would show on the next one.
    if (end > 0 && layout_->PlaceOf(end).line > line)
        end = core_.Floor(end - 1);
    core_.MoveCaret(std::max(end, core_.Caret()), extend);
}

} // namespace orv::controls
