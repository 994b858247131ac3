#include "controls/win32/mb_edit_peer.h"

#include <imm.h>
#include <richedit.h>

#include "controls/win32/edit_menu.h"
#include "controls/win32/peer_host.h"

namespace orv::controls::win32 {
namespace {

constexpr UINT kReconcile = WM_APP + 1;
constexpr LPARAM kEvents = ENM_SELCHANGE | ENM_CHANGE;

WindowSpec SpecOf(const MBEdit& edit) {
    const DWORD sort = edit.Multiline() ? ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL : ES_AUTOHSCROLL;
    const DWORD border = edit.Look().borderStyle != 0 ? WS_EX_CLIENTEDGE : 0;
    return {MSFTEDIT_CLASS, sort | ES_NOOLEDRAGDROP | WS_TABSTOP, border};
}

CHARRANGE SelectionOf(const MBEdit& edit) {
    return {static_cast<LONG>(edit.SelStart()), static_cast<LONG>(edit.SelStart() + edit.SelLength())};
}

POINT PointOf(LPARAM lparam) {
    return {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
}

void FrameChanged(HWND window) {
    SetWindowPos(window, nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace

MBEditPeer::MBEditPeer(PeerHost& host, MBEdit& edit)
    : WindowPeer(host, edit, SpecOf(edit)), edit_(edit), several_(edit.Multiline()) {
    Furnish();
    WindowPeer::Mirror(Aspect::Name);
}

MBEditPeer::~MBEditPeer() {
    edit_.SetLayout(nullptr);
}

void MBEditPeer::Furnish() {
    // Bytes are typed one by one; there is nothing to compose.
    ImmAssociateContext(Window(), nullptr);
    view_.Use(Window(), several_);
    Send(EM_SETTEXTMODE, TM_RICHTEXT | TM_SINGLELEVELUNDO);
    Send(EM_SETUNDOLIMIT, 0);
    Send(EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
    lines_.Use(Window());
    edit_.SetLayout(&lines_);
    Dress();
    ShowContent();
    Send(EM_SETEVENTMASK, 0, kEvents);
}

void MBEditPeer::Dress() {
    pointer_.Choose(edit_.Look());
    platform::win32::OwnedFont chosen = FontOf(edit_.Look(), Host().Dpi());
    if (chosen || font_)
        view_.ShowFont(chosen ? chosen.Get() : Host().Font());
    font_ = std::move(chosen);
    view_.ShowColours(ColoursOf(edit_));
    FrameChanged(Window());
}

void MBEditPeer::ShowLook() {
    const WindowSpec spec = SpecOf(edit_);
    if (several_ != edit_.Multiline()) {
        several_ = edit_.Multiline();
        accessible_.reset(); // it speaks for the former window
        Replace(spec);
        font_.Reset();
        Furnish();
        WindowPeer::Mirror(Aspect::Name);
        return;
    }
    const LONG_PTR former = GetWindowLongPtrW(Window(), GWL_EXSTYLE) & ~static_cast<LONG_PTR>(WS_EX_CLIENTEDGE);
    SetWindowLongPtrW(Window(), GWL_EXSTYLE, former | static_cast<LONG_PTR>(spec.extendedStyle));
    Dress();
    RedrawWindow(Window(), nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
}

void MBEditPeer::ShowColours() {
    view_.ShowColours(ColoursOf(edit_));
    RedrawWindow(Window(), nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
}

void MBEditPeer::ShowContent() {
    view_.ShowText(edit_.Core().Text(), edit_.Core().Cells(), SelectionOf(edit_));
    ScrollToCaret();
    NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, Window(), OBJID_CLIENT, CHILDID_SELF);
}

void MBEditPeer::ShowSelection() {
    view_.ShowSelection(SelectionOf(edit_));
    ScrollToCaret();
}

void MBEditPeer::ScrollToCaret() {
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
    case Aspect::Look:
        ShowLook();
        break;
    case Aspect::Enabled:
        WindowPeer::Mirror(aspect);
        ShowColours();
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

void MBEditPeer::Command(WORD code) {
    // Whoever edits the window now may not be done with it.
    if (code == EN_CHANGE && !view_.Showing())
        PostMessageW(Window(), kReconcile, 0, 0);
}

void MBEditPeer::Reconcile() {
    const std::wstring present = view_.Present();
    if (present != view_.Shown())
        Take(view_.Shown(), present);
}

void MBEditPeer::Take(const std::wstring& before, const std::wstring& after) {
    const std::wstring former = before;
    const Life life = TakeLife();
    view_.Forget();
    edit_.TakeText(former, after);
    if (!life.expired())
        ShowContent();
}

LRESULT MBEditPeer::LetIn(UINT message, WPARAM wparam, LPARAM lparam) {
    // These forms of text only the window's class can read.
    Send(EM_SETEVENTMASK, 0, 0);
    const LRESULT result = Default(message, wparam, lparam);
    Send(EM_SETEVENTMASK, 0, kEvents);
    Reconcile();
    return result;
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
        edit_.PasteText(reinterpret_cast<const wchar_t*>(lparam));
        return true;
    default:
        return false;
    }
}

LRESULT MBEditPeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
    if (!view_.Showing() && EditMessage(message, lparam))
        return 0;
    switch (message) {
    case WM_SETTEXT:
        if (view_.Showing())
            break;
        Take(view_.Shown(), lparam != 0 ? reinterpret_cast<const wchar_t*>(lparam) : L"");
        return TRUE;
    case EM_SETTEXTEX:
    case EM_STREAMIN:
        return view_.Showing() ? Default(message, wparam, lparam) : LetIn(message, wparam, lparam);
    case kReconcile:
        Reconcile();
        return 0;
    case WM_CONTEXTMENU:
        return Menu(lparam);
    case WM_SYSCOLORCHANGE:
        ShowColours();
        return Default(message, wparam, lparam);
    case WM_NCPAINT:
        return DrawBorder(wparam, lparam);
    case WM_NCCALCSIZE:
        return PlaceText(wparam, lparam);
    case WM_SETCURSOR:
        return LOWORD(lparam) == HTCLIENT && pointer_.Show() ? TRUE : Default(message, wparam, lparam);
    case WM_GETOBJECT:
        return Accessible(wparam, lparam);
    default:
        break;
    }
    return PointerMessage(message, wparam, lparam);
}

LRESULT MBEditPeer::PointerMessage(UINT message, WPARAM wparam, LPARAM lparam) {
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
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
        return 0; // the class would scroll by it
    case WM_MOUSEWHEEL:
        return Wheel(message, wparam, lparam);
    default:
        return WindowPeer::Handle(message, wparam, lparam);
    }
}

LRESULT MBEditPeer::Press(POINT point, bool extend, bool token) {
    const Life life = TakeLife();
    const bool arrives = !edit_.Focused();
    if (GetFocus() != Window())
        ::SetFocus(Window());
    if (life.expired() || !edit_.Focused())
        return 0; // the field that had the focus keeps it
    if (arrives && edit_.AutoSelect())
        return 0; // the first click selects all, the next one places the caret
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

LRESULT MBEditPeer::Wheel(UINT message, WPARAM wparam, LPARAM lparam) {
    if (!several_ || lines_.LineCount() <= lines_.VisibleLines())
        return SendMessageW(GetParent(Window()), message, wparam, lparam);
    constexpr int kLines = 3;
    Send(EM_LINESCROLL, 0, -GET_WHEEL_DELTA_WPARAM(wparam) * kLines / WHEEL_DELTA);
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
    if (!life.expired())
        Perform(command, edit_);
    return 0;
}

LRESULT MBEditPeer::PlaceText(WPARAM wparam, LPARAM lparam) {
    const LRESULT result = Default(WM_NCCALCSIZE, wparam, lparam);
    RECT& client = *reinterpret_cast<RECT*>(lparam); // first member of the longer form as well
    const int margin = Host().Scale(2);
    client.left += margin;
    if (several_) {
        client.top += margin; // the scroll bar keeps to the right border
        return result;
    }
    client.right -= margin;
    // The window's class writes its line at the very top: the border takes the room above and below.
    const int line =
        edit_.Look().font ? MulDiv(edit_.Look().font->points, Host().Dpi() * 4, 72 * 3) : Host().LineHeight();
    const int spare = static_cast<int>(client.bottom - client.top) - line;
    if (spare > 0) {
        client.top += spare / 2;
        client.bottom -= spare - spare / 2;
    }
    return result;
}

LRESULT MBEditPeer::DrawBorder(WPARAM wparam, LPARAM lparam) {
    if (several_)
        Default(WM_NCPAINT, wparam, lparam); // for the scroll bar
    PaintBorder(Window(), edit_.Look().borderStyle != 0, view_.Colours().back);
    return 0;
}

LRESULT MBEditPeer::Accessible(WPARAM wparam, LPARAM lparam) {
    if (static_cast<DWORD>(lparam) != static_cast<DWORD>(OBJID_CLIENT))
        return Default(WM_GETOBJECT, wparam, lparam);
    if (!accessible_)
        accessible_.emplace(Window(), edit_);
    return accessible_->Answer(wparam);
}

} // namespace orv::controls::win32
