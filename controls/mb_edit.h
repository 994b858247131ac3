#pragma once
// The edit box for bytes with control characters as a widget.
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "controls/mb_edit_core.h"
#include "controls/mb_edit_look.h"
#include "controls/widget.h"

namespace orv::controls {

class DropButton;
class Label;

/// Names and codes of the bytes 0 to 32, "STX" and "02" with a tab between.
std::vector<std::wstring> ControlNames();

/// A box of one line or of several that the peer draws: the core's text, tokens (cells longer than 1) in a colour of
/// their own, selection and caret; what is larger than the window is scrolled by the peer so that the caret shows.
/// The drop button with the names and the label with the count are widgets of their own beside it, see Attach.
class MBEdit : public Widget {
  public:
    using PropertyList = std::vector<std::pair<std::wstring, std::wstring>>;

    explicit MBEdit(std::wstring name, int index = kNoIndex);

    const MBEditCore& Core() const { return core_; }
    Bytes Data() const { return core_.Data(); }
    void SetData(const Bytes& data);
    std::wstring Text() const { return core_.Text(); }
    /// Names in angle brackets become their bytes.
    void SetText(std::wstring_view text) { SetData(MBEditCore::Parse(text)); }
    std::size_t TextLength() const { return core_.TextLength(); }
    std::size_t MaxLength() const { return core_.MaxLength(); }
    void SetMaxLength(std::size_t characters);
    bool MaskReturn() const { return core_.MaskReturn(); }
    void SetMaskReturn(bool mask) { core_.SetMaskReturn(mask); }
    bool Multiline() const { return core_.Multiline(); }
    /// Content, caret and undo steps stay; the peer takes a window of the other sort.
    void SetMultiline(bool several);
    bool Locked() const { return core_.Locked(); }
    void SetLocked(bool locked) { core_.SetLocked(locked); }
    /// The whole content is selected when the focus comes, whatever brings it; a click that does places no caret.
    void SetAutoSelect(bool select) { autoSelect_ = select; }
    bool AutoSelect() const { return autoSelect_; }
    /// Shows the bytes in hexadecimal as the tool tip.
    bool Tooltips() const { return tooltips_; }
    void SetTooltips(bool show);
    std::size_t SelStart() const { return core_.SelStart(); }
    std::size_t SelLength() const { return core_.SelLength(); }
    /// All keep to whole tokens, and a move is an event: who displays the caret follows the program's moves as well.
    void SetSelStart(std::size_t start) { SetSelection(start, 0); }
    void SetSelLength(std::size_t length) { SetSelection(SelStart(), length); }
    void SetSelection(std::size_t start, std::size_t length) { core_.Select(start, length); }
    const MBEditLook& Look() const { return look_; }
    void SetLook(const MBEditLook& look);
    /// How large the box wants to be at least: characters of middling width, lines when there are several.
    void SetWidthInCharacters(int characters) { widthInCharacters_ = characters; }
    void SetHeightInLines(int lines) { heightInLines_ = lines; }
    /// Draws everything anew.
    void Refresh();
    /// The window on display, 0 while there is none.
    std::uintptr_t WindowHandle() const;

    /// The properties that are kept with a form, as texts. Setting takes any part of them in any order but leaves
    /// the content for last; names that it does not know count for nothing. Raises 13 for a value that is none.
    PropertyList Properties() const;
    void SetProperties(const PropertyList& properties);

    /// Fills and follows the button with the 33 names, shows "5 of 128" on the label. Both outlive the box; either
    /// may be nothing.
    void Attach(DropButton* names, Label* count);
    /// For the peer, while its window is there.
    void SetLayout(const LineLayout* layout) { layout_ = layout; }
    /// What a screen reader says as the value: "STX, A, B, CR".
    std::wstring SpokenValue() const;

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
    /// Replaces the selection as if the text came from the clipboard.
    void PasteText(std::wstring_view text);
    /// Something else than a key edited the window (dictation, another program): the part in which the two texts
    /// differ is pasted.
    void TakeText(std::wstring_view before, std::wstring_view after);
    void Undo();
    void Redo();
    KeyOutcome HandleKey(const KeyEvent& key) override;
    void FocusEntered(bool byKeyboard) override;

    Size MinimumSize(const TextMeasure& measure) const override;

    /// The user changed the content.
    std::function<void()> onChange;
    /// Caret or selection were moved, by the user or by SetSelection and its like. A new content raises nothing.
    std::function<void()> onSelChange;
    /// Every change, the program's too: for what only displays the content.
    std::function<void()> onShown;
    std::function<void()> onMaxLengthExceeded;
    std::function<void(std::uint16_t& code)> onKeyPress;

    /// The user changed the content since it was set or MarkStored was called.
    bool Pending() const { return pending_; }
    void MarkStored();
    /// Back to what was set or marked last, without a way forth again. Raises onShown alone.
    void Revert();

  protected:
    void DropPending() override { Revert(); }

  private:
    /// Runs a gesture; a failure is shown under the box's own name.
    void Guard(const std::function<void()>& action);
    bool PutSelection();
    void Connect();
    KeyOutcome Dispatch(const KeyEvent& key);
    bool Command(const KeyEvent& key);
    bool Navigate(const KeyEvent& key);
    bool NavigateLines(const KeyEvent& key);
    void MoveLines(int lines, bool extend);
    std::size_t BorderNear(const LinePlace& place, bool down) const;
    void MoveToLineEnd(bool extend);
    void PressBackspace();
    void Shown();
    std::wstring CountText(std::size_t length) const;

    MBEditCore core_;
    Bytes stored_; ///< what was set or marked last
    DropButton* names_ = nullptr;
    Label* count_ = nullptr;
    const LineLayout* layout_ = nullptr;
    MBEditLook look_;
    std::optional<int> column_; ///< where a run of Up and Down began
    bool autoSelect_ = false;
    bool tooltips_ = true;
    bool pending_ = false;
    bool gesture_ = false;
    int widthInCharacters_ = 12;
    int heightInLines_ = 3;
};

} // namespace orv::controls
