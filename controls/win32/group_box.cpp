#include "controls/win32/group_box.h"

#include <uxtheme.h>
#include <vssym32.h>

#include "platform/win32/owned.h"

namespace orv::controls::win32 {
namespace {

struct CloseTheme {
    void operator()(HTHEME theme) const { CloseThemeData(theme); }
};
using OwnedTheme = platform::win32::Owned<HTHEME, CloseTheme>;

RECT CaptionArea(HDC dc, const GroupBoxLook& look, const RECT& client) {
    RECT area{look.indent, 0, client.right - look.indent, look.lineHeight};
    DrawTextW(dc, look.caption.c_str(), -1, &area, DT_SINGLELINE | DT_CALCRECT);
    area.right = area.right < client.right - look.indent ? area.right : client.right - look.indent;
    return area;
}

/// Whether what is to be painted lies within the border and below the caption, as the background of a child does.
bool ClippedToInside(HDC dc, const GroupBoxLook& look, const RECT& client) {
    RECT clip{};
    if (GetClipBox(dc, &clip) == ERROR)
        return false;
    const RECT inside{look.indent / 3, look.lineHeight, client.right - look.indent / 3,
                      client.bottom - look.indent / 3};
    return clip.left >= inside.left && clip.top >= inside.top && clip.right <= inside.right &&
           clip.bottom <= inside.bottom;
}

COLORREF CaptionColour(HTHEME theme, int state) {
    COLORREF colour = GetSysColor(state == GBS_NORMAL ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
    if (theme != nullptr)
        GetThemeColor(theme, BP_GROUPBOX, state, TMT_TEXTCOLOR, &colour);
    return colour;
}

} // namespace

void PaintGroupBox(HDC dc, const GroupBoxLook& look) {
    RECT client{};
    GetClientRect(look.window, &client);
    if (ClippedToInside(dc, look, client))
        return;
    const OwnedTheme theme(IsThemeActive() ? OpenThemeData(look.window, L"BUTTON") : nullptr);
    const int state = look.enabled ? GBS_NORMAL : GBS_DISABLED;
    const platform::win32::Selected font(dc, look.font);
    RECT caption = CaptionArea(dc, look, client);
    RECT border = client;
    border.top = look.caption.empty() ? 0 : look.lineHeight / 2;

    SaveDC(dc);
    if (!look.caption.empty())
        ExcludeClipRect(dc, caption.left - look.indent / 3, caption.top, caption.right + look.indent / 3,
                        caption.bottom);
    if (theme)
        DrawThemeBackground(theme.Get(), dc, BP_GROUPBOX, state, &border, nullptr);
    else
        DrawEdge(dc, &border, EDGE_ETCHED, BF_RECT);
    RestoreDC(dc, -1);

    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, CaptionColour(theme.Get(), state));
    DrawTextW(dc, look.caption.c_str(), -1, &caption, DT_SINGLELINE | DT_END_ELLIPSIS);
}

} // namespace orv::controls::win32
