#include "controls/toolbar.h"

#include <algorithm>
#include <cstdlib>

#include "controls/form.h"

namespace orv::controls {
namespace {

constexpr int kPicture = 16;
constexpr int kMargin = 5;
constexpr int kButtonHeight = 24;

} // namespace

Toolbar::Toolbar(std::wstring name, int index) : Widget(Kind::Toolbar, std::move(name), index) {
    SetTabStop(true);
}

void Toolbar::SetButtons(std::vector<Button> buttons) {
    CancelPress();
    const std::wstring key = Has(current_) ? At(current_).key : std::wstring();
    buttons_ = std::move(buttons);
    current_ = buttons_.empty() ? -1 : std::max(IndexOf(key), 0);
    Mirror(Aspect::Items);
}

int Toolbar::IndexOf(const std::wstring& key) const {
    const auto found = std::find_if(buttons_.begin(), buttons_.end(), [&key](const Button& b) { return b.key == key; });
    return found == buttons_.end() ? -1 : static_cast<int>(found - buttons_.begin());
}

const Toolbar::Button* Toolbar::Pressed() const {
    const auto found = std::find_if(buttons_.begin(), buttons_.end(), [](const Button& b) { return b.pressed; });
    return found == buttons_.end() ? nullptr : &*found;
}

void Toolbar::SetPressed(const std::wstring& key) {
    const int wanted = IndexOf(key);
    for (Button& button : buttons_)
        if (wanted < 0 || button.group == At(wanted).group)
            button.pressed = false;
    if (wanted >= 0)
        At(wanted).pressed = true;
    Mirror(Aspect::Check);
}

void Toolbar::SetButtonEnabled(const std::wstring& key, bool enabled, std::wstring tip) {
    const int button = IndexOf(key);
    if (button < 0)
        return;
    At(button).enabled = enabled;
    At(button).tip = std::move(tip);
    Mirror(Aspect::Check);
}

Size Toolbar::MinimumSize(const TextMeasure& measure) const {
    int width = measure.Scale(buttonWidth_);
    if (buttonWidth_ == 0)
        for (const Button& button : buttons_)
            width = std::max(width, measure.Width(button.caption) + measure.Scale(kPicture + 3 * kMargin));
    if (buttonWidth_ == 0 && columnLimit_ > 0)
        width = std::min(width, measure.Scale(columnLimit_));
    cell_ = {std::max(1, width), std::max(measure.LineHeight() + measure.Scale(8), measure.Scale(kButtonHeight))};
    const int columns = buttonWidth_ == 0 ? 1 : leastColumns_;
    const int rows = (std::max(1, static_cast<int>(buttons_.size())) + columns - 1) / columns;
    return {columns * cell_.width, rows * cell_.height};
}

int Toolbar::Columns() const {
    return buttonWidth_ == 0 ? 1 : std::max(1, Bounds().width / cell_.width);
}

Rect Toolbar::PlaceOf(int button) const {
    const int columns = Columns();
    const int width = buttonWidth_ == 0 ? Bounds().width : cell_.width;
    return {button % columns * width, button / columns * cell_.height, width, cell_.height};
}

int Toolbar::ButtonAt(Point at) const {
    for (int button = 0; Has(button); ++button)
        if (PlaceOf(button).Overlaps({at.x, at.y, 1, 1}))
            return button;
    return -1;
}

void Toolbar::Click(int button) {
    if (!Interactive() || !Has(button) || !At(button).enabled)
        return;
    if (At(button).group != 0) {
        if (At(button).pressed)
            return;
        SetPressed(At(button).key);
    }
    // The handler may fill the toolbar anew.
    const Button clicked = At(button);
    if (onClick)
        onClick(clicked);
}

void Toolbar::Activate(int button) {
    if (!Interactive() || !Has(button) || !At(button).enabled)
        return;
    const Button taken = At(button);
    if (onActivate)
        onActivate(taken);
}

void Toolbar::Hold(int button, bool over) {
    if (held_ == button && over_ == over)
        return;
    held_ = button;
    over_ = over;
    Mirror(Aspect::Check);
}

void Toolbar::Press(Point at, bool twice) {
    CancelPress();
    const int button = ButtonAt(at);
    if (!Interactive() || button < 0)
        return;
    MakeCurrent(button);
    if (!Has(button) || !At(button).enabled)
        return;
    twice_ = twice;
    pressedAt_ = at;
    Hold(button, true);
}

void Toolbar::PointTo(Point at, Size slack) {
    if (drag_.Active()) {
        drag_.Move(InForm(*this, at));
        return;
    }
    if (!Has(held_))
        return;
    const bool strayed = std::abs(at.x - pressedAt_.x) > slack.width || std::abs(at.y - pressedAt_.y) > slack.height;
    if (!palette_ || !strayed) {
        Hold(held_, ButtonAt(at) == held_);
        return;
    }
    const Button dragged = At(held_);
    Hold(-1, false);
    drag_.Begin(dragged.key, dragged.caption);
    drag_.Move(InForm(*this, at));
}

void Toolbar::Release(Point at) {
    if (drag_.Active()) {
        drag_.Drop(InForm(*this, at));
        return;
    }
    const int button = held_;
    Hold(-1, false);
    if (!Has(button) || ButtonAt(at) != button)
        return;
    if (!palette_)
        Click(button);
    else if (twice_)
        Activate(button);
}

void Toolbar::CancelPress() {
    Hold(-1, false);
    drag_.Cancel();
}

void Toolbar::MakeCurrent(int button) {
    if (!Has(button))
        return;
    current_ = button;
    Mirror(Aspect::Selection);
    const Button shown = At(button);
    if (onCurrent)
        onCurrent(shown);
}

void Toolbar::Reveal() const {
    for (Widget* ancestor = Parent(); ancestor; ancestor = ancestor->Parent())
        if (auto* frame = dynamic_cast<Frame*>(ancestor))
            frame->ScrollIntoView(*this, FocusPart());
}

Rect Toolbar::FocusPart() const {
    // Nothing may move away from under a pointer that is held down.
    if (held_ >= 0)
        return {pressedAt_.x, pressedAt_.y, 1, 1};
    return Has(current_) ? PlaceOf(current_) : Widget::FocusPart();
}

KeyOutcome Toolbar::GoTo(int button) {
    typeAhead_.Reset();
    if (Has(button) && button != current_) {
        MakeCurrent(button);
        Reveal();
    }
    return KeyOutcome::Handled;
}

KeyOutcome Toolbar::Choose() {
    if (Has(current_) && !At(current_).enabled) {
        if (Form* form = OwningForm())
            form->Boxes().Beep();
    } else if (palette_) {
        Activate(current_);
    } else {
        Click(current_);
    }
    return KeyOutcome::Handled;
}

KeyOutcome Toolbar::Typed(wchar_t character) {
    if (character < L' ')
        return KeyOutcome::NotHandled;
    if (character == L' ' && !typeAhead_.Typing())
        return Choose();
    const int found = typeAhead_.Find(character, current_, static_cast<int>(buttons_.size()),
                                      [this](int button) -> const std::wstring& { return At(button).caption; });
    if (Has(found) && found != current_) {
        MakeCurrent(found);
        Reveal();
    }
    return KeyOutcome::Handled;
}

KeyOutcome Toolbar::HandleKey(const KeyEvent& key) {
    if (key.character != 0 && key.alt == key.ctrl)
        return Typed(key.character);
    if (key.ctrl || key.alt)
        return KeyOutcome::NotHandled;
    switch (key.key) {
    case Key::Left:
        return GoTo(current_ - 1);
    case Key::Right:
        return GoTo(current_ + 1);
    case Key::Up:
        return GoTo(current_ - Columns());
    case Key::Down:
        return GoTo(current_ + Columns());
    case Key::Home:
        return GoTo(0);
    case Key::End:
        return GoTo(static_cast<int>(buttons_.size()) - 1);
    case Key::Space:
    case Key::Return:
        return Choose();
    case Key::Escape:
        if (!drag_.Active() && held_ < 0)
            return KeyOutcome::NotHandled;
        CancelPress();
        return KeyOutcome::Handled;
    default:
        return KeyOutcome::NotHandled;
    }
}

void Toolbar::FocusEntered(bool byKeyboard) {
    // Whoever tabs into a group arrives at what is chosen.
    const Button* pressed = Pressed();
    if (byKeyboard) {
        MakeCurrent(pressed ? IndexOf(pressed->key) : current_);
        Reveal();
    } else {
        Mirror(Aspect::Selection);
    }
}

} // namespace orv::controls
