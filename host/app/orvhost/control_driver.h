#pragma once
// A user's hands on the add-on's controls. Every function raises std::runtime_error when it cannot be done.
#include <cstdint>
#include <string>

#include "host/app/orvhost/system.h"

namespace orv::host {

class ControlDriver {
  public:
    /// `control` is the add-on's window.
    explicit ControlDriver(HWND control) : control_(control) {}

    HWND Find(const std::wstring& name, std::int32_t index) const;
    /// As Find, but shown and enabled, as a user needs it.
    HWND FindUsable(const std::wstring& name, std::int32_t index) const;

    void Focus(const std::wstring& name, std::int32_t index) const;
    /// Clicks a button; the click is posted.
    void Press(const std::wstring& name, std::int32_t index) const;
    /// Text of an edit, entry of a combo, "1" or "0" of a check or option button.
    void Set(const std::wstring& name, std::int32_t index, const std::wstring& value) const;
    std::wstring Value(const std::wstring& name, std::int32_t index) const;
    /// Clicks the tree's node of that text, or of a path of texts joined by "/".
    void SelectNode(const std::wstring& path) const;

  private:
    HWND control_;
};

/// Posts the text as characters to whatever has the keyboard.
void TypeText(const std::wstring& text);

/// A key stroke as messages, "Tab", "Shift+Tab", "Ctrl+A"; the caller dispatches them. Raises for an unknown name.
struct KeyStroke {
    WORD key = 0;
    bool shift = false;
    bool control = false;
    bool alt = false;
};
KeyStroke ParseKey(const std::wstring& name);

} // namespace orv::host
