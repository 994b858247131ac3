#pragma once
// The edit box for bytes with control characters, without any window: displayed text, shadow, caret, editing.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "text/bytes.h"

namespace orv::controls {

/// One a displayed character.
struct ShadowCell {
    std::uint8_t value = 0;       ///< byte that the token stands for
    std::int16_t tokenLength = 1; ///< displayed characters of the token
    bool operator==(const ShadowCell&) const = default;
};

/// Text and cells, always of the same length. Positions are offsets into the displayed text, 0-based; caret and
/// anchor stand on token borders only.
class MBEditCore {
  public:
    /// The value: one byte a token. Setting replaces the content whole, longer than MaxLength if need be, puts the
    /// caret before it, forgets the undo steps and raises nothing.
    Bytes Data() const;
    void SetData(const Bytes& data);

    const std::wstring& Text() const { return text_; }
    const std::vector<ShadowCell>& Cells() const { return cells_; }
    std::size_t TextLength() const { return text_.size(); }

    /// Displayed characters; 0 is no limit.
    std::size_t MaxLength() const { return maxLength_; }
    void SetMaxLength(std::size_t length) { maxLength_ = length; }
    bool MaskReturn() const { return maskReturn_; }
    void SetMaskReturn(bool mask) { maskReturn_ = mask; }
    bool Locked() const { return locked_; }
    void SetLocked(bool locked) { locked_ = locked; }

    std::size_t Caret() const { return caret_; }
    std::size_t SelStart() const { return caret_ < anchor_ ? caret_ : anchor_; }
    std::size_t SelLength() const { return caret_ < anchor_ ? anchor_ - caret_ : caret_ - anchor_; }
    /// Both are widened to whole tokens; the caret ends behind the selection.
    void Select(std::size_t start, std::size_t length);
    void SelectAll() { Select(0, text_.size()); }
    /// To the nearer border of the token at `position`; `extend` keeps the anchor.
    void MoveCaret(std::size_t position, bool extend);
    void StepLeft(bool extend);
    void StepRight(bool extend);

    /// A character key. Answers whether the box consumed it: Back (8), and Return while masked, are the display's.
    bool TypeCharacter(std::uint16_t code);
    /// Deletes the selection and puts one byte's token in its place. False when that does not fit; the selection is
    /// gone all the same.
    bool InsertCC(std::uint8_t byte);
    bool Backspace();
    bool Delete();
    bool DeleteSelection();
    /// Replaces the selection, cut after the last token that fits. True when something changed.
    bool Paste(const Bytes& bytes);
    /// Text in which the names of control characters, "<CR>", and "<$A0>" become their bytes; a character that is
    /// no byte becomes a question mark.
    static Bytes Parse(std::wstring_view text);
    Bytes SelectedData() const;
    std::wstring SelectedText() const { return text_.substr(SelStart(), SelLength()); }

    bool Undo();
    bool Redo();

    /// "Hex: 02 0D"; empty for an empty box.
    std::wstring HexTip() const;

    /// Raised before a character key does anything; a handler may change the code, 0 swallows the key.
    std::function<void(std::uint16_t& code)> onKeyPress;
    std::function<void()> onChange;
    std::function<void()> onSelChange;
    /// An edit was refused for its length. The system's beep goes with it.
    std::function<void()> onMaxLengthExceeded;

  private:
    struct Snapshot {
        std::wstring text;
        std::vector<ShadowCell> cells;
        std::size_t caret = 0;
    };

    std::size_t Floor(std::size_t position) const;
    std::size_t Ceiling(std::size_t position) const;
    bool EraseSelection();
    /// Erases the selection and inserts what fits. How many bytes were inserted.
    std::size_t Replace(std::span<const std::uint8_t> bytes);
    bool Fits(std::size_t added) const;
    void Remember();
    void Restore(std::vector<Snapshot>& from, std::vector<Snapshot>& to);
    void Changed();

    std::wstring text_;
    std::vector<ShadowCell> cells_;
    std::size_t caret_ = 0;
    std::size_t anchor_ = 0;
    std::size_t maxLength_ = 0;
    bool maskReturn_ = false;
    bool locked_ = false;
    std::vector<Snapshot> undo_;
    std::vector<Snapshot> redo_;
};

} // namespace orv::controls
