#include "controls/picture_list.h"

#include <algorithm>

#include "text/restoring.h"

namespace orv::controls {
namespace {

constexpr int kPictureSide = 16;

bool SameKeys(const std::vector<PictureList::Row>& some, const std::vector<PictureList::Row>& others) {
    return std::equal(some.begin(), some.end(), others.begin(), others.end(),
                      [](const auto& one, const auto& other) { return one.key == other.key; });
}

} // namespace

PictureList::PictureList(std::wstring name, int index) : Widget(Kind::PictureList, std::move(name), index) {
    SetTabStop(true);
}

template <typename Change>
auto PictureList::Mirrored(Change&& change) {
    const int selected = core_.Selected();
    const int top = core_.Top();
    const int gap = core_.Gap();
    const bool dragging = core_.Dragging();
    const Restoring tell([&] {
        if (core_.Top() != top)
            Mirror(Aspect::Scroll);
        if (core_.Selected() != selected)
            Mirror(Aspect::Selection);
        if (core_.Gap() != gap || core_.Dragging() != dragging)
            Mirror(Aspect::Mark);
    });
    return change();
}

void PictureList::SetRows(std::vector<Row> rows) {
    const bool same = SameKeys(rows, rows_);
    rows_ = std::move(rows);
    typing_.Reset();
    Mirrored([&] {
        if (!same)
            core_.Cancel();
        core_.SetCount(static_cast<int>(rows_.size()));
        Mirror(Aspect::Items);
    });
}

void PictureList::SetSelected(int row) {
    Mirrored([&] {
        core_.Select(row);
        core_.Reveal(row);
    });
}

void PictureList::SetEmptyText(std::wstring text) {
    emptyText_ = std::move(text);
    Mirror(Aspect::Items);
}

std::wstring PictureList::TipOf(int row, bool cut) const {
    if (row < 0 || row >= core_.Count())
        return {};
    const Row& shown = rows_[static_cast<std::size_t>(row)];
    if (!cut || shown.tip == shown.caption)
        return cut ? shown.caption : shown.tip;
    return shown.tip.empty() ? shown.caption : shown.caption + L"\r\n" + shown.tip;
}

bool PictureList::CanDo(Command command) const {
    const int row = core_.Selected();
    if (!Interactive() || row < 0)
        return false;
    switch (command) {
    case Command::MoveUp:
        return onMove && row > 0;
    case Command::MoveDown:
        return onMove && row + 1 < core_.Count();
    default:
        return onDelete != nullptr;
    }
}

int PictureList::RowHeight(const TextMeasure& measure) {
    return std::max(measure.LineHeight(), measure.Scale(kPictureSide)) + measure.Scale(6);
}

void PictureList::SetGeometry(const RowGeometry& geometry) {
    Mirrored([&] { core_.SetGeometry(geometry); });
}

void PictureList::ScrollTo(int top) {
    Mirrored([&] { core_.ScrollTo(top); });
}

void PictureList::Select(int row) {
    if (!Interactive() || row < 0 || row >= core_.Count() || row == core_.Selected())
        return;
    Mirrored([&] { core_.Select(row); });
    if (onSelect)
        onSelect();
}

void PictureList::StepTo(int row) {
    if (core_.Count() == 0)
        return;
    const int next = std::clamp(row, 0, core_.Count() - 1);
    Mirrored([&] { core_.Reveal(next); });
    Select(next);
}

void PictureList::Press(Point at, bool twice) {
    if (!Interactive())
        return;
    twice_ = twice;
    typing_.Reset();
    // A row that is seen in part stays where it is: the rows must not move away under the pointer.
    const int row = Mirrored([&] { return core_.Press(at); });
    Select(row);
}

void PictureList::PointTo(Point at) {
    if (!Interactive()) {
        CancelDrag();
        return;
    }
    if (onMove)
        Mirrored([&] { core_.MoveTo(at); });
}

void PictureList::Release(Point at) {
    PointTo(at);
    const bool pressed = core_.GetState() == PictureListCore::State::Pressed;
    const auto move = Mirrored([&] { return core_.Release(at); });
    if (move)
        Move(move->row, move->gap);
    else if (pressed && std::exchange(twice_, false))
        Activate();
}

void PictureList::CancelDrag() {
    twice_ = false;
    Mirrored([&] { core_.Cancel(); });
}

void PictureList::Tick(int milliseconds) {
    Mirrored([&] { core_.Tick(milliseconds); });
}

void PictureList::Move(int row, int gap) {
    if (onMove)
        onMove(row + 1, gap + 1);
}

void PictureList::Activate() {
    if (core_.Selected() >= 0 && onActivate)
        onActivate(core_.Selected() + 1);
}

void PictureList::Do(Command command) {
    if (!CanDo(command))
        return;
    const int row = core_.Selected();
    switch (command) {
    case Command::Delete:
        if (onDelete)
            onDelete(row + 1);
        break;
    case Command::MoveUp:
        Move(row, row - 1);
        break;
    case Command::MoveDown:
        Move(row, row + 2); // gaps are counted with the row still in its place
        break;
    }
}

KeyOutcome PictureList::Character(wchar_t character) {
    if (character < L' ' || (character == L' ' && !typing_.Typing()))
        return KeyOutcome::NotHandled;
    const int found = typing_.Find(character, core_.Selected(), core_.Count(), [this](int row) -> const std::wstring& {
        return rows_[static_cast<std::size_t>(row)].caption;
    });
    if (found >= 0)
        StepTo(found);
    return KeyOutcome::Handled;
}

KeyOutcome PictureList::AltKey(Key key) {
    if (key != Key::Up && key != Key::Down)
        return KeyOutcome::NotHandled;
    Do(key == Key::Up ? Command::MoveUp : Command::MoveDown);
    return KeyOutcome::Handled;
}

KeyOutcome PictureList::HandleKey(const KeyEvent& key) {
    if (!Interactive())
        return KeyOutcome::NotHandled;
    const auto state = core_.GetState();
    if (state == PictureListCore::State::Pressed || state == PictureListCore::State::Carrying) {
        if (key.key == Key::Escape)
            CancelDrag();
        return KeyOutcome::Handled; // nothing else happens with a row in hand
    }
    if (key.alt && !key.ctrl && !key.shift)
        return AltKey(key.key);
    if (key.ctrl || key.alt)
        return KeyOutcome::NotHandled;
    if (key.key == Key::None)
        return Character(key.character);
    const int row = core_.Selected();
    const int page = std::max(core_.FullRows() - 1, 1);
    switch (key.key) {
    case Key::Up:
        StepTo(row - 1);
        break;
    case Key::Down:
        StepTo(row + 1);
        break;
    case Key::PageUp:
        StepTo(row - page);
        break;
    case Key::PageDown:
        StepTo(std::max(row, 0) + page);
        break;
    case Key::Home:
        StepTo(0);
        break;
    case Key::End:
        StepTo(core_.Count() - 1);
        break;
    case Key::Delete:
        Do(Command::Delete);
        break;
    case Key::Return:
        if (row < 0 || !onActivate)
            return KeyOutcome::NotHandled;
        Activate();
        break;
    default:
        return KeyOutcome::NotHandled;
    }
    return KeyOutcome::Handled;
}

bool PictureList::Accepts(const DragItem& item) const {
    return Interactive() && onDrop && item.source != this;
}

void PictureList::DragOver(const DragItem&, Point at) {
    Mirrored([&] { core_.Host(at); });
}

void PictureList::DragLeave() {
    Mirrored([&] { core_.Leave(); });
}

void PictureList::Drop(const DragItem& item, Point at) {
    const int gap = Mirrored([&] {
        core_.Host(at);
        return core_.Drop(at);
    });
    if (gap != PictureListCore::kNone && onDrop)
        onDrop(item.key, gap);
}

Size PictureList::MinimumSize(const TextMeasure& measure) const {
    return {measure.Scale(140), 4 * RowHeight(measure) + measure.Scale(4)};
}

} // namespace orv::controls
