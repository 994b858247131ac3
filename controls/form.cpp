#include "controls/form.h"

#include "controls/focus_navigator.h"
#include "controls/simple_widgets.h"
#include "controls/tab_strip.h"
#include "platform/guarded.h"

namespace orv::controls {
namespace {

class LocalClipboard : public Clipboard {
  public:
    bool Put(const ClipboardContent& content) override {
        content_ = ClipboardContent(content);
        return true;
    }
    ClipboardContent Get() override { return content_; }

  private:
    ClipboardContent content_;
};

bool Releases(const Widget& widget) {
    const auto* button = dynamic_cast<const Button*>(&widget);
    return button && button->Releases();
}

void ScrollAncestors(const Widget& widget) {
    for (Widget* ancestor = widget.Parent(); ancestor; ancestor = ancestor->Parent())
        if (auto* frame = dynamic_cast<Frame*>(ancestor))
            frame->ScrollIntoView(widget, widget.FocusPart());
}

} // namespace

Form::Form(platform::MessageBoxes& boxes, platform::MessagePump& pump)
    : boxes_(boxes), pump_(pump), ownClipboard_(std::make_unique<LocalClipboard>()),
      root_(std::make_unique<Frame>(L"Root")) {
    root_->form_ = this;
}

Form::~Form() {
    // A window that goes while it has the focus says so; nobody is left to be asked.
    changing_ = true;
    focused_ = nullptr;
    root_->form_ = nullptr;
    root_->DropPeers();
}

Clipboard& Form::TheClipboard() {
    return clipboard_ ? *clipboard_ : *ownClipboard_;
}

bool Form::MayLose(const Widget& next) {
    if (!focused_ || !focused_->onValidate || Releases(next) || !focused_->CanTakeFocus())
        return true;
    // What a handler does to the focus while it is asked must not ask it again.
    changing_ = true;
    platform::Restoring done([this] { changing_ = false; });
    return focused_->onValidate();
}

void Form::Enter(Widget* widget, bool takeWindowFocus) {
    Widget* old = focused_;
    if (old == widget)
        return;
    focused_ = widget;
    if (old && old->onLostFocus)
        old->onLostFocus();
    if (focused_ != widget)
        return;
    if (widget) {
        ScrollAncestors(*widget);
        if (takeWindowFocus && widget->GetPeer())
            widget->GetPeer()->TakeFocus();
        widget->FocusEntered(takeWindowFocus);
        if (widget->onGotFocus)
            widget->onGotFocus();
    }
    if (onFocusChanged)
        onFocusChanged(focused_);
}

bool Form::SetFocus(Widget& widget) {
    if (&widget == focused_)
        return true;
    if (changing_ || !widget.CanTakeFocus() || !MayLose(widget) || !widget.CanTakeFocus())
        return false;
    Enter(&widget, true);
    return true;
}

void Form::FocusArrived(Widget& widget) {
    if (&widget == focused_ || changing_)
        return;
    if (!MayLose(widget)) {
        PutFocusBack();
        return;
    }
    Enter(&widget, false);
}

void Form::PutFocusBack() {
    // A focus notification is no place to move the focus in: the window manager is in the middle of it.
    pump_.Post([this, alive = std::weak_ptr<int>(alive_)] {
        if (alive.expired() || !focused_ || !focused_->GetPeer())
            return;
        focused_->GetPeer()->TakeFocus();
    });
}

void Form::FocusLeft() {
    if (!focused_ || changing_)
        return;
    Widget* leaving = focused_;
    if (leaving->onValidate) {
        changing_ = true;
        platform::Restoring done([this] { changing_ = false; });
        leaving->onValidate();
    }
    Enter(nullptr, false);
}

bool Form::FocusFirst() {
    Widget* stop = NextStop(*root_, nullptr, Direction::Next);
    return stop && SetFocus(*stop);
}

bool Form::FocusLast() {
    Widget* stop = NextStop(*root_, nullptr, Direction::Back);
    return stop && SetFocus(*stop);
}

KeyOutcome Form::RouteKey(const KeyEvent& key) {
    if (focused_ && focused_->CanTakeFocus()) {
        const KeyOutcome outcome = focused_->HandleKey(key);
        if (outcome != KeyOutcome::NotHandled)
            return outcome;
    }
    return Navigate(key);
}

KeyOutcome Form::Navigate(const KeyEvent& key) {
    if (key.key == Key::Tab && key.ctrl && !key.alt) {
        TabStrip* strip = focused_ ? NearestTabStrip(*focused_) : nullptr;
        if (!strip)
            return KeyOutcome::NotHandled;
        strip->Step(key.shift ? -1 : 1);
        return KeyOutcome::Handled;
    }
    if (key.key == Key::Tab && !key.ctrl && !key.alt) {
        const Direction direction = key.shift ? Direction::Back : Direction::Next;
        Widget* stop = NextStop(*root_, focused_, direction);
        if (!stop)
            return key.shift ? KeyOutcome::LeaveBack : KeyOutcome::LeaveNext;
        SetFocus(*stop);
        return KeyOutcome::Handled;
    }
    if (!key.alt || key.ctrl || key.character == 0)
        return KeyOutcome::NotHandled;
    Widget* target = FindAccessKey(*root_, focused_, key.character);
    if (!target)
        return KeyOutcome::NotHandled;
    Widget* stop = target->TabStop() ? target : NextStop(*root_, target, Direction::Next);
    if (stop && SetFocus(*stop))
        target->AccessKeyPressed();
    return KeyOutcome::Handled;
}

void Form::AttachPeers(PeerFactory& factory) {
    factory_ = &factory;
    root_->MakePeers(factory);
}

void Form::DetachPeers() {
    factory_ = nullptr;
    // Windows that go away pass the focus on; the widget keeps it.
    changing_ = true;
    platform::Restoring done([this] { changing_ = false; });
    root_->DropPeers();
}

void Form::WidgetShown(Widget& widget) {
    if (!factory_)
        return;
    for (const Widget* w = widget.Parent(); w; w = w->Parent())
        if (!w->GetPeer())
            return;
    widget.MakePeers(*factory_);
}

void Form::WidgetGone(Widget& widget) {
    if (focused_ == &widget)
        focused_ = nullptr;
}

void Form::WidgetUnavailable(Widget& widget) {
    if (!focused_ || !focused_->IsWithin(widget))
        return;
    Enter(NextStop(*root_, focused_, Direction::Next), true);
}

} // namespace orv::controls
