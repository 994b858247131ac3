#pragma once
// A user's hands on the add-on's controls. Every function raises std::runtime_error when it cannot be done.
#include <cstdint>
#include <string>

#include "host/app/orvhost/system.h"

namespace orv::host {

class ControlDriver {
  public:
    /// `control` is the add-on's window, or that of a dialog of its.
    explicit ControlDriver(HWND control) : control_(control) {}

    HWND Find(const std::wstring& name, std::int32_t index) const;
    /// As Find, but shown and enabled, as a user needs it.
    HWND FindUsable(const std::wstring& name, std::int32_t index) const;

    void Focus(const std::wstring& name, std::int32_t index) const;
    /// Clicks a button; the click is posted.
    void Press(const std::wstring& name, std::int32_t index) const;
    /// Text of an edit, entry of a combo, "1" or "0" of a check or option button.
    void Set(const std::wstring& name, std::int32_t index, const std::wstring& value) const;
    /// Replaces what an edit holds, as typed; the characters are posted.
    void Enter(const std::wstring& name, std::int32_t index, const std::wstring& text) const;
    /// As Set takes it; of a list, strip or toolbar what it shows (item_driver.h), of a tree the selected node.
    std::wstring Value(const std::wstring& name, std::int32_t index) const;
    /// Clicks the tree's node of that text, or of a path of texts joined by "/"; "*" at the end of a text stands for
    /// the rest of it.
    void SelectNode(const std::wstring& path) const;
    bool HasNode(const std::wstring& path) const;

  private:
    HWND control_;
};

/// The dialog of the component that has the keyboard to itself now; null when there is none, or a box over it.
HWND OpenDialog();

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
