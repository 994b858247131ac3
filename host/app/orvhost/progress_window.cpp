#include "host/app/orvhost/progress_window.h"

#include <algorithm>

namespace orv::host {
namespace {

constexpr wchar_t kClass[] = L"OrvHost.Progress";
constexpr int kWidth = 380;
constexpr int kHeight = 84;
constexpr int kSteps = 10000; // hundredths of a percent
constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_CLIPCHILDREN;

HWND CreateLabel(HWND parent, const wchar_t* type, DWORD style) {
    return CreateWindowExW(0, type, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent, nullptr, Program(),
                           nullptr);
}

void SetTextIfOther(HWND window, const std::wstring& text) {
    if (WindowText(window) != text)
        SetWindowTextW(window, text.c_str());
}

} // namespace

ProgressWindow::~ProgressWindow() {
    if (window_ != nullptr)
        DestroyWindow(window_);
}

LRESULT CALLBACK ProgressWindow::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_CLOSE)
        return 0; // whoever shows it takes it away
    if (message == WM_NCDESTROY) {
        if (auto* const self = reinterpret_cast<ProgressWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA)))
            self->window_ = nullptr;
    }
    return DefWindowProcW(window, message, wparam, lparam);
}

void ProgressWindow::Follow(const sim::ProgressLog& progress) {
    if (!progress.shown) {
        if (window_ != nullptr)
            DestroyWindow(window_);
        return;
    }
    if (window_ == nullptr)
        Create(progress);
    SetTextIfOther(window_, progress.title);
    SetTextIfOther(text_, progress.text);
    const float percent = std::clamp(progress.percent, 0.0F, 100.0F);
    SetTextIfOther(percent_, std::to_wstring(static_cast<int>(percent)) + L" %");
    SendMessageW(bar_, PBM_SETPOS, static_cast<WPARAM>(percent * (kSteps / 100)), 0);
    UpdateWindow(window_); // the next message may be long in coming
}

void ProgressWindow::Create(const sim::ProgressLog& progress) {
    RegisterWindowClass(kClass, &ProgressWindow::Procedure,
                        reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)));
    const HWND asked = reinterpret_cast<HWND>(progress.owner);
    const HWND owner = IsWindow(asked) ? GetAncestor(asked, GA_ROOT) : nullptr;
    window_ = CreateWindowExW(WS_EX_DLGMODALFRAME, kClass, progress.title.c_str(), kStyle, 0, 0, 0, 0, owner, nullptr,
                              Program(), nullptr);
    if (window_ == nullptr)
        return;
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    text_ = CreateLabel(window_, WC_STATICW, SS_ENDELLIPSIS | SS_NOPREFIX);
    percent_ = CreateLabel(window_, WC_STATICW, SS_RIGHT);
    bar_ = CreateLabel(window_, PROGRESS_CLASSW, 0);
    SendMessageW(bar_, PBM_SETRANGE32, 0, kSteps);
    const UINT dpi = GetDpiForWindow(owner != nullptr ? owner : window_);
    Layout(dpi);
    RECT size{0, 0, Scale(kWidth, dpi), Scale(kHeight, dpi)};
    AdjustWindowRectExForDpi(&size, kStyle, FALSE, WS_EX_DLGMODALFRAME, dpi);
    RECT around{};
    GetWindowRect(owner != nullptr ? owner : GetDesktopWindow(), &around);
    const LONG width = size.right - size.left;
    const LONG height = size.bottom - size.top;
    SetWindowPos(window_, nullptr, (around.left + around.right - width) / 2, (around.top + around.bottom - height) / 2,
                 width, height, SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void ProgressWindow::Layout(UINT dpi) {
    font_ = MessageFont(dpi);
    for (const HWND label : {text_, percent_})
        SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(font_.Get()), FALSE);
    MoveWindow(text_, Scale(12, dpi), Scale(14, dpi), Scale(300, dpi), Scale(18, dpi), FALSE);
    MoveWindow(percent_, Scale(318, dpi), Scale(14, dpi), Scale(50, dpi), Scale(18, dpi), FALSE);
    MoveWindow(bar_, Scale(12, dpi), Scale(42, dpi), Scale(356, dpi), Scale(20, dpi), FALSE);
}

} // namespace orv::host
