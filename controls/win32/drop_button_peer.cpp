#include "controls/win32/drop_button_peer.h"

#include <uxtheme.h>
#include <vssym32.h>

#include "controls/win32/peer_host.h"

namespace orv::controls::win32 {
namespace {

constexpr UINT kOpen = WM_APP + 1;
constexpr std::size_t kRows = 17;

struct CloseTheme {
    void operator()(HTHEME theme) const { CloseThemeData(theme); }
};
using OwnedTheme = platform::win32::Owned<HTHEME, CloseTheme>;

void DrawFace(const DRAWITEMSTRUCT& item, bool pressed, bool enabled) {
    RECT area = item.rcItem;
    FillRect(item.hDC, &area, GetSysColorBrush(COLOR_BTNFACE));
    const OwnedTheme theme(IsThemeActive() ? OpenThemeData(item.hwndItem, L"BUTTON") : nullptr);
    if (theme) {
        const int state = !enabled ? PBS_DISABLED : pressed ? PBS_PRESSED : PBS_NORMAL;
        DrawThemeBackground(theme.Get(), item.hDC, BP_PUSHBUTTON, state, &area, nullptr);
        return;
    }
    DrawFrameControl(item.hDC, &area, DFC_BUTTON, DFCS_BUTTONPUSH | (pressed ? DFCS_PUSHED : 0));
}

void DrawArrow(HDC dc, const RECT& area, int half, COLORREF colour) {
    const int x = (area.left + area.right - 1) / 2;
    const int y = (area.top + area.bottom) / 2 - half / 2;
    const platform::win32::OwnedBrush brush(CreateSolidBrush(colour));
    for (int row = 0; row < half; ++row) {
        const RECT line{x - half + row + 1, y + row, x + half - row, y + row + 1};
        FillRect(dc, &line, brush.Get());
    }
}

} // namespace

DropButtonPeer::DropButtonPeer(PeerHost& host, DropButton& button)
    : WindowPeer(host, button, {L"BUTTON", BS_OWNERDRAW}), button_(button) {
    WindowPeer::Mirror(Aspect::Caption);
}

DropButtonPeer::~DropButtonPeer() {
    if (open_)
        EndMenu();
}

void DropButtonPeer::Mirror(Aspect aspect) {
    if (aspect == Aspect::Open)
        PostMessageW(Window(), kOpen, 0, 0); // a menu runs a loop of its own; the gesture must be over by then
    else
        WindowPeer::Mirror(aspect);
}

LRESULT DropButtonPeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        // The focus stays in the box beside it.
        button_.Open();
        return 0;
    case kOpen:
        RunMenu();
        return 0;
    default:
        return WindowPeer::Handle(message, wparam, lparam);
    }
}

void DropButtonPeer::RunMenu() {
    if (open_)
        return;
    const platform::win32::OwnedMenu menu(CreatePopupMenu());
    UINT id = 0;
    for (const std::wstring& entry : button_.Entries()) {
        // As many columns as keep the menu on a small screen.
        const UINT column = id > 0 && id % kRows == 0 ? MF_MENUBARBREAK : 0;
        AppendMenuW(menu.Get(), MF_STRING | column, ++id, entry.c_str());
    }
    RECT place{};
    GetWindowRect(Window(), &place);
    TPMPARAMS around{};
    around.cbSize = sizeof around;
    around.rcExclude = place;
    const Life life = TakeLife();
    open_ = true;
    InvalidateRect(Window(), nullptr, TRUE);
    const int chosen = TrackPopupMenuEx(menu.Get(), TPM_RETURNCMD | TPM_RIGHTALIGN | TPM_VERTICAL, place.right,
                                        place.bottom, Window(), &around);
    if (life.expired())
        return;
    open_ = false;
    InvalidateRect(Window(), nullptr, TRUE);
    if (chosen > 0)
        button_.Choose(chosen - 1);
}

void DropButtonPeer::Draw(const DRAWITEMSTRUCT& item) {
    constexpr int kArrow = 4;
    const bool enabled = (item.itemState & ODS_DISABLED) == 0;
    DrawFace(item, open_ || (item.itemState & ODS_SELECTED) != 0, enabled);
    DrawArrow(item.hDC, item.rcItem, Host().Scale(kArrow), GetSysColor(enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
}

} // namespace orv::controls::win32
