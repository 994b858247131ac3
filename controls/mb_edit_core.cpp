#include "controls/mb_edit_core.h"

#include <algorithm>

namespace orv::controls {
namespace {

constexpr std::uint16_t kBackspace = 8;
constexpr std::uint16_t kReturn = 13;
constexpr std::uint16_t kEscape = 27;
constexpr std::uint16_t kFullStop = 46;
constexpr std::size_t kUndoSteps = 100;

void AppendToken(std::wstring& text, std::vector<ShadowCell>& cells, std::uint8_t byte) {
    const std::wstring token = text::ByteToken(byte, true, true);
    text += token;
    cells.insert(cells.end(), token.size(), ShadowCell{byte, static_cast<std::int16_t>(token.size())});
}

} // namespace

Bytes MBEditCore::Data() const {
    Bytes data;
    for (std::size_t i = 0; i < cells_.size(); i += static_cast<std::size_t>(cells_[i].tokenLength))
        data.push_back(cells_[i].value);
    return data;
}

void MBEditCore::SetData(const Bytes& data) {
    text_.clear();
    cells_.clear();
    for (std::uint8_t byte : data)
        AppendToken(text_, cells_, byte);
    caret_ = anchor_ = 0;
    undo_.clear();
    redo_.clear();
}

std::size_t MBEditCore::Floor(std::size_t position) const {
    // From the start, because two equal tokens side by side look the same from inside.
    std::size_t border = 0;
    while (border < cells_.size()) {
        const std::size_t next = border + static_cast<std::size_t>(cells_[border].tokenLength);
        if (next > position)
            break;
        border = next;
    }
    return border;
}

std::size_t MBEditCore::Ceiling(std::size_t position) const {
    const std::size_t border = Floor(position);
    return border >= position ? border : border + static_cast<std::size_t>(cells_[border].tokenLength);
}

void MBEditCore::Select(std::size_t start, std::size_t length) {
    start = std::min(start, text_.size());
    length = std::min(length, text_.size() - start);
    anchor_ = Floor(start);
    caret_ = length == 0 ? anchor_ : Ceiling(start + length);
    if (onSelChange)
        onSelChange();
}

void MBEditCore::MoveCaret(std::size_t position, bool extend) {
    position = std::min(position, text_.size());
    const std::size_t below = Floor(position);
    const std::size_t above = Ceiling(position);
    caret_ = position - below < above - position ? below : above;
    if (!extend)
        anchor_ = caret_;
    if (onSelChange)
        onSelChange();
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
        MoveCaret(Ceiling(std::min(caret_ + 1, text_.size())), extend);
}

void MBEditCore::Changed() {
    if (onChange)
        onChange();
    if (onSelChange)
        onSelChange();
}

void MBEditCore::Remember() {
    redo_.clear();
    undo_.push_back({text_, cells_, caret_});
    if (undo_.size() > kUndoSteps)
        undo_.erase(undo_.begin());
}

void MBEditCore::Restore(std::vector<Snapshot>& from, std::vector<Snapshot>& to) {
    to.push_back({text_, cells_, caret_});
    Snapshot& snapshot = from.back();
    text_ = std::move(snapshot.text);
    cells_ = std::move(snapshot.cells);
    caret_ = anchor_ = snapshot.caret;
    from.pop_back();
    Changed();
}

bool MBEditCore::Undo() {
    if (locked_ || undo_.empty())
        return false;
    Restore(undo_, redo_);
    return true;
}

bool MBEditCore::Redo() {
    if (locked_ || redo_.empty())
        return false;
    Restore(redo_, undo_);
    return true;
}

bool MBEditCore::Fits(std::size_t added) const {
    return maxLength_ == 0 || text_.size() + added <= maxLength_;
}

bool MBEditCore::EraseSelection() {
    const std::size_t start = SelStart();
    const std::size_t length = SelLength();
    if (length == 0)
        return false;
    text_.erase(start, length);
    const auto first = cells_.begin() + static_cast<std::ptrdiff_t>(start);
    cells_.erase(first, first + static_cast<std::ptrdiff_t>(length));
    caret_ = anchor_ = start;
    return true;
}

std::size_t MBEditCore::Replace(std::span<const std::uint8_t> bytes) {
    if (locked_)
        return 0;
    Remember();
    const bool erased = EraseSelection();
    std::wstring text;
    std::vector<ShadowCell> cells;
    std::size_t taken = 0;
    for (std::uint8_t byte : bytes) {
        if (!Fits(text.size() + text::ByteToken(byte, true, true).size()))
            break;
        AppendToken(text, cells, byte);
        ++taken;
    }
    if (!erased && taken == 0) {
        undo_.pop_back();
        return 0;
    }
    text_.insert(caret_, text);
    cells_.insert(cells_.begin() + static_cast<std::ptrdiff_t>(caret_), cells.begin(), cells.end());
    caret_ = anchor_ = caret_ + text.size();
    Changed();
    return taken;
}

bool MBEditCore::TypeCharacter(std::uint16_t code) {
    if (onKeyPress)
        onKeyPress(code);
    if (code == 0)
        return true;
    const bool full = maxLength_ >= 1 && SelLength() == 0 && text_.size() == maxLength_;
    bool refused = full;
    const bool displays = code == kBackspace || (code == kReturn && maskReturn_);
    if (!displays && !locked_) {
        const auto byte = static_cast<std::uint8_t>(code);
        refused = Replace({&byte, 1}) == 0;
    }
    // The full stop is let off with Backspace and Escape: it has the number of the Delete key. It is meant so; at
    // the limit it is dropped all the same, only without a sound.
    const bool exempt = code == kBackspace || code == kEscape || code == kFullStop;
    if (refused && !exempt && !locked_ && onMaxLengthExceeded)
        onMaxLengthExceeded();
    return !displays;
}

bool MBEditCore::InsertCC(std::uint8_t byte) {
    const bool inserted = Replace({&byte, 1}) == 1;
    if (!inserted && !locked_ && onMaxLengthExceeded)
        onMaxLengthExceeded();
    return inserted;
}

bool MBEditCore::DeleteSelection() {
    if (locked_ || SelLength() == 0)
        return false;
    Replace({});
    return true;
}

bool MBEditCore::Backspace() {
    if (SelLength() == 0 && caret_ > 0)
        anchor_ = Floor(caret_ - 1);
    return DeleteSelection();
}

bool MBEditCore::Delete() {
    if (SelLength() == 0 && caret_ < text_.size())
        anchor_ = Ceiling(caret_ + 1);
    return DeleteSelection();
}

bool MBEditCore::Paste(const Bytes& bytes) {
    if (locked_ || bytes.empty())
        return false;
    const bool selected = SelLength() > 0;
    const std::size_t taken = Replace(bytes);
    if (taken < bytes.size() && onMaxLengthExceeded)
        onMaxLengthExceeded();
    return selected || taken > 0;
}

Bytes MBEditCore::SelectedData() const {
    Bytes data;
    for (std::size_t i = SelStart(); i < SelStart() + SelLength(); i += static_cast<std::size_t>(cells_[i].tokenLength))
        data.push_back(cells_[i].value);
    return data;
}

std::wstring MBEditCore::HexTip() const {
    return text_.empty() ? std::wstring() : L"Hex: " + text::Hex(Data(), L" ");
}

} // namespace orv::controls
