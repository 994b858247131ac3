#pragma once
// A window with a form in its upper half and room for bare windows of the same kinds in its lower half.
#include "platform/win32/owned.h"

#include "controls/form.h"
#include "controls/win32/peer_host.h"
#include "platform/win32/activation.h"
#include "platform/win32/module.h"
#include "platform/win32/pump.h"

namespace orv::bench {

class NoBoxes final : public platform::MessageBoxes {
  public:
    platform::Answer Show(const platform::MessageBox&) override { return platform::Answer::Ok; }
    void Beep() override {}
    void Close() override {}
};

/// What is left to be drawn, so that both sides pay for it.
inline void Paint(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

constexpr int kHalf = 360;

struct Stage {
    Stage() { form.Root().SetBounds({0, 0, 640, kHalf}); }

    void Show() {
        host.Attach(parent.Get());
        ShowWindow(parent.Get(), SW_SHOW);
        UpdateWindow(parent.Get());
    }
    /// Beside the form and as large as `like`.
    HWND Bare(const wchar_t* type, DWORD style, DWORD extended, const controls::Rect& like) {
        const platform::win32::ActivationScope active(context);
        const HWND window = CreateWindowExW(extended, type, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | style,
                                            like.x, kHalf + like.y, like.width, like.height, parent.Get(), nullptr,
                                            platform::win32::OwnModule(), nullptr);
        SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(host.Font()), FALSE);
        return window;
    }

    NoBoxes boxes;
    platform::win32::ActivationContext context{platform::win32::OwnModule()};
    platform::win32::SystemPump pump;
    controls::Form form{boxes, pump};
    controls::win32::PeerHost host{form, context, {}};
    platform::win32::OwnedWindow parent{CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 20,
                                                        20, 660, 2 * kHalf + 40, nullptr, nullptr,
                                                        platform::win32::OwnModule(), nullptr)};
};

} // namespace orv::bench
