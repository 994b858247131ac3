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

void Frame::SetContent(Size least, int bar) {
    content_ = least;
    bar_ = bar;
    Mirror(Aspect::Scroll);
    ScrollTo(scroll_);
}

bool Frame::ScrollsDown() const {
    // One bar may take the room that makes the other one necessary.
    const bool acrossAlone = content_.width > Bounds().width;
    return content_.height > Bounds().height - (acrossAlone ? bar_ : 0);
}

bool Frame::ScrollsAcross() const {
    return content_.width > Bounds().width - (ScrollsDown() ? bar_ : 0);
}

Size Frame::View() const {
    return {std::max(0, Bounds().width - (ScrollsDown() ? bar_ : 0)),
            std::max(0, Bounds().height - (ScrollsAcross() ? bar_ : 0))};
}

void Frame::ScrollTo(Point position) {
    position.x = std::clamp(position.x, 0, std::max(0, content_.width - View().width));
    position.y = std::clamp(position.y, 0, std::max(0, content_.height - View().height));
    if (position == scroll_)
        return;
    scroll_ = position;
    for (const auto& child : Children())
        MirrorOf(*child, Aspect::Bounds);
    Mirror(Aspect::Scroll);
}

void Frame::ScrollIntoView(const Widget& descendant, Rect part) {
    if (&descendant == this || !descendant.IsWithin(*this))
        return;
    for (const Widget* w = &descendant; w != this; w = w->Parent()) {
        part.x += w->Bounds().x;
        part.y += w->Bounds().y;
    }
    ScrollTo(
        {Shift(scroll_.x, View().width, part.x, part.width), Shift(scroll_.y, View().height, part.y, part.height)});
}

Size Frame::MinimumSize(const TextMeasure& measure) const {
    return {measure.Width(PlainCaption()), measure.LineHeight()};
}

} // namespace orv::controls
