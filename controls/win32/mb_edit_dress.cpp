#include "controls/win32/mb_edit_dress.h"

#include <algorithm>

#include <uxtheme.h>
#include <vssym32.h>

#include "controls/win32/colours.h"

namespace orv::controls::win32 {
namespace {

struct CloseTheme {
    void operator()(HTHEME theme) const { CloseThemeData(theme); }
};
using OwnedTheme = platform::win32::Owned<HTHEME, CloseTheme>;

bool HighContrast() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

/// With the highest bit set a colour is the number of one of the system's.
COLORREF Resolved(const std::optional<ColourValue>& colour, COLORREF otherwise) {
    constexpr ColourValue kOfSystem = 0x80000000;
    if (!colour)
        return otherwise;
    return (*colour & kOfSystem) != 0 ? GetSysColor(static_cast<int>(*colour & 0xFF)) : *colour & 0xFFFFFF;
}

LPCWSTR SystemPointer(int shape) {
    switch (static_cast<PointerShape>(shape)) {
    case PointerShape::Arrow:
        return IDC_ARROW;
    case PointerShape::Cross:
        return IDC_CROSS;
    case PointerShape::Beam:
        return IDC_IBEAM;
    case PointerShape::SizeDiagonal:
        return IDC_SIZENESW;
    case PointerShape::SizeVertical:
        return IDC_SIZENS;
    case PointerShape::SizeOther:
        return IDC_SIZENWSE;
    case PointerShape::SizeHorizontal:
        return IDC_SIZEWE;
    case PointerShape::UpArrow:
        return IDC_UPARROW;
    case PointerShape::Wait:
        return IDC_WAIT;
    case PointerShape::NoDrop:
        return IDC_NO;
    case PointerShape::ArrowWait:
        return IDC_APPSTARTING;
    case PointerShape::ArrowHelp:
        return IDC_HELP;
    case PointerShape::SizeAll:
        return IDC_SIZEALL;
    case PointerShape::Usual:
    case PointerShape::Icon:
        break;
    }
    return nullptr;
}

} // namespace

ViewColours ColoursOf(const MBEdit& edit) {
    const bool enabled = edit.EffectivelyEnabled();
    const MBEditLook look = HighContrast() ? MBEditLook{} : edit.Look();
    const COLORREF back = Resolved(look.backColor, GetSysColor(enabled ? COLOR_WINDOW : COLOR_BTNFACE));
    if (!enabled)
        return {back, GetSysColor(COLOR_GRAYTEXT), GetSysColor(COLOR_GRAYTEXT)};
    return {back, Resolved(look.textColor, GetSysColor(COLOR_WINDOWTEXT)),
            Resolved(look.specialColor, TokenColour(back))};
}

platform::win32::OwnedFont FontOf(const MBEditLook& look, int dpi) {
    if (!look.font)
        return {};
    LOGFONTW font{};
    font.lfHeight = -MulDiv(look.font->points, dpi, 72);
    font.lfWeight = look.font->bold ? FW_BOLD : FW_NORMAL;
    font.lfItalic = look.font->italic ? TRUE : FALSE;
    font.lfCharSet = DEFAULT_CHARSET;
    const std::size_t length = std::min<std::size_t>(look.font->face.size(), LF_FACESIZE - 1);
    std::copy_n(look.font->face.begin(), length, font.lfFaceName);
    return platform::win32::OwnedFont(CreateFontIndirectW(&font));
}

void PaintBorder(HWND window, bool border, COLORREF inside) {
    RECT area{};
    GetWindowRect(window, &area);
    RECT client{};
    GetClientRect(window, &client);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
    OffsetRect(&client, -area.left, -area.top);
    OffsetRect(&area, -area.left, -area.top);
    const bool enabled = IsWindowEnabled(window) != FALSE;
    const OwnedTheme theme(border && IsThemeActive() ? OpenThemeData(window, L"EDIT") : nullptr);
    const HDC dc = GetWindowDC(window);
    // A scroll bar stands beside the client area.
    const int bar = (GetWindowLongPtrW(window, GWL_STYLE) & WS_VSCROLL) != 0 ? GetSystemMetrics(SM_CXVSCROLL) : 0;
    ExcludeClipRect(dc, client.left, client.top, client.right + bar, client.bottom);
    if (theme)
        DrawThemeBackground(theme.Get(), dc, EP_EDITTEXT, enabled ? ETS_NORMAL : ETS_DISABLED, &area, nullptr);
    else if (border)
        DrawEdge(dc, &area, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    // The theme's inside may be of another shade than the text's background.
    if (theme)
        InflateRect(&area, -GetSystemMetrics(SM_CXBORDER), -GetSystemMetrics(SM_CYBORDER));
    const platform::win32::OwnedBrush brush(CreateSolidBrush(inside));
    FillRect(dc, &area, brush.Get());
    ReleaseDC(window, dc);
}

void PointerOver::Choose(const MBEditLook& look) {
    const LPCWSTR system = SystemPointer(look.mousePointer);
    shown_ = system != nullptr ? LoadCursorW(nullptr, system) : nullptr;
    own_.Reset();
    if (look.mousePointer == static_cast<int>(PointerShape::Icon) && !look.mouseIcon.empty())
        own_.Reset(LoadCursorFromFileW(look.mouseIcon.c_str()));
    if (own_)
        shown_ = own_.Get();
}

bool PointerOver::Show() const {
    if (shown_ != nullptr)
        SetCursor(shown_);
    return shown_ != nullptr;
}

} // namespace orv::controls::win32
