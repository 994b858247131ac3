#include "controls/win32/toolbar_peer.h"

#include <utility>

#include "controls/win32/colours.h"
#include "controls/win32/peer_host.h"

namespace orv::controls::win32 {
namespace {

constexpr DWORD kStyle = TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS | CCS_NORESIZE | CCS_NOPARENTALIGN |
                         CCS_NODIVIDER | CCS_NOMOVEY | WS_TABSTOP;
constexpr int kMargin = 5;
constexpr int kTipWidth = 360;
constexpr UINT kCaption = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;

POINT PointOf(LPARAM lparam) {
    return {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
}

/// Which system colours a button is drawn in: the face, its frame and the text on it.
struct Look {
    COLORREF face;
    COLORREF frame;
    COLORREF text;
};

Look LookOf(bool enabled, bool pressed, bool lifted, bool framed) {
    const COLORREF grey = GetSysColor(COLOR_GRAYTEXT);
    if (pressed && enabled)
        return {GetSysColor(COLOR_HIGHLIGHT), GetSysColor(COLOR_HIGHLIGHT), GetSysColor(COLOR_HIGHLIGHTTEXT)};
    const COLORREF face = GetSysColor(COLOR_BTNFACE);
    if (lifted)
        return {enabled ? InactiveSelection() : face, GetSysColor(COLOR_HIGHLIGHT),
                enabled ? GetSysColor(COLOR_WINDOWTEXT) : grey};
    const COLORREF frame = framed || pressed ? GetSysColor(COLOR_BTNSHADOW) : face;
    return {face, frame, enabled ? GetSysColor(COLOR_BTNTEXT) : grey};
}

void FillFramed(HDC dc, const RECT& area, const Look& look) {
    const platform::win32::OwnedBrush face(CreateSolidBrush(look.face));
    const platform::win32::OwnedBrush frame(CreateSolidBrush(look.frame));
    FillRect(dc, &area, face.Get());
    FrameRect(dc, &area, frame.Get());
}

} // namespace

ToolbarPeer::ToolbarPeer(PeerHost& host, Toolbar& toolbar)
    : WindowPeer(host, toolbar, {TOOLBARCLASSNAMEW, kStyle}), toolbar_(toolbar) {
    Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
    Send(TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_DOUBLEBUFFER);
    const auto tips = reinterpret_cast<HWND>(Send(TB_GETTOOLTIPS));
    SendMessageW(tips, TTM_SETMAXTIPWIDTH, 0, host.Scale(kTipWidth));
    SendMessageW(tips, WM_SETFONT, reinterpret_cast<WPARAM>(host.Font()), FALSE);
    MirrorButtons();
    WindowPeer::Mirror(Aspect::Name);
}

ToolbarPeer::~ToolbarPeer() {
    Cancel();
}

void ToolbarPeer::Mirror(Aspect aspect) {
    switch (aspect) {
    case Aspect::Items:
        MirrorButtons();
        break;
    case Aspect::Check:
        MirrorStates();
        break;
    case Aspect::Selection:
        MirrorCurrent();
        break;
    case Aspect::Bounds:
        WindowPeer::Mirror(aspect);
        MirrorButtons();
        break;
    case Aspect::Enabled:
        WindowPeer::Mirror(aspect);
        InvalidateRect(Window(), nullptr, TRUE);
        break;
    default:
        WindowPeer::Mirror(aspect);
    }
}

BYTE ToolbarPeer::StateOf(int button) const {
    const Toolbar::Button& shown = toolbar_.Buttons()[static_cast<std::size_t>(button)];
    const bool lastOfRow = (button + 1) % toolbar_.Columns() == 0;
    return static_cast<BYTE>((shown.enabled ? TBSTATE_ENABLED : 0) | (shown.pressed ? TBSTATE_CHECKED : 0) |
                             (toolbar_.Held() == button ? TBSTATE_PRESSED : 0) | (lastOfRow ? TBSTATE_WRAP : 0));
}

void ToolbarPeer::MirrorButtons() {
    toolbar_.MinimumSize(Host());
    Send(WM_SETREDRAW, FALSE);
    states_.clear();
    while (Send(TB_BUTTONCOUNT) > 0)
        Send(TB_DELETEBUTTON, 0);
    const Rect cell = toolbar_.PlaceOf(0);
    // The window makes its buttons as high as pictures are, with a margin; ours stand inside the button.
    Send(TB_SETPADDING, 0, 0);
    Send(TB_SETBITMAPSIZE, 0, MAKELPARAM(1, cell.height));
    Send(TB_SETBUTTONSIZE, 0, MAKELPARAM(cell.width, cell.height));
    for (int button = 0; button < static_cast<int>(toolbar_.Buttons().size()); ++button) {
        const Toolbar::Button& shown = toolbar_.Buttons()[static_cast<std::size_t>(button)];
        TBBUTTON made{};
        made.iBitmap = I_IMAGENONE;
        made.idCommand = button + 1;
        made.fsState = StateOf(button);
        states_.push_back(made.fsState);
        made.fsStyle = static_cast<BYTE>((shown.group != 0 ? BTNS_CHECK : BTNS_BUTTON) | BTNS_NOPREFIX);
        made.iString = reinterpret_cast<INT_PTR>(shown.caption.c_str());
        SendPointer(TB_ADDBUTTONSW, 1, &made);
        TBBUTTONINFOW size{};
        size.cbSize = sizeof size;
        size.dwMask = TBIF_SIZE;
        size.cx = static_cast<WORD>(cell.width);
        SendPointer(TB_SETBUTTONINFOW, static_cast<WPARAM>(button + 1), &size);
    }
    Send(WM_SETREDRAW, TRUE);
    InvalidateRect(Window(), nullptr, TRUE);
}

void ToolbarPeer::MirrorStates() {
    for (std::size_t i = 0; i < states_.size(); ++i) {
        const int button = static_cast<int>(i);
        const BYTE state = StateOf(button);
        if (std::exchange(states_[i], state) == state)
            continue;
        Send(TB_SETSTATE, i + 1, state);
        const Rect place = toolbar_.PlaceOf(button);
        const RECT area{place.x, place.y, place.Right(), place.Bottom()};
        InvalidateRect(Window(), &area, FALSE);
    }
}

void ToolbarPeer::MirrorCurrent() {
    if (GetFocus() != Window())
        return; // seen only where the keys go
    InvalidateRect(Window(), nullptr, FALSE);
    if (toolbar_.Current() < 0)
        return;
    Send(TB_SETHOTITEM, static_cast<WPARAM>(toolbar_.Current())); // what screen readers take for the focus
    NotifyWinEvent(EVENT_OBJECT_FOCUS, Window(), OBJID_CLIENT, toolbar_.Current() + 1);
}

LRESULT ToolbarPeer::Notify(NMHDR& header) {
    switch (header.code) {
    case NM_CUSTOMDRAW:
        return Drawing(reinterpret_cast<const NMTBCUSTOMDRAW&>(header));
    case TBN_GETINFOTIPW:
        return Tip(reinterpret_cast<NMTBGETINFOTIPW&>(header));
    default:
        return 0;
    }
}

LRESULT ToolbarPeer::Drawing(const NMTBCUSTOMDRAW& draw) {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT)
        return CDRF_NOTIFYITEMDRAW;
    const int button = static_cast<int>(draw.nmcd.dwItemSpec) - 1;
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT || button < 0 ||
        button >= static_cast<int>(toolbar_.Buttons().size()))
        return CDRF_DODEFAULT;
    DrawButton(draw.nmcd.hdc, button);
    return CDRF_SKIPDEFAULT;
}

