#include "controls/win32/window_peer.h"

#include "controls/win32/peer_host.h"
#include "platform/win32/made.h"
#include "platform/win32/module.h"
#include "platform/win32/procedure_scope.h"

namespace orv::controls::win32 {
namespace {

WNDPROC ProcedureOfClass(HWND window) {
    return reinterpret_cast<WNDPROC>(GetClassLongPtrW(window, GCLP_WNDPROC));
}

HWND ParentWindow(const PeerHost& host, const Widget& widget) {
    if (widget.Parent() == nullptr)
        return host.Parent();
    return static_cast<WindowPeer*>(widget.Parent()->GetPeer())->Window();
}

RECT PlaceIn(HWND parent, HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

} // namespace

WindowPeer::WindowPeer(PeerHost& host, Widget& widget, const WindowSpec& spec) : host_(host), widget_(widget) {
    Open(spec);
}

WindowPeer::~WindowPeer() {
    Close(window_);
}

void WindowPeer::Open(const WindowSpec& spec) {
    const platform::win32::ActivationScope active(host_.Context());
    const Rect place = widget_.WindowBounds();
    DWORD style = WS_CHILD | WS_CLIPSIBLINGS | spec.style;
    if (widget_.Visible())
        style |= WS_VISIBLE;
    if (!widget_.EffectivelyEnabled())
        style |= WS_DISABLED;
    window_ =
        platform::win32::Made(CreateWindowExW(spec.extendedStyle, spec.type, widget_.Caption().c_str(), style, place.x,
                                              place.y, place.width, place.height, ParentWindow(host_, widget_),
                                              reinterpret_cast<HMENU>(static_cast<UINT_PTR>(host_.IdOf(widget_))),
                                              platform::win32::OwnModule(), nullptr),
                              spec.type);
    // Not by the library's own way to stack procedures: it looks up a property of the window for each message twice.
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    inner_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&WindowPeer::Procedure)));
    SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(host_.Font()), FALSE);
    host_.Register(window_, *this);
    host_.Tips().Set(window_, widget_.ToolTip());
}

void WindowPeer::Close(HWND window) {
    // Whoever has put a procedure of theirs in front keeps it; what comes through goes to the window's class.
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    host_.Tips().Set(window, {});
    host_.Names().Clear(window);
    host_.Unregister(window);
    DestroyWindow(window);
}

void WindowPeer::Replace(const WindowSpec& spec) {
    const HWND former = window_;
    Open(spec);
    SetWindowPos(window_, former, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    // Before the former one goes, or the system would look for another window to focus.
    if (GetFocus() == former)
        ::SetFocus(window_);
    Close(former);
}

void WindowPeer::Move(const Rect& place) {
    const HWND parent = GetParent(window_);
    const RECT former = PlaceIn(parent, window_);
    SetWindowPos(window_, nullptr, place.x, place.y, place.width, place.height,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
    if (!widget_.Visible() || (former.left == place.x && former.top == place.y))
        return;
    // A combo box that moves twice between two paintings takes bits with it that were never painted, and leaves some
    // where it was in between.
    constexpr UINT kAnew = RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN;
    RedrawWindow(parent, &former, nullptr, kAnew);
    RedrawWindow(window_, nullptr, nullptr, kAnew | RDW_FRAME);
}

void WindowPeer::Mirror(Aspect aspect) {
    switch (aspect) {
    case Aspect::Bounds:
        Move(Placement());
        break;
    case Aspect::Visible:
        ShowWindow(window_, widget_.Visible() ? SW_SHOWNA : SW_HIDE);
        break;
    case Aspect::Enabled:
        EnableWindow(window_, widget_.EffectivelyEnabled());
        break;
    case Aspect::Caption:
        SetWindowTextW(window_, WindowText().c_str());
        MirrorName();
        break;
    case Aspect::ToolTip:
        host_.Tips().Set(window_, widget_.ToolTip());
        break;
    case Aspect::Name:
        MirrorName();
        break;
    default:
        break;
    }
}

void WindowPeer::MirrorName() {
    const std::wstring name = widget_.AccessibleName();
    if (!NamedByText() || name != widget_.PlainCaption())
        host_.Names().Set(window_, name);
}

void WindowPeer::TakeFocus() {
    if (GetFocus() != window_)
        ::SetFocus(window_);
}

HBRUSH WindowPeer::Colour(HDC dc) {
    SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));
    SetBkColor(dc, GetSysColor(COLOR_BTNFACE));
    return GetSysColorBrush(COLOR_BTNFACE);
}

LRESULT WindowPeer::Default(UINT message, WPARAM wparam, LPARAM lparam) {
    return CallWindowProcW(inner_, window_, message, wparam, lparam);
}

LRESULT WindowPeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_GETDLGCODE:
        // All keys come here also in a container that treats the control as a dialog.
        return widget_.TabStop() ? DLGC_WANTALLKEYS | DLGC_WANTARROWS | DLGC_WANTCHARS
                                 : Default(message, wparam, lparam);
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_CHAR:
    case WM_SYSCHAR:
        return HandleKeyMessage(message, wparam, lparam);
    case WM_KEYUP:
    case WM_SYSKEYUP:
        return UsesNativeKeys() ? Default(message, wparam, lparam) : DefWindowProcW(window_, message, wparam, lparam);
    case WM_SETFOCUS:
        return FocusGained(wparam, lparam);
    case WM_KILLFOCUS:
        return FocusLost(wparam, lparam);
    default:
        return Default(message, wparam, lparam);
    }
}

LRESULT WindowPeer::HandleKeyMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    const Life life = TakeLife();
    const HWND window = window_;
    const PeerHost::KeyVerdict verdict = host_.KeyArrived(window, message, wparam, lparam);
    if (verdict == PeerHost::KeyVerdict::Done || life.expired())
        return 0;
    if (verdict == PeerHost::KeyVerdict::Window)
        return UsesNativeKeys() ? TakeKey(message, wparam, lparam) : 0;
    // Nobody's: the system may still know it (Alt+F4, F1), the window's class must not, for the widget decides.
    return DefWindowProcW(window, message, wparam, lparam);
}

LRESULT WindowPeer::FocusGained(WPARAM wparam, LPARAM lparam) {
    const Life life = TakeLife();
    const LRESULT result = Default(WM_SETFOCUS, wparam, lparam);
    if (!life.expired())
        host_.FocusGained(widget_);
    return result;
}

LRESULT WindowPeer::FocusLost(WPARAM wparam, LPARAM lparam) {
    PeerHost& host = host_;
    const LRESULT result = Default(WM_KILLFOCUS, wparam, lparam);
    host.FocusWentTo(reinterpret_cast<HWND>(wparam));
    return result;
}

LRESULT CALLBACK WindowPeer::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const platform::win32::ProcedureScope running;
    auto* peer = reinterpret_cast<WindowPeer*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (peer == nullptr)
        return CallWindowProcW(ProcedureOfClass(window), window, message, wparam, lparam);
    PeerHost& host = peer->host_;
    try {
        return peer->Handle(message, wparam, lparam);
    } catch (...) {
        host.ReportFailure();
    }
    return DefWindowProcW(window, message, wparam, lparam);
}

} // namespace orv::controls::win32
