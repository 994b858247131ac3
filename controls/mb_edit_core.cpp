#include "controls/mb_edit_core.h"

#include <algorithm>

namespace orv::controls {
namespace {

constexpr std::uint16_t kBackspace = 8;
constexpr std::uint16_t kReturn = 13;
constexpr std::uint16_t kEscape = 27;
constexpr std::uint16_t kFullStop = 46;

} // namespace

void MBEditCore::SetData(const Bytes& data) {
    content_.Assign(data);
    caret_ = anchor_ = 0;
    history_.Clear();
}

void MBEditCore::Place(std::size_t anchor, std::size_t caret) {
    if (anchor == anchor_ && caret == caret_)
        return;
    anchor_ = anchor;
    caret_ = caret;
    history_.Break();
    if (onSelChange)
        onSelChange();
}

void MBEditCore::Select(std::size_t start, std::size_t length) {
    start = std::min(start, content_.Size());
    length = std::min(length, content_.Size() - start);
    const std::size_t anchor = Floor(start);
    Place(anchor, length == 0 ? anchor : Ceiling(start + length));
}

void MBEditCore::MoveCaret(std::size_t position, bool extend) {
    position = std::min(position, content_.Size());
    const std::size_t below = Floor(position);
    const std::size_t above = Ceiling(position);
    const std::size_t caret = position - below < above - position ? below : above;
    Place(extend ? anchor_ : caret, caret);
}

void MBEditCore::StepLeft(bool extend) {
    if (!extend && SelLength() > 0)
        MoveCaret(SelStart(), false);
    else
        MoveCaret(caret_ == 0 ? 0 : Floor(caret_ - 1), extend);
}

void MBEditCore::StepRight(bool extend) {
    if (!extend && SelLength() > 0)
        MoveCaret(SelStart() + SelLength(), false);
    else
        MoveCaret(Ceiling(std::min(caret_ + 1, content_.Size())), extend);
}

void MBEditCore::Changed() {
    if (onChange)
        onChange();
    if (onSelChange)
        onSelChange();
}

bool MBEditCore::Undo() {
    if (!CanUndo())
        return false;
    // Room first: a step that is taken off the list must be taken back.
    content_.Reserve(content_.Size() + history_.NextUndo().removed.Size());
    const Edit& edit = history_.Undo();
    content_.Splice(edit.at, edit.inserted.Size(), edit.removed);
    anchor_ = edit.anchor;
    caret_ = edit.caret;
    Changed();
    return true;
}

bool MBEditCore::Redo() {
    if (!CanRedo())
        return false;
    content_.Reserve(content_.Size() + history_.NextRedo().inserted.Size());
    const Edit& edit = history_.Redo();
    content_.Splice(edit.at, edit.removed.Size(), edit.inserted);
    caret_ = anchor_ = edit.at + edit.inserted.Size();
    Changed();
    return true;
}

bool MBEditCore::Fits(std::size_t added) const {
    return maxLength_ == 0 || content_.Size() - SelLength() + added <= maxLength_;
}

void MBEditCore::Apply(EditKind kind, std::size_t at, std::size_t length, const TokenText& inserted) {
    // Room first: what stands in the history must have been done.
    content_.Reserve(content_.Size() - length + inserted.Size());
    history_.Add({kind, at, content_.Part(at, length), inserted, anchor_, caret_});
    content_.Splice(at, length, inserted);
    caret_ = anchor_ = at + inserted.Size();
    Changed();
}

std::size_t MBEditCore::Replace(EditKind kind, std::span<const std::uint8_t> bytes) {
    if (locked_)
        return 0;
    std::size_t length = 0;
    std::size_t taken = 0;
    // The first one in place of everything has no maximum: a byte whose name is longer could never be entered again.
    const bool all = SelLength() == content_.Size();
    while (taken < bytes.size() && ((all && taken == 0) || Fits(length + TokenText::LengthOf(bytes[taken]))))
        length += TokenText::LengthOf(bytes[taken++]);
    TokenText inserted;
    inserted.Assign(bytes.first(taken));
    if (taken > 0 || SelLength() > 0)
        Apply(kind, SelStart(), SelLength(), inserted);
    return taken;
}

bool MBEditCore::BreakLine() {
    TokenText inserted;
    if (Fits(1))
        inserted.AppendLineBreak();
    const bool fits = inserted.Size() > 0;
    if (fits || SelLength() > 0)
        Apply(EditKind::Typing, SelStart(), SelLength(), inserted);
    return fits;
}

bool MBEditCore::TypeCharacter(std::uint16_t code) {
    if (onKeyPress)
        onKeyPress(code);
    if (code == 0)
        return true;
    const bool full = maxLength_ >= 1 && SelLength() == 0 && content_.Size() == maxLength_;
    bool refused = full;
    const bool masked = code == kReturn && maskReturn_;
    const bool displays = code == kBackspace || (masked && !multiline_);
    if (!displays && !locked_) {
        const auto byte = static_cast<std::uint8_t>(code);
        refused = masked ? !BreakLine() : Replace(EditKind::Typing, {&byte, 1}) == 0;
    }
    // The full stop is let off with Backspace and Escape: it has the number of the Delete key. It is meant so; at
    // the limit it is dropped all the same, only without a sound.
    const bool exempt = code == kBackspace || code == kEscape || code == kFullStop;
    if (refused && !exempt && !locked_ && onMaxLengthExceeded)
        onMaxLengthExceeded();
    return !displays;
}

bool MBEditCore::InsertCC(std::uint8_t byte) {
    const bool inserted = Replace(EditKind::Single, {&byte, 1}) == 1;
    if (!inserted && !locked_ && onMaxLengthExceeded)
        onMaxLengthExceeded();
    return inserted;
}

bool MBEditCore::DeleteSelection() {
    if (locked_ || SelLength() == 0)
        return false;
    Apply(EditKind::Single, SelStart(), SelLength(), {});
    return true;
}

bool MBEditCore::EraseTo(EditKind kind, std::size_t border) {
    if (locked_ || border == caret_)
        return false;
    const std::size_t from = std::min(border, caret_);
    Apply(kind, from, std::max(border, caret_) - from, {});
    return true;
}

bool MBEditCore::Backspace() {
    if (SelLength() > 0)
        return DeleteSelection();
    return EraseTo(EditKind::Backspace, caret_ == 0 ? 0 : Floor(caret_ - 1));
}

bool MBEditCore::Delete() {
    if (SelLength() > 0)
        return DeleteSelection();
    return EraseTo(EditKind::Delete, Ceiling(std::min(caret_ + 1, content_.Size())));
}

bool MBEditCore::Paste(const Bytes& bytes) {
    if (locked_ || bytes.empty())
        return false;
    const bool selected = SelLength() > 0;
    const std::size_t taken = Replace(EditKind::Single, bytes);
    if (taken < bytes.size() && onMaxLengthExceeded)
        onMaxLengthExceeded();
    return selected || taken > 0;
}

std::wstring MBEditCore::HexTip() const {
    return Text().empty() ? std::wstring() : L"Hex: " + text::Hex(Data(), L" ");
}

} // namespace orv::controls
