#pragma once
// A user's hands on what stands inside a window: rows of a list, tabs, buttons of a toolbar, by posted messages.
// Items count from 0. Functions raise std::runtime_error when something cannot be done.
#include <string>
#include <vector>

#include "host/app/orvhost/system.h"

namespace orv::host {

/// A list's rows, a strip's tabs, a toolbar's captions; empty for a window of another kind.
std::vector<std::wstring> ItemTexts(HWND window);
/// What of them is checked, selected or pressed: "[x] One | [ ] Two" for a list with check boxes, "One | Two" for
/// another one, the selected tab, the pressed button.
std::wstring ItemsShown(HWND window);
/// By its text, or by as much of it as stands before a "*".
int FindItem(HWND window, const std::wstring& text);

void ClickItem(HWND window, int item, bool twice);
/// Clicks the check box when it does not show `checked` yet.
void CheckItem(HWND list, int item, bool checked);
/// Drags a button to the gap before row `gap` of a list (their number: behind the last one).
void DragItem(HWND toolbar, int item, HWND list, int gap);

/// `text` is `pattern`, or begins with what stands before the "*" at the pattern's end.
bool Matches(const std::wstring& text, const std::wstring& pattern);

} // namespace orv::host
