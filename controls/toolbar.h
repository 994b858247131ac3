#pragma once
// Buttons with picture and caption in rows: a group of which one is pressed, or a palette to take things from.
#include <functional>
#include <string>
#include <vector>

#include "controls/drag.h"
#include "controls/type_ahead.h"
#include "controls/widget.h"

namespace orv::controls {

/// One tab stop; arrows and letters move the focus between the buttons. A button that is not enabled can have it,
/// too: its tip says why.
class Toolbar : public Widget {
  public:
    struct Button {
        std::wstring key;
        std::wstring caption;
        std::wstring picture; ///< key of its picture, see Pictures of the windows
        std::wstring tip;
        std::wstring tag;
        bool enabled = true;
        bool pressed = false;
        int group = 0; ///< at most one button of a group other than 0 is pressed
        bool operator==(const Button&) const = default;
    };

    explicit Toolbar(std::wstring name, int index = kNoIndex);

    const std::vector<Button>& Buttons() const { return buttons_; }
    void SetButtons(std::vector<Button> buttons);
    /// -1 for an unknown key.
    int IndexOf(const std::wstring& key) const;
    /// Nothing when none is pressed.
    const Button* Pressed() const;
    /// Releases the others of its group. An unknown key releases all.
    void SetPressed(const std::wstring& key);
    void SetButtonEnabled(const std::wstring& key, bool enabled, std::wstring tip);

    /// A palette has no pressed buttons: Return, Space or a double click takes what stands there, and it can be
    /// dragged away. Set before it is shown.
    void SetPalette(bool palette) { palette_ = palette; }
    bool Palette() const { return palette_; }

    /// At 96 dots an inch; 0 makes a single column as wide as the toolbar.
    void SetButtonWidth(int width) { buttonWidth_ = width; }
    /// A single column asks for no more than this, at 96 dots an inch; captions are cut then, and shown as tips.
    void SetColumnLimit(int width) { columnLimit_ = width; }
    /// So many stand beside each other when there is no more room than the least.
    void SetLeastColumns(int columns) { leastColumns_ = columns; }
    /// Remembers the size of a button for the calls below.
    Size MinimumSize(const TextMeasure& measure) const override;
    int Columns() const;
    /// In the toolbar's own coordinates.
    Rect PlaceOf(int button) const;
    int ButtonAt(Point at) const;

    /// The button that has the focus when the toolbar has it; -1 without buttons.
    int Current() const { return current_; }
    /// The button shown as held down, -1 for none.
    int Held() const { return over_ ? held_ : -1; }
    const DragBroker& Drag() const { return drag_; }

    // Gestures; points are in the toolbar's own coordinates.
    void Click(int button);
    void Activate(int button);
    /// `twice`: let go without a drag, it activates.
    void Press(Point at, bool twice = false);
    /// `slack`: how far the pointer may stray before it is a drag.
    void PointTo(Point at, Size slack);
    void Release(Point at);
    /// Escape, another button, or the pointer was taken away: nothing happens.
    void CancelPress();
    KeyOutcome HandleKey(const KeyEvent& key) override;
    void FocusEntered(bool byKeyboard) override;
    Rect FocusPart() const override;

    /// A button was pressed; not raised for one of a group that is pressed already.
    std::function<void(const Button&)> onClick;
    /// Something of a palette was chosen.
    std::function<void(const Button&)> onActivate;
    /// The focus is at this button.
    std::function<void(const Button&)> onCurrent;

  private:
    bool Has(int button) const { return button >= 0 && button < static_cast<int>(buttons_.size()); }
    Button& At(int button) { return buttons_[static_cast<std::size_t>(button)]; }
    const Button& At(int button) const { return buttons_[static_cast<std::size_t>(button)]; }
    void Hold(int button, bool over);
    void MakeCurrent(int button);
    void Reveal() const;
    KeyOutcome GoTo(int button);
    KeyOutcome Choose();
    KeyOutcome Typed(wchar_t character);

    std::vector<Button> buttons_;
    bool palette_ = false;
    int buttonWidth_ = 0;
    int columnLimit_ = 0; ///< 0: none
    int leastColumns_ = 1;
    mutable Size cell_{1, 1}; ///< layout asks for the least size before it places; the arrows need it later on
    int current_ = -1;
    int held_ = -1;
    bool over_ = false; ///< the pointer is on the held button
    bool twice_ = false;
    Point pressedAt_;
    TypeAhead typeAhead_;
    DragBroker drag_{*this};
};

} // namespace orv::controls
