// Shows every widget in a window of its own and tells on standard output where they stand and what happens to them.
#include "platform/win32/owned.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <memory>
#include <string>

#include <commctrl.h>
#include <ole2.h>

#include "controls/win32/clipboard.h"
#include "controls/win32/peer_host.h"
#include "gallery_page.h"
#include "platform/win32/activation.h"
#include "platform/win32/module.h"
#include "platform/win32/pump.h"

namespace {

using namespace orv;

constexpr wchar_t kClassName[] = L"OrvGallery";
constexpr wchar_t kTitle[] = L"Gallery of widgets";
constexpr DWORD kStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;

/// At once, for whoever waits for the line.
void Say(std::wstring_view line) {
    for (const wchar_t character : line)
        std::fputc(character < 128 ? static_cast<char>(character) : '?', stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

class SaidBoxes : public platform::MessageBoxes {
  public:
    platform::Answer Show(const platform::MessageBox& box) override {
        Say(L"box " + box.text);
        return platform::Answer::Ok;
    }
    void Beep() override { Say(L"beep"); }
    void Close() override {}
};

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_CLOSE) {
        PostQuitMessage(0);
        return 0;
    }
    auto* host = reinterpret_cast<controls::win32::PeerHost*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (host != nullptr)
        if (const auto result = host->HandleControlMessage(message, wparam, lparam))
            return *result;
    return DefWindowProcW(window, message, wparam, lparam);
}

HWND MakeWindow() {
    WNDCLASSEXW type{};
    type.cbSize = sizeof type;
    type.lpfnWndProc = &Procedure;
    type.hInstance = platform::win32::OwnModule();
    type.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    type.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    type.lpszClassName = kClassName;
    RegisterClassExW(&type);
    return CreateWindowExW(0, kClassName, kTitle, kStyle, 0, 0, 400, 300, nullptr, nullptr, type.hInstance, nullptr);
}

class Gallery {
  public:
    Gallery();
    ~Gallery();
    int Run();

  private:
    void FitWindow(controls::Size client);
    void SayRect(const std::wstring& name, HWND window, RECT area) const;
    void SayWidgets(const controls::Widget& parent) const;
    void SayButtons(const controls::Toolbar& toolbar) const;
    void SayRows() const;

    SaidBoxes boxes_;
    platform::win32::ActivationContext context_{platform::win32::OwnModule()};
    platform::win32::SystemPump pump_;
    controls::Form form_{boxes_, pump_};
    gallery::GalleryPage page_{form_, &Say};
    platform::win32::OwnedWindow window_{MakeWindow()};
    controls::win32::SystemClipboard clipboard_{[this] { return window_.Get(); }};
    std::unique_ptr<controls::win32::PeerHost> host_;
};

Gallery::Gallery() {
    form_.SetClipboard(&clipboard_);
    controls::win32::PeerHooks hooks;
    hooks.layout = [this] { FitWindow(page_.Layout(*host_)); };
    host_ = std::make_unique<controls::win32::PeerHost>(form_, context_, std::move(hooks));
    SetWindowLongPtrW(window_.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(host_.get()));
    host_->Attach(window_.Get());
    ShowWindow(window_.Get(), SW_SHOW);
    SetForegroundWindow(window_.Get());
    form_.FocusFirst();
}

Gallery::~Gallery() {
    SetWindowLongPtrW(window_.Get(), GWLP_USERDATA, 0);
    host_.reset();
    form_.SetClipboard(nullptr);
}

void Gallery::FitWindow(controls::Size client) {
    RECT whole{0, 0, client.width, client.height};
    AdjustWindowRectEx(&whole, kStyle, FALSE, 0);
    SetWindowPos(window_.Get(), nullptr, 0, 0, whole.right - whole.left, whole.bottom - whole.top, SWP_NOZORDER);
}

void Gallery::SayRect(const std::wstring& name, HWND window, RECT area) const {
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    Say(L"at " + name + L" " + std::to_wstring(area.left) + L" " + std::to_wstring(area.top) + L" " +
        std::to_wstring(area.right - area.left) + L" " + std::to_wstring(area.bottom - area.top));
}

void Gallery::SayWidgets(const controls::Widget& parent) const {
    for (const auto& child : parent.Children()) {
        const HWND window = host_->WindowOf(child->Name(), child->Index());
        RECT area{};
        GetClientRect(window, &area);
        const bool one = child->Index() == controls::Widget::kNoIndex;
        SayRect(child->Name() + (one ? L"" : L"." + std::to_wstring(child->Index())), window, area);
        SayWidgets(*child);
    }
}

void Gallery::SayButtons(const controls::Toolbar& toolbar) const {
    const HWND window = host_->WindowOf(toolbar.Name());
    for (std::size_t i = 0; i < toolbar.Buttons().size(); ++i) {
        RECT area{};
        SendMessageW(window, TB_GETITEMRECT, i, reinterpret_cast<LPARAM>(&area));
        SayRect(toolbar.Name() + L"." + toolbar.Buttons()[i].key, window, area);
    }
}

void Gallery::SayRows() const {
    const HWND window = host_->WindowOf(page_.Items().Name());
    for (int row = 0; row < ListView_GetItemCount(window); ++row) {
        RECT area{};
        ListView_GetItemRect(window, row, &area, LVIR_BOUNDS);
        SayRect(page_.Items().Name() + L"." + std::to_wstring(row + 1), window, area);
    }
}

int Gallery::Run() {
    RECT whole{};
    GetWindowRect(window_.Get(), &whole);
    SayRect(L"window", nullptr, whole);
    SayWidgets(form_.Root());
    SayButtons(page_.CodeTypes());
    SayButtons(page_.Palette());
    SayRows();
    Say(L"ready");
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (host_->TranslateKey(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}

} // namespace

int main() {
    _setmode(_fileno(stdout), _O_BINARY);
    if (FAILED(OleInitialize(nullptr)))
        return 1;
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&classes);
    const int status = Gallery().Run();
    OleUninitialize();
    Say(L"closed");
    return status;
}
