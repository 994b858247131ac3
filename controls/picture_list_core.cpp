#include "controls/picture_list_core.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace orv::controls {
namespace {

constexpr int kPatience = 300; // milliseconds near an edge before anything scrolls
constexpr int kSlow = 4;       // rows a second
constexpr int kFast = 24;

int FloorDivide(int value, int by) {
    return value >= 0 ? value / by : -((-value + by - 1) / by);
}

} // namespace

void PictureListCore::SetCount(int count) {
    if (count != count_ && state_ != State::Hosting)
        Rest();
    count_ = std::max(count, 0);
    Select(selected_);
    ScrollTo(top_);
}

void PictureListCore::Select(int row) {
    selected_ = row >= 0 && row < count_ ? row : kNone;
}

void PictureListCore::SetGeometry(const RowGeometry& geometry) {
    geometry_ = geometry;
    geometry_.rowHeight = std::max(geometry.rowHeight, 1);
    ScrollTo(top_);
}

int PictureListCore::FullRows() const {
    return std::max(geometry_.view.height / geometry_.rowHeight, 1);
}

int PictureListCore::LastTop() const {
    return std::max(count_ - FullRows(), 0);
}

bool PictureListCore::ScrollTo(int top) {
    const int former = std::exchange(top_, std::clamp(top, 0, LastTop()));
    if (Dragging()) // other rows are under the pointer now
        Aim(pointer_);
    return top_ != former;
}

bool PictureListCore::Reveal(int row) {
    if (row < 0 || row >= count_)
        return false;
    return ScrollTo(std::clamp(top_, row - FullRows() + 1, row));
}

int PictureListCore::RowAt(Point at) const {
    const Rect& view = geometry_.view;
    if (at.x < view.x || at.x >= view.Right() || at.y < view.y || at.y >= view.Bottom())
        return kNone;
    const int row = top_ + (at.y - view.y) / geometry_.rowHeight;
    return row < count_ ? row : kNone;
}

Rect PictureListCore::RowArea(int row) const {
    return {geometry_.view.x, GapLine(row), geometry_.view.width, geometry_.rowHeight};
}

int PictureListCore::GapAt(int y) const {
    const int gap = top_ + FloorDivide(y - geometry_.view.y + geometry_.rowHeight / 2, geometry_.rowHeight);
    return std::clamp(gap, top_, std::min(top_ + FullRows(), count_));
}

int PictureListCore::GapLine(int gap) const {
    return geometry_.view.y + (gap - top_) * geometry_.rowHeight;
}

bool PictureListCore::WithinReach(Point at) const {
    // A hand that strays a little from the list still means it; one that goes away wants out.
    const Rect& view = geometry_.view;
    const int reach = 2 * geometry_.rowHeight;
    return at.x >= view.x - reach && at.x < view.Right() + reach && at.y >= view.y - reach &&
           at.y < view.Bottom() + reach;
}

int PictureListCore::Press(Point at) {
    if (state_ == State::Hosting)
        return kNone;
    Rest();
    const int row = RowAt(at);
    if (row == kNone)
        return kNone;
    state_ = State::Pressed;
    grabbed_ = row;
    pressed_ = at;
    topBefore_ = top_;
    return row;
}

void PictureListCore::MoveTo(Point at) {
    const int far = std::max(std::abs(at.x - pressed_.x), std::abs(at.y - pressed_.y));
    if (state_ == State::Pressed && far >= geometry_.dragDistance)
        state_ = State::Carrying;
    if (state_ == State::Carrying)
        Aim(at);
}

void PictureListCore::Aim(Point at) {
    pointer_ = at;
    gap_ = WithinReach(at) ? GapAt(at.y) : kNone;
    if (state_ == State::Carrying && (gap_ == grabbed_ || gap_ == grabbed_ + 1))
        gap_ = kNone;
}

std::optional<PictureListCore::RowMove> PictureListCore::Release(Point at) {
    if (state_ == State::Hosting)
        return std::nullopt;
    MoveTo(at);
    const RowMove move{grabbed_, gap_};
    const bool moved = state_ == State::Carrying && gap_ != kNone;
    Rest();
    return moved ? std::optional(move) : std::nullopt;
}

bool PictureListCore::Host(Point at) {
    if (state_ == State::Pressed || state_ == State::Carrying)
        return false;
    state_ = State::Hosting;
    Aim(at);
    return true;
}

void PictureListCore::Leave() {
    if (state_ == State::Hosting)
        Rest();
}

int PictureListCore::Drop(Point at) {
    if (state_ != State::Hosting)
        return kNone;
    Aim(at);
    const int gap = gap_;
    Rest();
    return gap;
}

bool PictureListCore::Cancel() {
    if (state_ != State::Pressed && state_ != State::Carrying)
        return false;
    Rest();
    ScrollTo(topBefore_);
    return true;
}

void PictureListCore::Rest() {
    state_ = State::Idle;
    grabbed_ = gap_ = kNone;
    nearEdge_ = owed_ = 0;
}

int PictureListCore::ScrollStep(Point at, int milliseconds) {
    const Rect& view = geometry_.view;
    const int zone = std::max(std::min(geometry_.rowHeight, view.height / 4), 1);
    const int above = view.y + zone - at.y;
    const int below = at.y - (view.Bottom() - zone) + 1;
    const int depth = std::max(above, below);
    if (depth <= 0 || !WithinReach(at)) {
        nearEdge_ = owed_ = 0;
        return 0;
    }
    nearEdge_ = std::min(nearEdge_ + milliseconds, 2 * kPatience);
    if (nearEdge_ <= kPatience)
        return 0;
    owed_ += milliseconds * (kSlow + (kFast - kSlow) * std::min(depth, 2 * zone) / (2 * zone));
    const int rows = owed_ / 1000;
    owed_ %= 1000;
    return above > 0 ? -rows : rows;
}

void PictureListCore::Tick(int milliseconds) {
    if (Dragging())
        ScrollTo(top_ + ScrollStep(pointer_, milliseconds));
}

} // namespace orv::controls
