#pragma once
// The edit box for bytes with control characters, without any window: displayed text, shadow, caret, editing.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "controls/mb_edit_history.h"
#include "controls/mb_edit_text.h"
#include "text/bytes.h"

namespace orv::controls {

/// Positions are offsets into the displayed text, 0-based; caret and anchor stand on token borders only.
class MBEditCore {
  public:
    /// The value: one byte a token. Setting replaces the content whole, longer than MaxLength if need be, puts the
    /// caret before it, forgets the undo steps and raises nothing.
    Bytes Data() const { return content_.Data(0, content_.Size()); }
    void SetData(const Bytes& data);

    const std::wstring& Text() const { return content_.Text(); }
    const std::vector<ShadowCell>& Cells() const { return content_.Cells(); }
    std::size_t TextLength() const { return content_.Size(); }

    /// Displayed characters; 0 is no limit. In place of the whole content one token goes in whatever its length.
    std::size_t MaxLength() const { return maxLength_; }
    void SetMaxLength(std::size_t length) { maxLength_ = length; }
    /// Return is not a token: of one line it does nothing, of several it breaks the line. A break is byte 13, too.
    bool MaskReturn() const { return maskReturn_; }
    void SetMaskReturn(bool mask) { maskReturn_ = mask; }
    bool Multiline() const { return multiline_; }
    void SetMultiline(bool several) { multiline_ = several; }
    bool Locked() const { return locked_; }
    void SetLocked(bool locked) { locked_ = locked; }

    std::size_t Caret() const { return caret_; }
    std::size_t SelStart() const { return caret_ < anchor_ ? caret_ : anchor_; }
    std::size_t SelLength() const { return caret_ < anchor_ ? anchor_ - caret_ : caret_ - anchor_; }
    /// Both are widened to whole tokens; the caret ends behind the selection.
    void Select(std::size_t start, std::size_t length);
    void SelectAll() { Select(0, content_.Size()); }
    /// To the nearer border of the token at `position`; `extend` keeps the anchor.
    void MoveCaret(std::size_t position, bool extend);
    void StepLeft(bool extend);
    void StepRight(bool extend);
    /// Token borders at or before and at or behind a position.
    std::size_t Floor(std::size_t position) const { return content_.Floor(position); }
    std::size_t Ceiling(std::size_t position) const { return content_.Ceiling(position); }

    /// A character key. Answers whether the box consumed it: Back (8), and Return while it does nothing, are the
    /// display's.
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
    Bytes SelectedData() const { return content_.Data(SelStart(), SelLength()); }
    std::wstring SelectedText() const { return content_.Text().substr(SelStart(), SelLength()); }

    /// A run of typed characters, of Backspace or of Delete is one step; moving the caret ends it.
    bool Undo();
    bool Redo();
    bool CanUndo() const { return !locked_ && history_.CanUndo(); }
    bool CanRedo() const { return !locked_ && history_.CanRedo(); }
    /// What comes next is no part of the run before.
    void EndStep() { history_.Break(); }

    /// "Hex: 02 0D"; empty for an empty box.
    std::wstring HexTip() const;

    /// Raised before a character key does anything; a handler may change the code, 0 swallows the key.
    std::function<void(std::uint16_t& code)> onKeyPress;
    std::function<void()> onChange;
    std::function<void()> onSelChange;
    /// An edit was refused for its length. The system's beep goes with it.
    std::function<void()> onMaxLengthExceeded;

  private:
    /// Puts the selection and moves the caret; ends the step and raises when that is a change.
    void Place(std::size_t anchor, std::size_t caret);
    void Apply(EditKind kind, std::size_t at, std::size_t length, const TokenText& inserted);
    /// Replaces the selection with what fits of it. How many bytes were inserted.
    std::size_t Replace(EditKind kind, std::span<const std::uint8_t> bytes);
    bool BreakLine();
    bool EraseTo(EditKind kind, std::size_t border);
    bool Fits(std::size_t added) const;
    void Changed();

    TokenText content_;
    std::size_t caret_ = 0;
    std::size_t anchor_ = 0;
    std::size_t maxLength_ = 0;
    bool maskReturn_ = false;
    bool multiline_ = false;
    bool locked_ = false;
    EditHistory history_;
};

} // namespace orv::controls
