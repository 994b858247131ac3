#include "controls/widget.h"

#include <algorithm>
#include <cwctype>

#include "controls/form.h"

namespace orv::controls {

Widget::Widget(Kind kind, std::wstring name, int index) : kind_(kind), name_(std::move(name)), index_(index) {}

Widget::~Widget() {
    if (Form* form = OwningForm())
        form->WidgetGone(*this);
    // Windows of children go before their parent's; destroying members in order would do it the other way round.
    DropPeers();
}

Form* Widget::OwningForm() const {
    const Widget* widget = this;
    while (widget->parent_)
        widget = widget->parent_;
    return widget->form_;
}

void Widget::Adopt(std::unique_ptr<Widget> child) {
    child->parent_ = this;
    children_.push_back(std::move(child));
    if (Form* form = OwningForm())
        form->WidgetShown(*children_.back());
}

Widget* Widget::Find(std::wstring_view name, int index) {
    if (name_ == name && index_ == index)
        return this;
    for (const auto& child : children_)
        if (Widget* found = child->Find(name, index))
            return found;
    return nullptr;
}

bool Widget::IsWithin(const Widget& ancestor) const {
    const Widget* widget = this;
    while (widget && widget != &ancestor)
        widget = widget->parent_;
    return widget != nullptr;
}

bool Widget::EffectivelyVisible() const {
    return visible_ && (!parent_ || parent_->EffectivelyVisible());
}

void Widget::SetVisible(bool visible) {
    if (visible_ == visible)
        return;
    visible_ = visible;
    Form* form = OwningForm();
    if (visible && form)
        form->WidgetShown(*this);
    Mirror(Aspect::Visible);
    if (visible)
        return;
    DropPendingBelow();
    if (form)
        form->WidgetUnavailable(*this);
}

void Widget::DropPendingInside() {
    for (const auto& child : children_)
        child->DropPendingBelow();
}

void Widget::DropPendingBelow() {
    if (KeepsPending())
        return;
    DropPending();
    DropPendingInside();
}

bool Widget::EffectivelyEnabled() const {
    return enabled_ && (!parent_ || parent_->EffectivelyEnabled());
}

void Widget::SetEnabled(bool enabled) {
    if (enabled_ == enabled)
        return;
    enabled_ = enabled;
    MirrorEnabledBelow();
    if (Form* form = OwningForm(); form && !enabled)
        form->WidgetUnavailable(*this);
}

void Widget::MirrorEnabledBelow() {
    Mirror(Aspect::Enabled);
    for (const auto& child : children_)
        child->MirrorEnabledBelow();
}

void Widget::SetBounds(const Rect& bounds) {
    if (bounds_ == bounds)
        return;
    bounds_ = bounds;
    Mirror(Aspect::Bounds);
}

Rect Widget::WindowBounds() const {
    Rect result = bounds_;
    if (parent_) {
        const Point scrolled = parent_->ScrollPosition();
        result.x -= scrolled.x;
        result.y -= scrolled.y;
    }
    return result;
}

void Widget::SetCaption(std::wstring caption) {
    if (caption_ == caption)
        return;
    caption_ = std::move(caption);
    Mirror(Aspect::Caption);
}

std::wstring Widget::PlainCaption() const {
    std::wstring plain;
    for (std::size_t i = 0; i < caption_.size(); ++i) {
        if (caption_[i] == L'&' && ++i == caption_.size())
            break;
        plain += caption_[i];
    }
    return plain;
}

wchar_t Widget::AccessKey() const {
    for (std::size_t i = 0; i + 1 < caption_.size(); ++i) {
        if (caption_[i] != L'&')
            continue;
        if (caption_[i + 1] != L'&')
            return static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(caption_[i + 1])));
        ++i;
    }
    return 0;
}

void Widget::SetToolTip(std::wstring text) {
    if (toolTip_ == text)
        return;
    toolTip_ = std::move(text);
    Mirror(Aspect::ToolTip);
}

void Widget::SetHint(std::wstring text) {
    hint_ = std::move(text);
}

std::wstring Widget::AccessibleName() const {
    return accessibleName_.empty() ? PlainCaption() : accessibleName_;
}

void Widget::SetAccessibleName(std::wstring name) {
    accessibleName_ = std::move(name);
    Mirror(Aspect::Name);
}

bool Widget::Focused() const {
    const Form* form = OwningForm();
    return form && form->Focused() == this;
}

bool Widget::CanTakeFocus() const {
    return tabStop_ && EffectivelyVisible() && EffectivelyEnabled();
}

void Widget::Mirror(Aspect aspect) {
    if (peer_)
        peer_->Mirror(aspect);
}

void Widget::MakePeers(PeerFactory& factory) {
    if (!PeersWanted())
        return;
    if (!peer_)
        peer_ = factory.Make(*this);
    for (const auto& child : children_)
        child->MakePeers(factory);
}

void Widget::DropPeers() {
    for (const auto& child : children_)
        child->DropPeers();
    peer_.reset();
}

KeyOutcome Widget::HandleKey(const KeyEvent&) {
    return KeyOutcome::NotHandled;
}

} // namespace orv::controls