void ToolbarPeer::DrawButton(HDC dc, int button) {
    // Where a click finds it, whatever margin the window of some version adds.
    const Rect place = toolbar_.PlaceOf(button);
    RECT area{place.x, place.y, place.Right(), place.Bottom()};
    // The window asks for every button between two that have changed.
    if (!RectVisible(dc, &area))
        return;
    const Toolbar::Button& shown = toolbar_.Buttons()[static_cast<std::size_t>(button)];
    const bool enabled = shown.enabled && toolbar_.EffectivelyEnabled();
    const bool focused = GetFocus() == Window() && toolbar_.Current() == button;
    const bool lifted = focused || ((over_ == button || toolbar_.Held() == button) && enabled);
    if (!toolbar_.Palette())
        InflateRect(&area, -Host().Scale(1), -Host().Scale(1));
    const Look look = LookOf(enabled, shown.pressed || toolbar_.Held() == button, lifted, !toolbar_.Palette());
    FillFramed(dc, area, look);
    RECT inside = area;
    InflateRect(&inside, -Host().Scale(kMargin), 0);
    if (!shown.picture.empty()) {
        const int side = Host().Images().Side();
        Host().Images().Draw(dc, shown.picture, {inside.left, (area.top + area.bottom - side) / 2}, !enabled);
        inside.left += side + Host().Scale(kMargin);
    }
    const platform::win32::Selected font(dc, Host().Font());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, look.text);
    DrawTextW(dc, shown.caption.c_str(), static_cast<int>(shown.caption.size()), &inside, kCaption);
    if (!focused || (Send(WM_QUERYUISTATE) & UISF_HIDEFOCUS) != 0)
        return;
    InflateRect(&area, -Host().Scale(2), -Host().Scale(2));
    SetTextColor(dc, look.text);
    SetBkColor(dc, look.face);
    DrawFocusRect(dc, &area);
}

