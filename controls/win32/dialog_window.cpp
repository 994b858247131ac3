#include "controls/win32/dialog_window.h"

#include <algorithm>

#include "platform/win32/made.h"
#include "platform/win32/module.h"
#include "platform/win32/procedure_scope.h"
#include "platform/win32/window_class.h"
#include "text/restoring.h"

namespace orv::controls::win32 {
namespace {

constexpr wchar_t kClass[] = L"OrvOutFormat.Dialog";
constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD kExtendedStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

void RegisterWindowClass(WNDPROC procedure) {
    WNDCLASSEXW type{};
    type.lpfnWndProc = procedure;
    type.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    type.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    type.lpszClassName = kClass;
    platform::win32::RequireWindowClass(type);
}

RECT WorkArea(HWND window) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor.rcWork;
}

/// The start of `length` in the middle of `from` and `to`, but inside `least` and `most`.
LONG Centred(LONG from, LONG to, LONG length, LONG least, LONG most) {
    return std::max(std::min(from + (to - from - length) / 2, most - length), least);
}

void GiveFocusBack(HWND former) {
    // Whoever works in another window by now keeps working there.
    if (former != nullptr && GetActiveWindow() == GetAncestor(former, GA_ROOT) && IsWindowVisible(former) &&
        IsWindowEnabled(former) && GetFocus() != former)
        ::SetFocus(former);
}

} // namespace

DialogWindow::DialogWindow(Dialog& dialog, const platform::win32::ActivationContext& context,
                           const platform::win32::ModalHooks& hooks, platform::win32::SystemPump& pump)
    : dialog_(dialog), context_(context), hooks_(hooks), pump_(pump),
      peers_(dialog.Form(), context,
             {.activate = {},
              .layout = [this] { Fit(); },
              .passOn = {},
              .route = [this](const KeyEvent& key) { return dialog_.RouteKey(key); }}) {}

DialogWindow::~DialogWindow() {
    Abandon();
}

void DialogWindow::Run() {
    const HWND focus = GetFocus();
    if (RunModal() != platform::Wait::Satisfied)
        throw platform::WaitAbandoned{};
    GiveFocusBack(focus);
}

platform::Wait DialogWindow::RunModal() {
    if (pump_.Closing())
        return platform::Wait::Closing;
    const platform::win32::ModalScope modal(hooks_);
    const Restoring gone([this] { Abandon(); });
    owner_ = platform::win32::OwnerOf(hooks_);
    dialog_.Open();
    Create();
    const auto keys = pump_.AddPreTranslate([this](MSG& message) { return peers_.TranslateKey(message); });
    disabledOwner_ = owner_ != nullptr && !EnableWindow(owner_, FALSE);
    ShowWindow(window_, SW_SHOW);
    const platform::Wait wait = pump_.PumpUntil([this] { return dialog_.Closed() || window_ == nullptr; });
    dialog_.Close(); // also when the window went with its owner
    return wait;
}

void DialogWindow::Abandon() {
    // Before the window goes, or the system would hand the keyboard to another application.
    if (std::exchange(disabledOwner_, false) && IsWindow(owner_))
        EnableWindow(owner_, TRUE);
    if (window_ != nullptr)
        DestroyWindow(window_);
}

void DialogWindow::Create() {
    RegisterWindowClass(&DialogWindow::Procedure);
    {
        const platform::win32::ActivationScope active(context_);
        platform::win32::Made(CreateWindowExW(kExtendedStyle, kClass, dialog_.Title().c_str(),
                                              kStyle | (dialog_.Resizable() ? WS_THICKFRAME : 0), 0, 0, 0, 0, owner_,
                                              nullptr, platform::win32::OwnModule(), this),
                              kClass);
    }
    peers_.Attach(window_);
}

SIZE DialogWindow::FrameFor(Size client) const {
    RECT frame{0, 0, client.width, client.height};
    AdjustWindowRectExForDpi(&frame, static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE)), FALSE,
                             static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_EXSTYLE)),
                             static_cast<UINT>(peers_.Dpi()));
    return {frame.right - frame.left, frame.bottom - frame.top};
}

void DialogWindow::Fit() {
    least_ = FrameFor(dialog_.MinimumSize(peers_));
    RECT now{};
    GetWindowRect(window_, &now);
    if (!std::exchange(placed_, true))
        PlaceOverOwner(FrameFor(dialog_.ComfortableSize(peers_)));
    else if (now.right - now.left < least_.cx || now.bottom - now.top < least_.cy)
        PlaceOverOwner({std::max(now.right - now.left, least_.cx), std::max(now.bottom - now.top, least_.cy)});
    Layout();
}

void DialogWindow::Layout() {
    RECT client{};
    if (GetClientRect(window_, &client))
        dialog_.Layout({client.right, client.bottom}, peers_);
}

void DialogWindow::PlaceOverOwner(SIZE size) const {
    const RECT work = WorkArea(owner_ != nullptr ? owner_ : window_);
    RECT over = work;
    if (owner_ != nullptr && !IsIconic(owner_))
        GetWindowRect(owner_, &over);
    const int width = std::min(size.cx, work.right - work.left);
    const int height = std::min(size.cy, work.bottom - work.top);
    SetWindowPos(window_, nullptr, Centred(over.left, over.right, width, work.left, work.right),
                 Centred(over.top, over.bottom, height, work.top, work.bottom), width, height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void DialogWindow::Limit(MINMAXINFO& limits) const {
    limits.ptMinTrackSize.x = std::max(limits.ptMinTrackSize.x, least_.cx);
    limits.ptMinTrackSize.y = std::max(limits.ptMinTrackSize.y, least_.cy);
}

LRESULT CALLBACK DialogWindow::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const platform::win32::ProcedureScope running;
    if (message == WM_NCCREATE) {
        auto* self = static_cast<DialogWindow*>(reinterpret_cast<CREATESTRUCTW*>(lparam)->lpCreateParams);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        self->window_ = window;
    }
    auto* self = reinterpret_cast<DialogWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr)
        return DefWindowProcW(window, message, wparam, lparam);
    try {
        return self->Handle(window, message, wparam, lparam);
    } catch (...) {
        self->peers_.ReportFailure();
        return 0;
    }
}

LRESULT DialogWindow::Handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (const auto done = peers_.HandleControlMessage(message, wparam, lparam))
        return *done;
    switch (message) {
    case WM_SIZE:
        if (peers_.Attached() && wparam != SIZE_MINIMIZED)
            Layout();
        return 0;
    case WM_GETMINMAXINFO:
        Limit(*reinterpret_cast<MINMAXINFO*>(lparam));
        return 0;
    case WM_DPICHANGED: {
        const RECT& place = *reinterpret_cast<const RECT*>(lparam);
        SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        peers_.Remake();
        return 0;
    }
    case WM_CLOSE:
        dialog_.Dismiss();
        return 0;
    case WM_DESTROY:
        peers_.Detach();
        return 0;
    case WM_NCDESTROY:
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        window_ = nullptr;
        return DefWindowProcW(window, message, wparam, lparam);
    default:
        return DefWindowProcW(window, message, wparam, lparam);
    }
}

} // namespace orv::controls::win32
