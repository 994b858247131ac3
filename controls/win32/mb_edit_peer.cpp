#include "controls/win32/mb_edit_peer.h"

#include <imm.h>
#include <richedit.h>
#include <uxtheme.h>
#include <vssym32.h>

#include "controls/win32/edit_menu.h"
#include "controls/win32/peer_host.h"

namespace orv::controls::win32 {
namespace {

constexpr DWORD kStyle = ES_AUTOHSCROLL | ES_NOOLEDRAGDROP | WS_TABSTOP;

struct CloseTheme {
    void operator()(HTHEME theme) const { CloseThemeData(theme); }
};
using OwnedTheme = platform::win32::Owned<HTHEME, CloseTheme>;

POINT PointOf(LPARAM lparam) {
    return {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
}

} // namespace

MBEditPeer::MBEditPeer(PeerHost& host, MBEdit& edit)
    : WindowPeer(host, edit, {MSFTEDIT_CLASS, kStyle, WS_EX_CLIENTEDGE}), edit_(edit), view_(Window()) {
    // Bytes are typed one by one; there is nothing to compose.
    ImmAssociateContext(Window(), nullptr);
    Send(EM_SETTEXTMODE, TM_RICHTEXT | TM_SINGLELEVELUNDO);
    Send(EM_SETUNDOLIMIT, 0);
    Send(EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
    SetWindowTextW(Window(), L"");
    SetWindowPos(Window(), nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    view_.ShowColours(edit.EffectivelyEnabled());
    ShowContent();
    Send(EM_SETEVENTMASK, 0, ENM_SELCHANGE);
    WindowPeer::Mirror(Aspect::Name);
}

void MBEditPeer::ShowContent() {
    view_.ShowText(edit_.Core().Text(), edit_.Core().Cells());
    ShowSelection();
}

void MBEditPeer::ShowSelection() {
    view_.ShowSelection(edit_.Core().SelStart(), edit_.Core().SelLength());
    if (GetFocus() == Window())
        Send(EM_SCROLLCARET);
}

void MBEditPeer::Mirror(Aspect aspect) {
    switch (aspect) {
    case Aspect::Content:
        ShowContent();
        break;
    case Aspect::Selection:
        ShowSelection();
        break;
    case Aspect::Enabled:
        WindowPeer::Mirror(aspect);
        view_.ShowColours(edit_.EffectivelyEnabled());
        RedrawWindow(Window(), nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
        break;
    case Aspect::Caption:
        WindowPeer::Mirror(Aspect::Name); // the window's text is the content
        break;
    default:
        WindowPeer::Mirror(aspect);
    }
}

LRESULT MBEditPeer::Notify(NMHDR& header) {
    if (header.code != EN_SELCHANGE || view_.Showing())
        return 0;
    // A program moved the selection (a screen reader, say): the core widens it to whole tokens.
    const CHARRANGE range = view_.Selection();
    const Life life = TakeLife();
    edit_.PointAt(static_cast<std::size_t>(range.cpMin), false);
    if (!life.expired() && range.cpMax > range.cpMin)
        edit_.PointAt(static_cast<std::size_t>(range.cpMax), true);
    if (!life.expired())
        ShowSelection();
    return 0;
}

bool MBEditPeer::EditMessage(UINT message, LPARAM lparam) {
    switch (message) {
    case WM_CUT:
        edit_.Cut();
        return true;
    case WM_COPY:
        edit_.Copy();
        return true;
    case WM_PASTE:
    case EM_PASTESPECIAL:
        edit_.Paste();
        return true;
    case WM_CLEAR:
        edit_.HandleKey({Key::Delete});
        return true;
    case WM_UNDO:
    case EM_UNDO:
        edit_.Undo();
        return true;
    case EM_REDO:
        edit_.Redo();
        return true;
    case EM_REPLACESEL:
        edit_.TypeText(reinterpret_cast<const wchar_t*>(lparam));
        return true;
    case WM_SETTEXT:
    case EM_SETTEXTEX:
    case EM_STREAMIN:
        return true; // text without cells: there is no telling what bytes it stands for
    default:
        return false;
    }
}

LRESULT MBEditPeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
    if (!view_.Showing() && EditMessage(message, lparam))
        return 0;
    switch (message) {
    case WM_LBUTTONDOWN:
        return Press(PointOf(lparam), (wparam & MK_SHIFT) != 0, false);
    case WM_LBUTTONDBLCLK:
        return Press(PointOf(lparam), false, true);
    case WM_MOUSEMOVE:
        return GetCapture() == Window() ? Drag(PointOf(lparam)) : Default(message, wparam, lparam);
    case WM_LBUTTONUP:
        if (GetCapture() == Window())
            ReleaseCapture();
        return 0;
    case WM_RBUTTONDOWN:
        ::SetFocus(Window());
        return 0;
    case WM_RBUTTONUP:
        return DefWindowProcW(Window(), message, wparam, lparam); // which asks for the context menu
    case WM_CONTEXTMENU:
        return Menu(lparam);
    case WM_MOUSEWHEEL:
        return SendMessageW(GetParent(Window()), message, wparam, lparam);
    case WM_SYSCOLORCHANGE:
        view_.ShowColours(edit_.EffectivelyEnabled());
        RedrawWindow(Window(), nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
        return Default(message, wparam, lparam);
    case WM_NCPAINT:
        return PaintBorder();
    case WM_NCCALCSIZE:
        return PlaceText(wparam, lparam);
    default:
        return WindowPeer::Handle(message, wparam, lparam);
    }
}

LRESULT MBEditPeer::Press(POINT point, bool extend, bool token) {
    const Life life = TakeLife();
    if (GetFocus() != Window())
        ::SetFocus(Window());
    if (life.expired() || !edit_.Focused())
        return 0; // the field that had the focus keeps it
    const std::size_t position = view_.PositionAt(point);
    if (token) {
        edit_.PointAtToken(position);
        return 0;
    }
    SetCapture(Window());
    edit_.PointAt(position, extend);
    return 0;
}

LRESULT MBEditPeer::Drag(POINT point) {
    edit_.PointAt(view_.PositionAt(point), true);
    return 0;
}

LRESULT MBEditPeer::Menu(LPARAM lparam) {
    POINT where = PointOf(lparam);
    if (lparam == -1) { // by keyboard
        RECT window{};
        GetWindowRect(Window(), &window);
        where = {window.left + Host().Scale(8), window.bottom};
    }
    const Life life = TakeLife();
    const EditCommand command = RunEditMenu(Window(), where, edit_);
    if (life.expired())
        return 0;
    Perform(command, edit_);
    return 0;
}

LRESULT MBEditPeer::PlaceText(WPARAM wparam, LPARAM lparam) {
    const LRESULT result = Default(WM_NCCALCSIZE, wparam, lparam);
    // The window's class writes its line at the very top: the border takes the room above and below.
    RECT& client = *reinterpret_cast<RECT*>(lparam); // first member of the longer form as well
    const int spare = static_cast<int>(client.bottom - client.top) - Host().LineHeight();
    if (spare > 0) {
        client.top += spare / 2;
        client.bottom -= spare - spare / 2;
    }
    InflateRect(&client, -Host().Scale(2), 0);
    return result;
}

LRESULT MBEditPeer::PaintBorder() {
    RECT area{};
    GetWindowRect(Window(), &area);
    RECT client{};
    GetClientRect(Window(), &client);
    MapWindowPoints(Window(), nullptr, reinterpret_cast<POINT*>(&client), 2);
    OffsetRect(&client, -area.left, -area.top);
    OffsetRect(&area, -area.left, -area.top);
    const bool enabled = IsWindowEnabled(Window()) != FALSE;
    const OwnedTheme theme(IsThemeActive() ? OpenThemeData(Window(), L"EDIT") : nullptr);
    const HDC dc = GetWindowDC(Window());
    ExcludeClipRect(dc, client.left, client.top, client.right, client.bottom);
    if (theme)
        DrawThemeBackground(theme.Get(), dc, EP_EDITTEXT, enabled ? ETS_NORMAL : ETS_DISABLED, &area, nullptr);
    else
        DrawEdge(dc, &area, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    // The theme's inside may be of another shade than the text's background.
    if (theme)
        InflateRect(&area, -GetSystemMetrics(SM_CXBORDER), -GetSystemMetrics(SM_CYBORDER));
    FillRect(dc, &area, GetSysColorBrush(enabled ? COLOR_WINDOW : COLOR_BTNFACE));
    ReleaseDC(Window(), dc);
    return 0;
}

} // namespace orv::controls::win32
