#include "controls/win32/strip_peer.h"

#include "controls/output_strip.h"
#include "controls/win32/colours.h"
#include "controls/win32/peer_host.h"

namespace orv::controls::win32 {
namespace {

constexpr UINT kLine = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX;

int TextWidth(HDC dc, const std::wstring& text) {
    SIZE size{};
    GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
    return size.cx;
}

/// Draws one segment after another, from the left.
class Line {
  public:
    Line(HDC dc, RECT area, int gap, bool enabled) : dc_(dc), area_(area), gap_(gap), enabled_(enabled) {}

    void Text(const std::wstring& text, COLORREF colour) {
        SetTextColor(dc_, enabled_ ? colour : GetSysColor(COLOR_GRAYTEXT));
        DrawTextW(dc_, text.c_str(), static_cast<int>(text.size()), &area_, kLine | DT_END_ELLIPSIS);
        area_.left += TextWidth(dc_, text);
    }
    void Chip(const std::wstring& text) {
        RECT chip = area_;
        chip.right = chip.left + TextWidth(dc_, text) + 2 * gap_;
        InflateRect(&chip, 0, -gap_ / 2);
        FillRect(dc_, &chip, GetSysColorBrush(COLOR_WINDOW));
        FrameRect(dc_, &chip, GetSysColorBrush(enabled_ ? COLOR_BTNSHADOW : COLOR_GRAYTEXT));
        SetTextColor(dc_, GetSysColor(enabled_ ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
        DrawTextW(dc_, text.c_str(), static_cast<int>(text.size()), &chip, kLine | DT_CENTER);
        area_.left = chip.right;
    }
    void Gap() { area_.left += gap_; }
    bool Full() const { return area_.left >= area_.right; }

  private:
    HDC dc_;
    RECT area_;
    int gap_;
    bool enabled_;
};

} // namespace

StripPeer::StripPeer(PeerHost& host, Widget& strip) : WindowPeer(host, strip, {L"STATIC", SS_OWNERDRAW}) {
    WindowPeer::Mirror(Aspect::Caption);
    SetWindowTextW(Window(), StripPeer::WindowText().c_str());
}

std::wstring StripPeer::WindowText() const {
    return Subject().GetKind() == Kind::OutputStrip ? static_cast<const OutputStrip&>(Subject()).Line()
                                                    : Subject().PlainCaption();
}

void StripPeer::Mirror(Aspect aspect) {
    if (aspect == Aspect::Items)
        SetWindowTextW(Window(), WindowText().c_str());
    else
        WindowPeer::Mirror(aspect);
    if (aspect == Aspect::Items || aspect == Aspect::Caption || aspect == Aspect::Enabled)
        InvalidateRect(Window(), nullptr, TRUE);
}

void StripPeer::Draw(const DRAWITEMSTRUCT& item) {
    const platform::win32::Selected font(item.hDC, Host().Font());
    SetBkMode(item.hDC, TRANSPARENT);
    if (Subject().GetKind() == Kind::OutputStrip)
        DrawOutput(item.hDC, item.rcItem);
    else
        DrawWarning(item.hDC, item.rcItem);
}

void StripPeer::DrawWarning(HDC dc, RECT area) {
    const std::wstring text = Subject().PlainCaption();
    FillRect(dc, &area, GetSysColorBrush(text.empty() ? COLOR_BTNFACE : COLOR_INFOBK));
    if (text.empty())
        return;
    FrameRect(dc, &area, GetSysColorBrush(COLOR_BTNSHADOW));
    SetTextColor(dc, GetSysColor(COLOR_INFOTEXT));
    InflateRect(&area, -Host().Scale(6), 0);
    DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &area, kLine | DT_END_ELLIPSIS);
}

void StripPeer::DrawOutput(HDC dc, RECT area) {
    using SegmentKind = OutputStrip::SegmentKind;
    FillRect(dc, &area, GetSysColorBrush(COLOR_BTNFACE));
    Line line(dc, area, Host().Scale(4), Subject().EffectivelyEnabled());
    line.Text(Subject().PlainCaption(), GetSysColor(COLOR_BTNTEXT));
    line.Gap();
    for (const OutputStrip::Segment& segment : static_cast<const OutputStrip&>(Subject()).Segments()) {
        if (line.Full())
            return;
        switch (segment.kind) {
        case SegmentKind::Plain:
            line.Text(segment.text, GetSysColor(COLOR_BTNTEXT));
            break;
        case SegmentKind::Token:
            line.Text(segment.text, TokenColour(GetSysColor(COLOR_BTNFACE)));
            break;
        case SegmentKind::Chip:
            line.Gap();
            line.Chip(segment.text);
            line.Gap();
            break;
        }
    }
}

} // namespace orv::controls::win32
