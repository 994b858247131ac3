#include "controls/win32/number_peer.h"

#include <commctrl.h>

#include "controls/win32/peer_host.h"
#include "platform/win32/made.h"
#include "platform/win32/module.h"

namespace orv::controls::win32 {
namespace {

constexpr int kArrowWidth = 17;
constexpr int kFarAway = 1'000'000;

} // namespace

NumberPeer::NumberPeer(PeerHost& host, NumberBox& box) : EditPeer(host, box, ES_RIGHT | WS_CLIPCHILDREN), box_(box) {
    MakeArrows();
    Host().Names().Set(arrows_, box.AccessibleName());
    ShowContent();
}

NumberPeer::~NumberPeer() {
    Host().Names().Clear(arrows_);
}

void NumberPeer::MakeArrows() {
    const platform::win32::ActivationScope active(Host().Context());
    DWORD style = WS_CHILD | WS_VISIBLE;
    if (!box_.EffectivelyEnabled())
        style |= WS_DISABLED;
    arrows_ = platform::win32::Made(CreateWindowExW(0, UPDOWN_CLASSW, L"", style, 0, 0, 0, 0, Window(), nullptr,
                                                    platform::win32::OwnModule(), nullptr),
                                    UPDOWN_CLASSW);
    // The window counts for itself, and never comes to an end: the widget knows where the ends are.
    SendMessageW(arrows_, UDM_SETRANGE32, static_cast<WPARAM>(-kFarAway), kFarAway);
    PlaceArrows();
}

void NumberPeer::PlaceArrows() {
    RECT client{};
    GetClientRect(Window(), &client);
    const int width = Host().Scale(kArrowWidth);
    SetWindowPos(arrows_, nullptr, client.right - width, 0, width, client.bottom, SWP_NOZORDER | SWP_NOACTIVATE);
    Send(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(Host().Scale(2), width + Host().Scale(3)));
}

void NumberPeer::Mirror(Aspect aspect) {
    EditPeer::Mirror(aspect);
    if (aspect == Aspect::Bounds)
        PlaceArrows();
    if (aspect == Aspect::Name || aspect == Aspect::Caption)
        Host().Names().Set(arrows_, box_.AccessibleName());
    if (aspect == Aspect::Enabled)
        EnableWindow(arrows_, box_.EffectivelyEnabled());
}

void NumberPeer::Command(WORD code) {
    if (code != EN_CHANGE || Showing())
        return;
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(Window())) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(Window(), text.data(), static_cast<int>(text.size()))));
    box_.Edit(std::move(text));
}

LRESULT NumberPeer::Arrow(const NMHDR& header) {
    if (header.code != static_cast<UINT>(UDN_DELTAPOS))
        return 0;
    const Life life = TakeLife();
    if (GetFocus() != Window())
        ::SetFocus(Window());
    // The field that had the focus may have kept it.
    if (!life.expired() && box_.Focused())
        box_.Step(reinterpret_cast<const NMUPDOWN&>(header).iDelta);
    return TRUE;
}

LRESULT NumberPeer::Wheel(WPARAM wparam, LPARAM lparam) {
    // Elsewhere the wheel scrolls the page; no value may change under it.
    if (!box_.Focused())
        return SendMessageW(GetParent(Window()), WM_MOUSEWHEEL, wparam, lparam);
    wheel_ += GET_WHEEL_DELTA_WPARAM(wparam);
    const int notches = wheel_ / WHEEL_DELTA;
    wheel_ -= notches * WHEEL_DELTA;
    box_.Step(notches);
    return 0;
}

LRESULT NumberPeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_NOTIFY:
        return Arrow(*reinterpret_cast<const NMHDR*>(lparam));
    case WM_VSCROLL:
        return 0; // the arrows tell twice
    case WM_MOUSEWHEEL:
        return Wheel(wparam, lparam);
    case WM_SETCURSOR:
        if (reinterpret_cast<HWND>(wparam) != arrows_)
            return EditPeer::Handle(message, wparam, lparam);
        SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW)));
        return TRUE;
    default:
        return EditPeer::Handle(message, wparam, lparam);
    }
}

} // namespace orv::controls::win32
