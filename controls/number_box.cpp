#include "controls/number_box.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "controls/form.h"

namespace orv::controls {
namespace {

constexpr int kPage = 10;
constexpr std::size_t kMostDigits = 15;
constexpr std::size_t kLeastWidth = 3;
constexpr std::size_t kGreatestWidth = 11;
constexpr int kArrows = 17;

bool IsDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

std::optional<NumberBox::Number> Parse(std::wstring_view text) {
    const bool negative = text.starts_with(L'-');
    if (negative || text.starts_with(L'+'))
        text.remove_prefix(1);
    if (text.empty() || text.size() > kMostDigits || !std::all_of(text.begin(), text.end(), IsDigit))
        return std::nullopt;
    NumberBox::Number number = 0;
    for (wchar_t digit : text)
        number = number * 10 + (digit - L'0');
    return negative ? -number : number;
}

/// What comes with a number that is pasted.
std::wstring Trimmed(const std::wstring& text) {
    constexpr wchar_t kBlanks[] = L" \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::wstring::npos ? std::wstring()
                                       : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool EditsText(const KeyEvent& key) {
    switch (key.key) {
    case Key::Left:
    case Key::Right:
    case Key::Home:
    case Key::End:
    case Key::Back:
    case Key::Delete:
    case Key::Insert:
        return true;
    case Key::A:
    case Key::C:
    case Key::V:
    case Key::X:
    case Key::Z:
        return key.ctrl;
    default:
        return false;
    }
}

} // namespace

NumberBox::NumberBox(std::wstring name, int index)
    : Widget(Kind::NumberBox, std::move(name), index), least_(std::numeric_limits<std::int32_t>::min()),
      greatest_(std::numeric_limits<std::int32_t>::max()), text_(L"0") {
    SetTabStop(true);
    onValidate = [this] { return Commit(); };
}

void NumberBox::Show(std::wstring text) {
    if (text_ == text)
        return;
    text_ = std::move(text);
    Mirror(Aspect::Content);
}

std::wstring NumberBox::TextOf(std::optional<Number> number) {
    return number ? std::to_wstring(*number) : std::wstring();
}

void NumberBox::SetValue(Number value) {
    value_ = stored_ = value;
    Show(TextOf(stored_));
}

void NumberBox::SetUnknown() {
    value_.reset();
    stored_.reset();
    Show({});
}

void NumberBox::SetRange(Number one, Number other) {
    least_ = std::min(one, other);
    greatest_ = std::max(one, other);
}

void NumberBox::SetAllowed(std::vector<Number> allowed) {
    allowed_ = std::move(allowed);
    std::sort(allowed_.begin(), allowed_.end());
}

bool NumberBox::Allows(Number number) const {
    return number >= least_ && number <= greatest_ &&
           (allowed_.empty() || std::binary_search(allowed_.begin(), allowed_.end(), number));
}

std::optional<NumberBox::Number> NumberBox::Reading() const {
    if (!Pending())
        return stored_;
    const std::optional<Number> number = Parse(text_);
    return number && Allows(*number) ? number : std::nullopt;
}

void NumberBox::Beep() {
    if (Form* form = OwningForm())
        form->Boxes().Beep();
}

bool NumberBox::Commit() {
    if (!Valid()) {
        Beep();
        if (onRefused)
            onRefused();
        return false;
    }
    const std::optional<Number> number = Reading();
    if (!number)
        return true;
    if (number != stored_ && onAccept && !onAccept(*number))
        return false;
    if (Pending()) // onAccept may have set a number of its own
        SetValue(*number);
    return true;
}

void NumberBox::Revert() {
    if (!stored_)
        value_.reset();
    Show(TextOf(value_));
}

void NumberBox::DropPending() {
    // What is right, too: it was not accepted.
    if (Pending())
        stored_ ? SetValue(*stored_) : SetUnknown();
}

void NumberBox::Changed() {
    if (!Valid())
        return;
    const std::optional<Number> number = Reading();
    if (number == std::exchange(value_, number))
        return;
    if (number && onChange)
        onChange(*number);
}

void NumberBox::Edit(std::wstring text) {
    text = Trimmed(text);
    if (!Interactive() || text == text_)
        return;
    text_ = std::move(text); // the window shows it already, caret and all
    Changed();
}

NumberBox::Number NumberBox::NextAllowed(Number from, int by) const {
    const auto steps = static_cast<std::ptrdiff_t>(by);
    const auto last = static_cast<std::ptrdiff_t>(allowed_.size()) - 1;
    const auto place = [&](auto found) { return found - allowed_.begin(); };
    const std::ptrdiff_t next = by > 0 ? place(std::upper_bound(allowed_.begin(), allowed_.end(), from)) + steps - 1
                                       : place(std::lower_bound(allowed_.begin(), allowed_.end(), from)) + steps;
    return allowed_[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(next, 0, last))];
}

NumberBox::Number NumberBox::Next(Number from, int by) const {
    if (!allowed_.empty())
        return NextAllowed(from, by);
    // From outside, the first step leads to the nearest limit.
    if (from < least_ || from > greatest_)
        return std::clamp(from, least_, greatest_);
    return std::clamp(from + by, least_, greatest_);
}

NumberBox::Number NumberBox::First() const {
    return allowed_.empty() ? std::clamp<Number>(0, least_, greatest_) : allowed_.front();
}

void NumberBox::Step(int by) {
    if (!Interactive() || by == 0)
        return;
    const std::optional<Number> typed = Reading();
    const std::optional<Number> from = typed ? typed : value_;
    Show(TextOf(from ? Next(*from, by) : First()));
    Changed();
    if (Focused())
        Mirror(Aspect::Selection);
    if (onStep && Pending())
        onStep();
}

KeyOutcome NumberBox::HandleKey(const KeyEvent& key) {
    if (key.character != 0 && key.alt == key.ctrl) {
        if (IsDigit(key.character) || (key.character == L'-' && least_ < 0))
            return KeyOutcome::Native;
        if (key.character < L' ')
            return KeyOutcome::NotHandled;
        Beep();
        return KeyOutcome::Handled;
    }
    if (key.alt)
        return KeyOutcome::NotHandled;
    switch (key.key) {
    case Key::Up:
    case Key::Down:
        Step(key.key == Key::Up ? 1 : -1);
        return KeyOutcome::Handled;
    case Key::PageUp:
    case Key::PageDown:
        Step(key.key == Key::PageUp ? kPage : -kPage);
        return KeyOutcome::Handled;
    case Key::Return:
        Commit();
        return KeyOutcome::Handled;
    case Key::Escape:
        // A number in the place of none could not be taken back otherwise, right as it is.
        if (!Pending() || (stored_ && Valid()))
            return KeyOutcome::NotHandled;
        Revert();
        return KeyOutcome::Handled;
    default:
        return EditsText(key) ? KeyOutcome::Native : KeyOutcome::NotHandled;
    }
}

void NumberBox::FocusEntered(bool byKeyboard) {
    if (byKeyboard)
        Mirror(Aspect::Selection);
}

Size NumberBox::MinimumSize(const TextMeasure& measure) const {
    const std::size_t digits =
        std::max({std::to_wstring(least_).size(), std::to_wstring(greatest_).size(), kLeastWidth});
    const std::wstring widest(std::min(digits, kGreatestWidth), L'0');
    return {measure.Width(widest) + measure.Scale(kArrows + 12),
            std::max(measure.LineHeight() + measure.Scale(8), measure.Scale(22))};
}

} // namespace orv::controls
