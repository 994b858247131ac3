#include "fixture.h"

#include "platform/win32/module.h"

namespace orv::tests {
namespace {

constexpr wchar_t kClassName[] = L"OrvTestContainer";

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    auto* host = reinterpret_cast<controls::win32::PeerHost*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (host != nullptr)
        if (const auto result = host->HandleControlMessage(message, wparam, lparam))
            return *result;
    return DefWindowProcW(window, message, wparam, lparam);
}

HWND MakeContainer() {
    WNDCLASSEXW type{};
    type.cbSize = sizeof type;
    type.lpfnWndProc = &Procedure;
    type.hInstance = platform::win32::OwnModule();
    type.lpszClassName = kClassName;
    RegisterClassExW(&type);
    return CreateWindowExW(0, kClassName, L"Container", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 20, 20, 820, 620,
                           nullptr, nullptr, type.hInstance, nullptr);
}

} // namespace

bool Within(const std::function<bool()>& done, DWORD milliseconds) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    for (;;) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        if (done())
            return true;
        const ULONGLONG now = GetTickCount64();
        if (now >= end)
            return false;
        MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(end - now < 20 ? end - now : 20), QS_ALLINPUT,
                                    MWMO_INPUTAVAILABLE);
    }
}

Windows::Windows() : context(platform::win32::OwnModule()), container(MakeContainer()) {}

Windows::~Windows() {
    SetWindowLongPtrW(container.Get(), GWLP_USERDATA, 0);
    host.reset();
}

void Windows::Show() {
    if (form.Root().Bounds().width == 0)
        form.Root().SetBounds({0, 0, 800, 580});
    host = std::make_unique<controls::win32::PeerHost>(form, context, hooks);
    SetWindowLongPtrW(container.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(host.get()));
    host->Attach(container.Get());
    ShowWindow(container.Get(), SW_SHOW);
    SetForegroundWindow(container.Get());
    ASSERT_TRUE(Within([this] { return GetForegroundWindow() == container.Get(); }));
    Drain();
}

void Windows::Drain() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (translates && host->TranslateKey(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void Windows::PostClick(HWND window, int x, int y) const {
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

std::wstring Windows::TextOf(HWND window) {
    std::wstring text(512, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), 512)));
    return text;
}

} // namespace orv::tests
