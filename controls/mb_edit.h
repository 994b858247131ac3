#pragma once
// The edit box for bytes with control characters as a widget.
#include <functional>
#include <string>

#include "controls/mb_edit_core.h"
#include "controls/widget.h"

namespace orv::controls {

class DropButton;
class Label;

/// A line of text that the peer draws itself: the core's text, tokens (cells longer than 1) in a colour of their own,
/// selection and caret; content that is wider than the window is scrolled by the peer so that the caret shows.
/// The drop button with the names and the label with the count are widgets of their own beside it, see Attach.
class MBEdit : public Widget {
  public:
    explicit MBEdit(std::wstring name, int index = kNoIndex);

    const MBEditCore& Core() const { return core_; }
    Bytes Data() const { return core_.Data(); }
    void SetData(const Bytes& data);
    std::wstring Text() const { return core_.Text(); }
    std::size_t MaxLength() const { return core_.MaxLength(); }
    void SetMaxLength(std::size_t characters);
    void SetMaskReturn(bool mask) { core_.SetMaskReturn(mask); }
    bool Locked() const { return core_.Locked(); }
    void SetLocked(bool locked) { core_.SetLocked(locked); }
    /// The whole content is selected when the focus comes by keyboard or program.
    void SetAutoSelect(bool select) { autoSelect_ = select; }
    bool AutoSelect() const { return autoSelect_; }
    /// Shows the bytes in hexadecimal as the tool tip.
    void SetTooltips(bool show);
    /// How wide the box wants to be at least, in characters of middling width.
    void SetWidthInCharacters(int characters) { widthInCharacters_ = characters; }

    /// Fills and follows the button with the 33 names, shows "5 of 128" on the label. Both outlive the box; either
    /// may be nothing.
    void Attach(DropButton* names, Label* count);

    /// Gestures. TypeText takes characters as they are typed, one by one.
    void TypeText(std::wstring_view text);
    void InsertCC(std::uint8_t byte);
    /// Pointer: to the border nearest `position` (0-based offset into the text); `extend` while dragging or with Shift.
    void PointAt(std::size_t position, bool extend);
    /// Pointer: double click selects the token there.
    void PointAtToken(std::size_t position);
    void Cut();
    void Copy();
    void Paste();
    void Undo();
    void Redo();
    KeyOutcome HandleKey(const KeyEvent& key) override;
    void FocusEntered(bool byKeyboard) override;

    Size MinimumSize(const TextMeasure& measure) const override;

    /// The user changed the content.
    std::function<void()> onChange;
    /// Every change, the program's too: for what only displays the content.
    std::function<void()> onShown;
    std::function<void()> onMaxLengthExceeded;
    std::function<void(std::uint16_t& code)> onKeyPress;

    /// The user changed the content since it was set or MarkStored was called.
    bool Pending() const { return pending_; }
    void MarkStored() { pending_ = false; }

  private:
    template <typename Action>
    void Guard(Action&& action);
    KeyOutcome Dispatch(const KeyEvent& key);
    bool Command(const KeyEvent& key);
    bool Navigate(const KeyEvent& key);
    void Shown();
    std::wstring CountText(std::size_t length) const;

    MBEditCore core_;
    DropButton* names_ = nullptr;
    Label* count_ = nullptr;
    bool autoSelect_ = false;
    bool tooltips_ = true;
    bool pending_ = false;
    int widthInCharacters_ = 12;
};

} // namespace orv::controls
