#include "controls/simple_widgets.h"

#include <algorithm>

#include "controls/form.h"

namespace orv::controls {
namespace {

constexpr int kButtonWidth = 75;
constexpr int kButtonPadding = 12;
constexpr int kButtonHeight = 24;
constexpr int kMarkSize = 13;
constexpr int kMarkGap = 6;
constexpr int kElided = 40;
constexpr int kStripBorder = 2;

bool Plain(const KeyEvent& key) {
    return !key.alt && !key.ctrl;
}

/// A mark, a gap and the caption.
Size MarkedSize(const Widget& widget, const TextMeasure& measure) {
    return {measure.Scale(kMarkSize + kMarkGap) + measure.Width(widget.PlainCaption()),
            std::max(measure.LineHeight(), measure.Scale(kMarkSize)) + measure.Scale(4)};
}

} // namespace

Label::Label(Kind kind, std::wstring name, int index) : Widget(kind, std::move(name), index) {}

Size Label::MinimumSize(const TextMeasure& measure) const {
    int caption = elides_ ? measure.Scale(kElided) : measure.Width(PlainCaption());
    if (heading_) // heavier letters are broader, by less than this
        caption += caption / 4 + measure.Scale(4);
    const int border = GetKind() == Kind::WarningStrip ? measure.Scale(kStripBorder) : 0;
    return {std::max(caption, measure.Width(widest_)), measure.LineHeight() + 2 * border};
}

Picture::Picture(std::wstring name, int icon, int index) : Widget(Kind::Picture, std::move(name), index), icon_(icon) {}

Size Picture::MinimumSize(const TextMeasure& measure) const {
    return {measure.Scale(kSide), measure.Scale(kSide)};
}

Button::Button(std::wstring name, int index) : Widget(Kind::Button, std::move(name), index) {
    SetTabStop(true);
}

void Button::Press() {
    if (Interactive() && onClick)
        onClick();
}

KeyOutcome Button::HandleKey(const KeyEvent& key) {
    if (!Plain(key) || (key.key != Key::Return && key.key != Key::Space && key.character != L' '))
        return KeyOutcome::NotHandled;
    Press();
    return KeyOutcome::Handled;
}

bool Button::AccessKeyPressed() {
    Press();
    return true;
}

Size Button::MinimumSize(const TextMeasure& measure) const {
    const int least = measure.Scale(narrow_ ? kButtonHeight : kButtonWidth);
    return {std::max(measure.Width(PlainCaption()) + 2 * measure.Scale(kButtonPadding), least),
            std::max(measure.LineHeight() + measure.Scale(8), measure.Scale(kButtonHeight))};
}

DropButton::DropButton(std::wstring name, int index) : Widget(Kind::DropButton, std::move(name), index) {}

void DropButton::SetEntries(std::vector<std::wstring> entries) {
    entries_ = std::move(entries);
    Mirror(Aspect::Items);
}

void DropButton::Open() {
    if (Interactive())
        Mirror(Aspect::Open);
}

void DropButton::Choose(int entry) {
    if (Interactive() && entry >= 0 && entry < static_cast<int>(entries_.size()) && onChoose)
        onChoose(entry);
}

KeyOutcome DropButton::HandleKey(const KeyEvent& key) {
    const bool opens = key.key == Key::Return || key.character == L' ' || (key.key == Key::Down && key.alt);
    if (!opens || key.ctrl)
        return KeyOutcome::NotHandled;
    Open();
    return KeyOutcome::Handled;
}

Size DropButton::MinimumSize(const TextMeasure& measure) const {
    return {measure.Scale(22), std::max(measure.LineHeight() + measure.Scale(6), measure.Scale(22))};
}

CheckBox::CheckBox(std::wstring name, int index) : Widget(Kind::CheckBox, std::move(name), index) {
    SetTabStop(true);
}

void CheckBox::Show(bool checked, bool undetermined) {
    if (checked_ == checked && undetermined_ == undetermined)
        return;
    checked_ = checked;
    undetermined_ = undetermined;
    Mirror(Aspect::Check);
}

void CheckBox::SetChecked(bool checked) {
    Show(checked, false);
}

void CheckBox::SetUndetermined() {
    Show(false, true);
}

void CheckBox::Toggle() {
    if (!Interactive())
        return;
    SetChecked(!checked_);
    if (onClick)
        onClick();
}

KeyOutcome CheckBox::HandleKey(const KeyEvent& key) {
    if (!Plain(key) || (key.key != Key::Space && key.character != L' '))
        return KeyOutcome::NotHandled;
    Toggle();
    return KeyOutcome::Handled;
}

bool CheckBox::AccessKeyPressed() {
    Toggle();
    return true;
}

Size CheckBox::MinimumSize(const TextMeasure& measure) const {
    return MarkedSize(*this, measure);
}

OptionButton::OptionButton(std::wstring name, int index) : Widget(Kind::OptionButton, std::move(name), index) {
    SetTabStop(true);
}

std::vector<OptionButton*> OptionButton::Group() const {
    std::vector<OptionButton*> group;
    if (!Parent())
        return {const_cast<OptionButton*>(this)};
    for (const auto& sibling : Parent()->Children())
        if (sibling->GetKind() == Kind::OptionButton)
            group.push_back(static_cast<OptionButton*>(sibling.get()));
    return group;
}

void OptionButton::SetChosen(bool chosen) {
    if (chosen_ == chosen)
        return;
    // The others first looked up, then changed: two that are chosen at once would stay so.
    const std::vector<OptionButton*> group = chosen ? Group() : std::vector<OptionButton*>{};
    chosen_ = chosen;
    Mirror(Aspect::Check);
    for (OptionButton* other : group)
        if (other != this)
            other->SetChosen(false);
}

void OptionButton::Choose() {
    if (!Interactive() || chosen_)
        return;
    SetChosen(true);
    if (onClick)
        onClick();
}

KeyOutcome OptionButton::HandleKey(const KeyEvent& key) {
    if (!Plain(key))
        return KeyOutcome::NotHandled;
    if (key.key == Key::Space || key.character == L' ') {
        Choose();
        return KeyOutcome::Handled;
    }
    const bool forward = key.key == Key::Down || key.key == Key::Right;
    if (!forward && key.key != Key::Up && key.key != Key::Left)
        return KeyOutcome::NotHandled;
    std::vector<OptionButton*> group = Group();
    std::erase_if(group, [](const OptionButton* button) { return !button->CanTakeFocus(); });
    const auto here = std::find(group.begin(), group.end(), this);
    if (here == group.end())
        return KeyOutcome::NotHandled;
    const std::size_t position = static_cast<std::size_t>(here - group.begin());
    OptionButton* next = group[(position + (forward ? 1 : group.size() - 1)) % group.size()];
    if (Form* form = OwningForm(); form && form->SetFocus(*next))
        next->Choose();
    return KeyOutcome::Handled;
}

bool OptionButton::AccessKeyPressed() {
    Choose();
    return true;
}

Size OptionButton::MinimumSize(const TextMeasure& measure) const {
    return MarkedSize(*this, measure);
}

} // namespace orv::controls
