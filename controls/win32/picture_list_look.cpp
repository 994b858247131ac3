#include "controls/win32/picture_list_look.h"

#include <algorithm>

#include "controls/win32/colours.h"
#include "controls/win32/peer_host.h"

namespace orv::controls::win32 {
namespace {

using platform::win32::OwnedBrush;
using platform::win32::Selected;

constexpr int kPad = 4;
constexpr int kGap = 6;
constexpr UINT kOneLine = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX;

struct Colours {
    COLORREF text;
    COLORREF background;
};

Colours ColoursOf(bool selected, bool focused, bool greyed, bool enabled) {
    const COLORREF plain = GetSysColor(greyed || !enabled ? COLOR_GRAYTEXT : COLOR_WINDOWTEXT);
    if (!selected)
        return {plain, PictureListLook::Background(enabled)};
    if (!focused || !enabled)
        return {plain, InactiveSelection()};
    // Grey on the colour of the selection is hardly read in any theme.
    return {GetSysColor(COLOR_HIGHLIGHTTEXT), GetSysColor(COLOR_HIGHLIGHT)};
}

void Fill(HDC dc, const RECT& area, COLORREF colour) {
    const OwnedBrush brush(CreateSolidBrush(colour));
    FillRect(dc, &area, brush.Get());
}

} // namespace

COLORREF PictureListLook::Background(bool enabled) {
    return GetSysColor(enabled ? COLOR_WINDOW : COLOR_BTNFACE);
}

int PictureListLook::NumberRight() const {
    const std::size_t digits = std::max<std::size_t>(std::to_wstring(list_.Rows().size()).size(), 2);
    return host_.Scale(kPad) + host_.Width(std::wstring(digits, L'0'));
}

int PictureListLook::CaptionLeft() const {
    return NumberRight() + host_.Scale(kGap) + host_.Images().Side() + host_.Scale(kGap);
}

int PictureListLook::CaptionRight(int width) const {
    return std::max(width - host_.Scale(kPad), CaptionLeft());
}

bool PictureListLook::IsCut(int row, int width) const {
    const std::wstring& caption = list_.Rows()[static_cast<std::size_t>(row)].caption;
    return host_.Width(caption) > CaptionRight(width) - CaptionLeft();
}

void PictureListLook::DrawRow(HDC dc, const RECT& area, int row, bool focused) const {
    const PictureList::Row& shown = list_.Rows()[static_cast<std::size_t>(row)];
    const bool enabled = list_.EffectivelyEnabled();
    const Colours colours = ColoursOf(row == list_.Selected(), focused, shown.greyed, enabled);
    Fill(dc, area, colours.background);
    const Selected font(dc, host_.Font());
    SetTextColor(dc, colours.text);
    SetBkMode(dc, TRANSPARENT);
    RECT number{area.left, area.top, area.left + NumberRight(), area.bottom};
    DrawTextW(dc, std::to_wstring(row + 1).c_str(), -1, &number, kOneLine | DT_RIGHT);
    const int side = host_.Images().Side();
    host_.Images().Draw(dc, shown.picture, {number.right + host_.Scale(kGap), (area.top + area.bottom - side) / 2},
                        shown.greyed || !enabled);
    const int width = static_cast<int>(area.right - area.left);
    RECT caption{area.left + CaptionLeft(), area.top, area.left + CaptionRight(width), area.bottom};
    DrawTextW(dc, shown.caption.c_str(), -1, &caption, kOneLine | DT_END_ELLIPSIS);
}

void PictureListLook::DrawMark(HDC dc, const RECT& view, int y) const {
    const int half = host_.Scale(1);
    const int end = host_.Scale(4);
    const int middle = std::clamp<int>(y, view.top + end, view.bottom - end);
    // The rim keeps it apart from a selected row, whatever its colour.
    const RECT rim{view.left, middle - 2 * half, view.right, middle + 2 * half};
    Fill(dc, rim, GetSysColor(COLOR_WINDOW));
    const HBRUSH brush = GetSysColorBrush(COLOR_WINDOWTEXT);
    const RECT line{view.left, middle - half, view.right, middle + half};
    FillRect(dc, &line, brush);
    for (int i = 0; i < end; ++i) {
        const RECT left{view.left + i, middle - end + i, view.left + i + 1, middle + end - i};
        const RECT right{view.right - i - 1, middle - end + i, view.right - i, middle + end - i};
        FillRect(dc, &left, brush);
        FillRect(dc, &right, brush);
    }
}

void PictureListLook::DrawRest(HDC dc, const RECT& view, bool focused) const {
    if (list_.Selected() >= 0)
        return;
    SetBkMode(dc, TRANSPARENT);
    if (list_.Rows().empty() && !list_.EmptyText().empty()) {
        const Selected font(dc, host_.Font());
        RECT text = view;
        InflateRect(&text, -host_.Scale(2 * kPad), -host_.Scale(2 * kPad));
        SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
        DrawTextW(dc, list_.EmptyText().c_str(), -1, &text, DT_WORDBREAK | DT_CENTER | DT_NOPREFIX);
    }
    if (focused) {
        RECT place = view;
        if (!list_.Rows().empty())
            place.bottom = std::min<LONG>(place.top + list_.Core().Geometry().rowHeight, view.bottom);
        SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
        DrawFocusRect(dc, &place);
    }
}

} // namespace orv::controls::win32