bool ToolbarPeer::Cut(const Toolbar::Button& button) const {
    const int picture = button.picture.empty() ? 0 : Host().Images().Side() + Host().Scale(kMargin);
    return Host().Width(button.caption) + picture + 2 * Host().Scale(kMargin + 1) > toolbar_.PlaceOf(0).width;
}

LRESULT ToolbarPeer::Tip(NMTBGETINFOTIPW& tip) const {
    const auto button = static_cast<std::size_t>(tip.iItem) - 1;
    if (button >= toolbar_.Buttons().size() || tip.cchTextMax <= 0)
        return 0;
    const Toolbar::Button& shown = toolbar_.Buttons()[button];
    std::wstring text = Cut(shown) && shown.tip != shown.caption ? shown.caption : std::wstring();
    if (!shown.tip.empty())
        text += (text.empty() ? L"" : L"\r\n") + shown.tip;
    lstrcpynW(tip.pszText, text.c_str(), tip.cchTextMax);
    return 0;
}

void ToolbarPeer::PointerOver(int button) {
    if (std::exchange(over_, button) != button)
        InvalidateRect(Window(), nullptr, FALSE);
}

LRESULT ToolbarPeer::Press(POINT at, bool twice) {
    SendMessageW(reinterpret_cast<HWND>(Send(TB_GETTOOLTIPS)), TTM_POP, 0, 0);
    const Life life = TakeLife();
    // First, so that a page that scrolls to the focus knows where the pointer is.
    toolbar_.Press({at.x, at.y}, twice);
    if (!life.expired() && GetFocus() != Window())
        ::SetFocus(Window());
    if (life.expired())
        return 0;
    if (!toolbar_.Focused()) { // the field that had the focus keeps it
        toolbar_.CancelPress();
        return 0;
    }
    captured_ = true;
    SetCapture(Window());
    return 0;
}

LRESULT ToolbarPeer::PointTo(POINT at) {
    const Life life = TakeLife();
    toolbar_.PointTo({at.x, at.y}, {GetSystemMetrics(SM_CXDRAG), GetSystemMetrics(SM_CYDRAG)});
    if (!life.expired() && toolbar_.Drag().Active())
        SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(toolbar_.Drag().OverTarget() ? IDC_ARROW : IDC_NO)));
    return 0;
}

LRESULT ToolbarPeer::Release(POINT at) {
    if (!captured_)
        return 0;
    captured_ = false; // letting go of the pointer is no loss of it now
    ReleaseCapture();
    toolbar_.Release({at.x, at.y});
    return 0;
}

void ToolbarPeer::Cancel() {
    if (!std::exchange(captured_, false))
        return;
    if (GetCapture() == Window())
        ReleaseCapture();
    toolbar_.CancelPress();
}

LRESULT ToolbarPeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: // of a press soon after another; what it means is seen when it is let go
        return Press(PointOf(lparam), message == WM_LBUTTONDBLCLK);
    case WM_MOUSEMOVE:
        if (captured_)
            return PointTo(PointOf(lparam));
        PointerOver(toolbar_.ButtonAt({PointOf(lparam).x, PointOf(lparam).y}));
        return Default(message, wparam, lparam);
    case WM_MOUSELEAVE: // asked for by the window's class, for its tips
        PointerOver(-1);
        return Default(message, wparam, lparam);
    case WM_LBUTTONUP:
        return Release(PointOf(lparam));
    case WM_RBUTTONDOWN:
        Cancel();
        return 0;
    case WM_CAPTURECHANGED:
        Cancel();
        return Default(message, wparam, lparam);
    case WM_ERASEBKGND: {
        RECT client{};
        GetClientRect(Window(), &client);
        FillRect(reinterpret_cast<HDC>(wparam), &client, GetSysColorBrush(COLOR_BTNFACE));
        return TRUE;
    }
    case WM_MOUSEWHEEL:
        return SendMessageW(GetParent(Window()), message, wparam, lparam);
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_UPDATEUISTATE:
        InvalidateRect(Window(), nullptr, FALSE);
        return WindowPeer::Handle(message, wparam, lparam);
    default:
        return WindowPeer::Handle(message, wparam, lparam);
    }
}

} // namespace orv::controls::win32
