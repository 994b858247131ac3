#include "controls/frame.h"

#include <algorithm>

namespace orv::controls {
namespace {

/// Position that shows [start, start + length) in a window of `window`, moved as little as possible.
int Shift(int position, int window, int start, int length) {
    position = std::max(position, start + length - window);
    return std::min(position, start);
}

} // namespace

Frame::Frame(std::wstring name, int index) : Widget(Kind::Frame, std::move(name), index) {}

bool Frame::PeersWanted() const {
    wasShown_ = wasShown_ || Visible();
    return !IsPage() || wasShown_;
}

void Frame::SetContentSize(Size size) {
    if (content_ == size)
        return;
    content_ = size;
    Mirror(Aspect::Scroll);
    ScrollTo(scroll_);
}

void Frame::ScrollTo(Point position) {
    position.x = std::clamp(position.x, 0, std::max(0, content_.width - Bounds().width));
    position.y = std::clamp(position.y, 0, std::max(0, content_.height - Bounds().height));
    if (position == scroll_)
        return;
    scroll_ = position;
    Mirror(Aspect::Scroll);
    for (const auto& child : Children())
        MirrorOf(*child, Aspect::Bounds);
}

void Frame::ScrollIntoView(const Widget& descendant) {
    if (&descendant == this || !descendant.IsWithin(*this))
        return;
    Rect area = descendant.Bounds();
    for (const Widget* w = descendant.Parent(); w != this; w = w->Parent()) {
        area.x += w->Bounds().x;
        area.y += w->Bounds().y;
    }
    ScrollTo(
        {Shift(scroll_.x, Bounds().width, area.x, area.width), Shift(scroll_.y, Bounds().height, area.y, area.height)});
}

Size Frame::MinimumSize(const TextMeasure& measure) const {
    return {measure.Width(PlainCaption()), measure.LineHeight()};
}

} // namespace orv::controls
