#include "host/app/orvhost/main_window.h"

#include <algorithm>
#include <array>

#include "host/app/orvhost/commands.h"

namespace orv::host {
namespace {

constexpr wchar_t kFrameClass[] = L"OrvHost.Frame";
constexpr wchar_t kAreaClass[] = L"OrvHost.Area";
constexpr int kLogId = 1;
constexpr int kStatusId = 2;
constexpr int kLogHeight = 150;
constexpr int kGap = 4;

HWND CreateChild(HWND parent, const wchar_t* type, DWORD style, DWORD extended, int id, void* argument = nullptr) {
    return Made(CreateWindowExW(extended, type, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
                                reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), Program(), argument));
}

/// Boxes and the progress display come up in the middle of the screen: the window they belong to stands there, too.
void Centre(HWND window) {
    RECT work{};
    RECT own{};
    if (!SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0) || !GetWindowRect(window, &own))
        return;
    const LONG x = std::max(work.left, (work.left + work.right - (own.right - own.left)) / 2);
    const LONG y = std::max(work.top, (work.top + work.bottom - (own.bottom - own.top)) / 2);
    SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

MainWindow* SelfOf(HWND window) {
    return reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

} // namespace

MainWindow::MainWindow(FrameListener& listener, int width, int height)
    : listener_(listener), accelerators_(MakeAccelerators()) {
    const auto face = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1));
    RegisterWindowClass(kFrameClass, &MainWindow::Procedure, face);
    RegisterWindowClass(kAreaClass, &MainWindow::AreaProcedure, face, CS_HREDRAW | CS_VREDRAW);
    window_ =
        Made(CreateWindowExW(WS_EX_CONTROLPARENT, kFrameClass, L"Bench Host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                             CW_USEDEFAULT, CW_USEDEFAULT, width, height, nullptr, nullptr, Program(), nullptr));
    Centre(window_);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    CreateChildren();
    SetFonts();
    Update(state_);
    Layout();
}

MainWindow::~MainWindow() {
    Destroy();
}

void MainWindow::Destroy() {
    if (window_ == nullptr)
        return;
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    SetWindowLongPtrW(area_, GWLP_USERDATA, 0);
    DestroyWindow(std::exchange(window_, nullptr));
}

void MainWindow::CreateChildren() {
    area_ = CreateChild(window_, kAreaClass, WS_CLIPCHILDREN | WS_CLIPSIBLINGS, WS_EX_CONTROLPARENT, 0);
    SetWindowLongPtrW(area_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    log_.Create(window_, kLogId);
    status_ = CreateChild(window_, STATUSCLASSNAMEW, SBARS_SIZEGRIP, 0, kStatusId);
}

void MainWindow::SetFonts() {
    const UINT dpi = GetDpiForWindow(window_);
    OwnedFont font = MessageFont(dpi);
    log_.SetFont(font.Get(), dpi);
    SendMessageW(status_, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), TRUE);
    font_ = std::move(font);
}

void MainWindow::Layout() {
    const UINT dpi = GetDpiForWindow(window_);
    SendMessageW(status_, WM_SIZE, 0, 0);
    RECT client{};
    RECT bar{};
    GetClientRect(window_, &client);
    GetWindowRect(status_, &bar);
    client.bottom -= bar.bottom - bar.top;
    const LONG height = showsLog_ ? std::min<LONG>(Scale(kLogHeight, dpi), client.bottom / 3) : 0;
    const LONG split = std::max<LONG>(client.bottom - height, 0);
    const LONG gap = showsLog_ ? Scale(kGap, dpi) : 0;
    MoveWindow(area_, 0, 0, client.right, std::max<LONG>(split - gap, 0), TRUE);
    log_.Move({0, split, client.right, client.bottom});
    FitStatusParts();
    listener_.OnAreaResized();
}

void MainWindow::FitStatusParts() {
    const UINT dpi = GetDpiForWindow(window_);
    RECT client{};
    GetClientRect(window_, &client);
    // From the right: link, level, device; the texts on the left take what is left.
    const int link = client.right - Scale(210, dpi);
    const int level = link - Scale(90, dpi);
    const int place = level - Scale(190, dpi);
    const std::array<int, 5> edges = {std::max(place / 2, 1), std::max(place, 2), std::max(level, 3), std::max(link, 4),
                                      -1};
    SendMessageW(status_, SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
    const std::array<std::wstring, 5> texts = {
        statusText_.empty() ? L"Ready" : statusText_, state_.file.empty() ? L"No file" : state_.file,
        L"Cluster " + std::to_wstring(state_.cluster) + L", device " + std::to_wstring(state_.device) + L" (" +
            std::to_wstring(state_.cluster * 32 + state_.device) + L")",
        L"Level " + std::to_wstring(state_.level), state_.link};
    for (std::size_t i = 0; i < texts.size(); ++i)
        SendMessageW(status_, SB_SETTEXTW, i, reinterpret_cast<LPARAM>(texts[i].c_str()));
}

void MainWindow::Update(const FrameState& state) {
    state_ = state;
    state_.log = showsLog_;
    std::wstring title;
    for (const std::wstring& part : {state.caption, state.file, std::wstring(L"Bench Host")})
        title += part.empty() ? L"" : (title.empty() ? L"" : L" - ") + part;
    SetWindowTextW(window_, title.c_str());
    OwnedMenu menu = MakeMenu(state_);
    const OwnedMenu old(GetMenu(window_));
    if (SetMenu(window_, menu.Get()))
        menu.Forget();
    FitStatusParts();
    InvalidateRect(area_, nullptr, TRUE);
}

void MainWindow::ToggleLog() {
    showsLog_ = !showsLog_;
    if (!showsLog_ && GetFocus() == log_.Window())
        listener_.OnCommand(kNextPane);
    ShowWindow(log_.Window(), showsLog_ ? SW_SHOWNA : SW_HIDE);
    Update(FrameState(state_));
    Layout();
}

void MainWindow::SetStatusText(const std::wstring& text) {
    statusText_ = text;
    FitStatusParts();
}

bool MainWindow::Translate(MSG& message) {
    if (message.message == WM_KEYDOWN && message.wParam == VK_TAB && message.hwnd == log_.Window()) {
        listener_.OnCommand(kNextPane);
        return true;
    }
    return state_.modeless && TranslateAcceleratorW(window_, accelerators_.Get(), &message) != 0;
}

void MainWindow::ChangeDpi(const RECT& place) {
    SetFonts();
    SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT MainWindow::Notify(LPARAM lparam) {
    const auto& header = *reinterpret_cast<const NMHDR*>(lparam);
    if (header.code == NM_SETFOCUS && header.hwndFrom == log_.Window())
        listener_.OnPaneFocused();
    log_.Notify(header, lparam);
    return 0;
}

void MainWindow::Activated(WPARAM wparam) {
    const bool active = LOWORD(wparam) != WA_INACTIVE;
    if (!active)
        lastFocus_ = GetFocus();
    else if (lastFocus_ != nullptr && IsChild(window_, lastFocus_))
        SetFocus(lastFocus_);
    listener_.OnFrameActivated(active);
}

LRESULT MainWindow::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_SIZE:
        if (wparam != SIZE_MINIMIZED)
            Layout();
        return 0;
    case WM_GETMINMAXINFO:
        reinterpret_cast<MINMAXINFO*>(lparam)->ptMinTrackSize = {Scale(480, GetDpiForWindow(window_)),
                                                                 Scale(360, GetDpiForWindow(window_))};
        return 0;
    case WM_DPICHANGED:
        ChangeDpi(*reinterpret_cast<const RECT*>(lparam));
        return 0;
    case WM_SETTINGCHANGE:
    case WM_THEMECHANGED:
        SetFonts();
        Layout();
        return 0;
    case WM_ACTIVATE:
        Activated(wparam);
        return 0;
    case WM_NOTIFY:
        return Notify(lparam);
    case WM_COMMAND:
        if (lparam == 0)
            listener_.OnCommand(LOWORD(wparam));
        return 0;
    case WM_CLOSE:
    case WM_ENDSESSION:
        if (message == WM_CLOSE || wparam != 0)
            listener_.OnCloseRequest();
        return 0;
    default:
        return DefWindowProcW(window_, message, wparam, lparam);
    }
}

LRESULT CALLBACK MainWindow::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    MainWindow* const self = SelfOf(window);
    if (self == nullptr || self->window_ == nullptr || self->status_ == nullptr)
        return DefWindowProcW(window, message, wparam, lparam);
    return self->Handle(message, wparam, lparam);
}

void MainWindow::PaintArea() {
    PAINTSTRUCT paint{};
    const HDC dc = BeginPaint(area_, &paint);
    if (!state_.hasAddOn) {
        RECT area{};
        GetClientRect(area_, &area);
        const HGDIOBJ old = SelectObject(dc, font_.Get());
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
        const wchar_t* const hint = state_.hasFile ? L"The add-on is not loaded. Add-on, Show (F5) loads it."
                                                   : L"Open a device description to begin (Ctrl+O).";
        DrawTextW(dc, hint, -1, &area, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
        SelectObject(dc, old);
    }
    EndPaint(area_, &paint);
}

LRESULT CALLBACK MainWindow::AreaProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    MainWindow* const self = SelfOf(window);
    if (self == nullptr || message != WM_PAINT)
        return DefWindowProcW(window, message, wparam, lparam);
    self->PaintArea();
    return 0;
}

} // namespace orv::host
