#pragma once
// A whole number that is typed, stepped with arrows, or turned with the wheel.
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "controls/widget.h"

namespace orv::controls {

/// What is typed stays as typed until it is committed. While it is no number that may stand here, the focus stays,
/// too (onValidate is taken; a rule of the page's own goes into onAccept). A stored value outside the limits is shown
/// as it is and stands until the user edits it.
class NumberBox : public Widget {
  public:
    using Number = std::int64_t;

    explicit NumberBox(std::wstring name, int index = kNoIndex);

    /// The last number that was right.
    Number Value() const { return value_; }
    void SetValue(Number value);
    /// Limits in either order. Those of a 32-bit number before the first call.
    void SetRange(Number one, Number other);
    Number Least() const { return least_; }
    Number Greatest() const { return greatest_; }
    /// The only numbers allowed, inside the range; none: all of it.
    void SetAllowed(std::vector<Number> allowed);
    const std::vector<Number>& Allowed() const { return allowed_; }

    const std::wstring& Text() const { return text_; }
    /// The text differs from what was last set or accepted.
    bool Pending() const { return text_ != std::to_wstring(stored_); }
    /// Whether the text may be committed as far as the limits go.
    bool Valid() const { return Reading().has_value(); }
    /// Hands what is pending to onAccept. False, with a beep, while it is wrong, and when onAccept refuses it.
    bool Commit();
    /// Back to the last number that was right.
    void Revert();

    /// Gesture: the text is now this.
    void Edit(std::wstring text);
    /// Gesture: arrow or wheel; so many numbers up or down.
    void Step(int by);
    KeyOutcome HandleKey(const KeyEvent& key) override;
    void FocusEntered(bool byKeyboard) override;
    Size MinimumSize(const TextMeasure& measure) const override;

    /// The user came to another number that is right; it is not accepted yet.
    std::function<void(Number)> onChange;
    /// The page's own rule, asked when the focus leaves or the page is committed. True when the number is stored.
    std::function<bool(Number)> onAccept;
    /// An arrow or the wheel led to another number; raised behind onChange.
    std::function<void()> onStep;
    /// The text was not taken: no number that may stand here.
    std::function<void()> onRefused;

  private:
    std::optional<Number> Reading() const;
    bool Allows(Number number) const;
    Number Next(Number from, int by) const;
    Number NextAllowed(Number from, int by) const;
    void Show(std::wstring text);
    void Changed();
    void Beep();

    Number value_ = 0;
    Number stored_ = 0;
    Number least_;
    Number greatest_;
    std::vector<Number> allowed_;
    std::wstring text_;
};

} // namespace orv::controls
