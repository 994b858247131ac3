#include "bench/win32/twin.h"

#include <algorithm>
#include <stdexcept>

#include "bench/win32/twin_kinds.h"
#include "platform/win32/module.h"

namespace orv::bench {
namespace {

RECT PlaceOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

} // namespace

Twin::Twin(HWND original, HWND parent) {
    Copy(original, parent);
}

void Twin::Copy(HWND original, HWND parent) {
    const TwinKind& kind = TwinKindOf(original);
    wchar_t type[64] = {};
    GetClassNameW(original, type, ARRAYSIZE(type));
    const RECT place = PlaceOf(original);
    const auto style = static_cast<DWORD>(GetWindowLongW(original, GWL_STYLE)) & ~kind.without;
    const auto extended = static_cast<DWORD>(GetWindowLongW(original, GWL_EXSTYLE));
    const HWND copy = CreateWindowExW(extended, kind.copyType ? kind.copyType : type, TextOf(original).c_str(), style,
                                      place.left, place.top, place.right - place.left, place.bottom - place.top, parent,
                                      nullptr, platform::win32::OwnModule(), nullptr);
    if (!copy)
        throw std::runtime_error("no copy of a window");
    SendMessageW(copy, WM_SETFONT, static_cast<WPARAM>(SendMessageW(original, WM_GETFONT, 0, 0)), FALSE);
    originals_.push_back(original);
    copies_.push_back(copy);
    kind.prepare(original, copy);
    // What stands in a window of the system's is its own affair, but for the arrows in a text box.
    if (!kind.copyType && _wcsicmp(type, L"Edit") != 0)
        return;
    // From the back to the front: each new window goes to the top.
    HWND child = GetWindow(original, GW_CHILD);
    for (child = child ? GetWindow(child, GW_HWNDLAST) : nullptr; child; child = GetWindow(child, GW_HWNDPREV))
        Copy(child, copy);
}

HWND Twin::Of(HWND original) const {
    const auto found = std::find(originals_.begin(), originals_.end(), original);
    if (found == originals_.end())
        throw std::runtime_error("a window without a copy");
    return copies_[static_cast<std::size_t>(found - originals_.begin())];
}

Twin::Shown Twin::ReadOne(std::size_t index) const {
    const HWND window = originals_[index];
    Shown shown;
    shown.window = index;
    shown.text = TextOf(window);
    shown.enabled = IsWindowEnabled(window) != FALSE;
    shown.visible = (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0;
    TwinKindOf(window).read(window, shown);
    return shown;
}

Twin::Contents Twin::Read(HWND page, const std::vector<HWND>& others) const {
    Contents contents;
    for (std::size_t i = 0; i < originals_.size(); ++i)
        if (IsChild(page, originals_[i]) || std::find(others.begin(), others.end(), originals_[i]) != others.end())
            contents.push_back(ReadOne(i));
    return contents;
}

void Twin::FillOne(const Shown& shown) const {
    const HWND window = copies_[shown.window];
    TwinKindOf(window).fill(window, shown);
    EnableWindow(window, shown.enabled);
    ShowWindow(window, shown.visible ? SW_SHOWNA : SW_HIDE);
}

void Twin::Fill(const Contents& contents) const {
    for (const Shown& shown : contents)
        FillOne(shown);
}

} // namespace orv::bench
