#pragma once
// Labels, strips, pictures, buttons, check boxes and option buttons.
#include <functional>
#include <string>
#include <vector>

#include "controls/widget.h"

namespace orv::controls {

/// Text; its access key leads to the next tab stop behind it. HintLine and WarningStrip are labels of another look
/// (kinds of their own): both keep their place when empty; the strip is drawn to be seen when it has a text.
class Label : public Widget {
  public:
    explicit Label(std::wstring name, int index = kNoIndex) : Label(Kind::Label, std::move(name), index) {}
    Label(Kind kind, std::wstring name, int index = kNoIndex);
    /// Keeps room for this text whatever the caption ("128 of 128").
    void SetWidest(std::wstring text) { widest_ = std::move(text); }
    /// A text of any length, cut with an ellipsis where it does not fit; its tool tip is the whole text.
    void SetElides(bool elides) { elides_ = elides; }
    bool Elides() const { return elides_; }
    /// Title of what stands below it: drawn heavier. Set before it is shown.
    void SetHeading(bool heading) { heading_ = heading; }
    bool Heading() const { return heading_; }
    Size MinimumSize(const TextMeasure& measure) const override;

  private:
    bool elides_ = false;
    bool heading_ = false;
    std::wstring widest_;
};

/// One of the icons that the program carries, by its number.
class Picture : public Widget {
  public:
    static constexpr int kSide = 32; ///< at 96 dots an inch

    Picture(std::wstring name, int icon, int index = kNoIndex);
    int Icon() const { return icon_; }
    Size MinimumSize(const TextMeasure& measure) const override;

  private:
    int icon_;
};

class Button : public Widget {
  public:
    explicit Button(std::wstring name, int index = kNoIndex);
    /// Gesture: click, Space or Return.
    void Press();
    /// The focus may always come here, whatever the widget losing it says (Cancel and the like).
    bool Releases() const { return releases_; }
    void SetReleases(bool releases) { releases_ = releases; }
    /// As wide as its caption, not as buttons usually are.
    void SetNarrow(bool narrow) { narrow_ = narrow; }

    KeyOutcome HandleKey(const KeyEvent& key) override;
    bool AccessKeyPressed() override;
    Size MinimumSize(const TextMeasure& measure) const override;

    std::function<void()> onClick;

  private:
    bool releases_ = false;
    bool narrow_ = false;
};

/// A small button that opens a list of texts; choosing one raises an event and changes nothing here.
class DropButton : public Widget {
  public:
    explicit DropButton(std::wstring name, int index = kNoIndex);
    const std::vector<std::wstring>& Entries() const { return entries_; }
    void SetEntries(std::vector<std::wstring> entries);
    /// Gesture: open the list (the peer shows it and calls Choose).
    void Open();
    /// Gesture: 0-based.
    void Choose(int entry);
    KeyOutcome HandleKey(const KeyEvent& key) override;
    Size MinimumSize(const TextMeasure& measure) const override;

    std::function<void(int)> onChoose;

  private:
    std::vector<std::wstring> entries_;
};

class CheckBox : public Widget {
  public:
    explicit CheckBox(std::wstring name, int index = kNoIndex);
    bool Checked() const { return checked_; }
    void SetChecked(bool checked);
    /// Neither checked nor unchecked, because nobody knows; until SetChecked or the first click, which checks.
    void SetUndetermined();
    bool Undetermined() const { return undetermined_; }
    /// Gesture.
    void Toggle();
    KeyOutcome HandleKey(const KeyEvent& key) override;
    bool AccessKeyPressed() override;
    Size MinimumSize(const TextMeasure& measure) const override;

    std::function<void()> onClick;

  private:
    void Show(bool checked, bool undetermined);

    bool checked_ = false;
    bool undetermined_ = false;
};

/// One of a group: all option buttons with the same parent. Choosing one clears the others. The group is one tab
/// stop; arrows move inside it and choose.
class OptionButton : public Widget {
  public:
    explicit OptionButton(std::wstring name, int index = kNoIndex);
    bool Chosen() const { return chosen_; }
    void SetChosen(bool chosen);
    /// Gesture: click, Space, arrow. Raises nothing when it is chosen already.
    void Choose();
    /// All of the group, in reading order, this one among them.
    std::vector<OptionButton*> Group() const;
    KeyOutcome HandleKey(const KeyEvent& key) override;
    bool AccessKeyPressed() override;
    Size MinimumSize(const TextMeasure& measure) const override;

    std::function<void()> onClick;

  private:
    bool chosen_ = false;
};

} // namespace orv::controls
