#pragma once
// A line of text that can be selected and copied, not changed.
#include <string>

#include "controls/widget.h"

namespace orv::controls {

class TextBox : public Widget {
  public:
    explicit TextBox(std::wstring name, int index = kNoIndex);

    const std::wstring& Text() const { return text_; }
    void SetText(std::wstring text);
    /// How wide the box wants to be at least, in characters of middling width.
    void SetWidthInCharacters(int characters) { widthInCharacters_ = characters; }

    KeyOutcome HandleKey(const KeyEvent& key) override;
    void FocusEntered(bool byKeyboard) override;
    Size MinimumSize(const TextMeasure& measure) const override;

  private:
    std::wstring text_;
    int widthInCharacters_ = 12;
};

} // namespace orv::controls
