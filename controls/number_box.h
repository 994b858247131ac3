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
/// as it is and stands until the user edits it. A value that nobody knows is shown as an empty field: left empty it
/// stands, and any number in its place is a change.
class NumberBox : public Widget {
  public:
    using Number = std::int64_t;

    explicit NumberBox(std::wstring name, int index = kNoIndex);

    /// The last number that was right; 0 while there is none, never the number of what was shown before.
    Number Value() const { return value_.value_or(0); }
    /// There is such a number: one was set, or the user came to one since SetUnknown.
    bool Known() const { return value_.has_value(); }
    void SetValue(Number value);
    /// Holds no number until SetValue, or until the user enters one.
    void SetUnknown();
    /// Limits in either order. Those of a 32-bit number before the first call.
    void SetRange(Number one, Number other);
    Number Least() const { return least_; }
    Number Greatest() const { return greatest_; }
    /// The only numbers allowed, inside the range; none: all of it.
    void SetAllowed(std::vector<Number> allowed);
    const std::vector<Number>& Allowed() const { return allowed_; }

    const std::wstring& Text() const { return text_; }
    /// The text differs from what was last set or accepted.
    bool Pending() const { return text_ != TextOf(stored_); }
    /// Whether the text may be committed as far as the limits go.
    bool Valid() const { return !Pending() || Reading().has_value(); }
    /// Hands what is pending to onAccept. False, with a beep, while it is wrong, and when onAccept refuses it.
    bool Commit();
    /// Back to the last number that was right; to none where none is stored.
    void Revert();

    /// Gesture: the text is now this.
    void Edit(std::wstring text);
    /// Gesture: arrow or wheel; so many numbers up or down. Where none is known, to the one nearest to 0 that may stand
    /// here, of listed ones to the first.
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

  protected:
    void DropPending() override;

  private:
    static std::wstring TextOf(std::optional<Number> number);
    std::optional<Number> Reading() const;
    bool Allows(Number number) const;
    Number Next(Number from, int by) const;
    Number NextAllowed(Number from, int by) const;
    Number First() const;
    void Show(std::wstring text);
    void Changed();
    void Beep();

    std::optional<Number> value_ = 0;
    std::optional<Number> stored_ = 0;
    Number least_;
    Number greatest_;
    std::vector<Number> allowed_;
    std::wstring text_;
};

} // namespace orv::controls
