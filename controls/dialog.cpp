#include "controls/dialog.h"

namespace orv::controls {
namespace {

constexpr int kPadding = 12;
constexpr int kComfort = 100;

} // namespace

Size Dialog::MinimumSize(const TextMeasure& measure) const {
    const int padding = 2 * measure.Scale(kPadding);
    const Size least = content_ ? content_->Minimum(measure) : Size{};
    return {least.width + padding, least.height + padding};
}

Size Dialog::ComfortableSize(const TextMeasure& measure) const {
    const Size least = MinimumSize(measure);
    const int more = Resizable() ? measure.Scale(kComfort) : 0;
    return {least.width + more, least.height + more};
}

void Dialog::Layout(Size client, const TextMeasure& measure) {
    form_.Root().SetBounds({0, 0, client.width, client.height});
    const int padding = measure.Scale(kPadding);
    if (content_)
        content_->Place({padding, padding, client.width - 2 * padding, client.height - 2 * padding}, measure);
}

KeyOutcome Dialog::RouteKey(const KeyEvent& key) {
    const KeyOutcome outcome = form_.RouteKey(key);
    if (outcome == KeyOutcome::LeaveNext || outcome == KeyOutcome::LeaveBack) {
        outcome == KeyOutcome::LeaveNext ? form_.FocusFirst() : form_.FocusLast();
        return KeyOutcome::Handled;
    }
    if (outcome != KeyOutcome::NotHandled || key.alt || key.ctrl)
        return outcome;
    Button* button = key.key == Key::Return ? default_ : key.key == Key::Escape ? cancel_ : nullptr;
    if (!button)
        return outcome;
    button->Press();
    return KeyOutcome::Handled;
}

void Dialog::Dismiss() {
    if (cancel_)
        cancel_->Press();
    else
        Close();
}

void Dialog::Close() {
    if (closed_)
        return;
    closed_ = true;
    if (onClosed)
        onClosed();
}

} // namespace orv::controls
