#include "addon/com/control_window.h"

#include "addon/com/failure.h"
#include "platform/win32/module.h"
#include "platform/win32/procedure_scope.h"
#include "platform/win32/window_class.h"
#include "text/restoring.h"

namespace orv::addon::com {
namespace {

constexpr wchar_t kClass[] = L"OrvOutFormat.AddOnControl";

void RegisterWindowClass(WNDPROC procedure) {
    WNDCLASSEXW description{};
    description.style = CS_DBLCLKS;
    description.lpfnWndProc = procedure;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = kClass;
    platform::win32::RequireWindowClass(description);
}

} // namespace

ControlWindow::ControlWindow(editor::Editor& editor, platform::win32::SystemServices& services, Hooks hooks)
    : editor_(editor), services_(services), hooks_(std::move(hooks)), clipboard_([this] { return window_; }),
      peers_(editor.Form(), services.Context(),
             {hooks_.activate, [this] { Layout(); },
              [this](MSG& message, bool) { return hooks_.passOn && hooks_.passOn(message); }}) {
    editor_.Form().SetClipboard(&clipboard_);
    editor_.windowOf = [this](const controls::Widget& widget) {
        return reinterpret_cast<device::WindowHandle>(peers_.WindowOf(widget.Name(), widget.Index()));
    };
    editor_.bottomPanelWindow = [this] {
        return reinterpret_cast<device::WindowHandle>(peers_.WindowOf(L"picBottom"));
    };
    editor_.runDialog = [this](controls::Dialog& dialog) { RunDialog(dialog); };
}

ControlWindow::~ControlWindow() {
    Destroy();
    editor_.runDialog = nullptr;
    editor_.bottomPanelWindow = nullptr;
    editor_.windowOf = nullptr;
    editor_.Form().SetClipboard(nullptr);
}

void ControlWindow::Create(HWND parent, const RECT& position) {
    RegisterWindowClass(&ControlWindow::Procedure);
    {
        const platform::win32::ActivationScope active(services_.Context());
        CreateWindowExW(WS_EX_CONTROLPARENT, kClass, L"", WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, position.left,
                        position.top, position.right - position.left, position.bottom - position.top, parent, nullptr,
                        platform::win32::OwnModule(), this);
    }
    if (!window_)
        throw SystemError(HRESULT_FROM_WIN32(GetLastError()));
    peers_.Attach(window_);
}

void ControlWindow::Destroy() {
    // Dialogs belong to the application's window and would stay.
    for (auto dialog = dialogs_.rbegin(); dialog != dialogs_.rend(); ++dialog)
        (*dialog)->Abandon();
    if (window_)
        DestroyWindow(window_);
}

void ControlWindow::Place(const RECT& position, const RECT* clip) {
    if (!window_)
        return;
    RECT shown = position;
    // An empty clip is what containers give that have not thought of one.
    if (clip && !IsRectEmpty(clip) && IntersectRect(&shown, &position, clip) && !EqualRect(&shown, &position)) {
        OffsetRect(&shown, -position.left, -position.top);
        SetWindowRgn(window_, CreateRectRgnIndirect(&shown), TRUE);
    } else {
        SetWindowRgn(window_, nullptr, TRUE);
    }
    SetWindowPos(window_, nullptr, position.left, position.top, position.right - position.left,
                 position.bottom - position.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void ControlWindow::Show(bool visible) {
    if (window_ && Shown() != visible)
        ShowWindow(window_, visible ? SW_SHOWNA : SW_HIDE);
}

bool ControlWindow::Shown() const {
    return window_ && (GetWindowLongPtrW(window_, GWL_STYLE) & WS_VISIBLE) != 0;
}

void ControlWindow::Enable(bool enabled) {
    if (!window_)
        return;
    if (!enabled)
        focusLost_ = focusLost_ || HasFocus();
    EnableWindow(window_, enabled);
    // A disabled window loses the focus; whoever was typing goes on where they were.
    if (enabled && std::exchange(focusLost_, false) && GetFocus() == nullptr)
        TakeFocus();
}

bool ControlWindow::HasFocus() const {
    const HWND focus = GetFocus();
    return window_ && focus && (focus == window_ || IsChild(window_, focus));
}

void ControlWindow::TakeFocus() {
    if (window_)
        peers_.TakeFocus();
}

HWND ControlWindow::BoxOwner() const {
    for (auto dialog = dialogs_.rbegin(); dialog != dialogs_.rend(); ++dialog)
        if (const HWND window = (*dialog)->Handle())
            return window;
    return window_ ? GetAncestor(window_, GA_ROOT) : nullptr;
}

void ControlWindow::RunDialog(controls::Dialog& dialog) {
    const bool hadFocus = HasFocus();
    {
        controls::win32::DialogWindow window(dialog, services_.Context(), services_.Hooks(), services_.Pump());
        dialogs_.push_back(&window);
        const Restoring closed([this] { dialogs_.pop_back(); });
        window.Run();
    }
    // The field it came from may be disabled or made anew meanwhile; the form knows where the keyboard belongs.
    if (hadFocus && !HasFocus() && GetActiveWindow() == BoxOwner())
        TakeFocus();
}

void ControlWindow::Layout() {
    RECT client{};
    if (window_ && GetClientRect(window_, &client))
        editor_.Resize({client.right, client.bottom}, peers_);
}

LRESULT CALLBACK ControlWindow::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const platform::win32::ProcedureScope running;
    if (message == WM_NCCREATE) {
        auto* self = static_cast<ControlWindow*>(reinterpret_cast<CREATESTRUCTW*>(lparam)->lpCreateParams);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        self->window_ = window;
    }
    auto* self = reinterpret_cast<ControlWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self)
        return DefWindowProcW(window, message, wparam, lparam);
    try {
        return self->Handle(window, message, wparam, lparam);
    } catch (...) {
        if (self->hooks_.failed)
            self->hooks_.failed();
        return 0;
    }
}

LRESULT ControlWindow::Handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (const auto done = peers_.HandleControlMessage(message, wparam, lparam))
        return *done;
    switch (message) {
    case WM_SIZE:
        if (peers_.Attached())
            Layout();
        return 0;
    case WM_MOUSEACTIVATE:
        if (hooks_.activate)
            hooks_.activate();
        break;
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT:
        Paint(window);
        return 0;
    case WM_DESTROY:
        // Also when the container destroys its own window under an active control.
        peers_.Detach();
        return 0;
    case WM_NCDESTROY:
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        window_ = nullptr;
        break;
    default:
        break;
    }
    return DefWindowProcW(window, message, wparam, lparam);
}

void ControlWindow::Paint(HWND window) const {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(window, &paint);
    FillRect(dc, &paint.rcPaint, GetSysColorBrush(COLOR_BTNFACE));
    EndPaint(window, &paint);
}

} // namespace orv::addon::com
