#include "controls/win32/tool_tips.h"

#include <commctrl.h>

#include "platform/win32/module.h"

namespace orv::controls::win32 {
namespace {

TTTOOLINFOW ToolOf(HWND parent, HWND tool) {
    TTTOOLINFOW info{};
    // The longer form is refused where visual styles are off.
    info.cbSize = TTTOOLINFOW_V2_SIZE;
    info.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    info.hwnd = parent;
    info.uId = reinterpret_cast<UINT_PTR>(tool);
    return info;
}

LPARAM Address(TTTOOLINFOW& info) {
    return reinterpret_cast<LPARAM>(&info);
}

} // namespace

void ToolTips::Create(HWND parent, HFONT font, int widestLine) {
    parent_ = parent;
    window_.Reset(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, parent, nullptr,
                                  platform::win32::OwnModule(), nullptr));
    SendMessageW(window_.Get(), WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    // With a limit, long tips break into lines.
    SendMessageW(window_.Get(), TTM_SETMAXTIPWIDTH, 0, widestLine);
}

void ToolTips::Set(HWND tool, const std::wstring& text) {
    if (!window_)
        return;
    TTTOOLINFOW info = ToolOf(parent_, tool);
    SendMessageW(window_.Get(), TTM_DELTOOLW, 0, Address(info));
    if (text.empty())
        return;
    std::wstring copy = text;
    info.lpszText = copy.data();
    SendMessageW(window_.Get(), TTM_ADDTOOLW, 0, Address(info));
}

std::wstring ToolTips::Text(HWND tool) const {
    if (!window_)
        return {};
    std::wstring text(4096, L'\0');
    TTTOOLINFOW info = ToolOf(parent_, tool);
    info.lpszText = text.data();
    SendMessageW(window_.Get(), TTM_GETTEXTW, text.size(), Address(info));
    return text.substr(0, text.find(L'\0'));
}

} // namespace orv::controls::win32
