#include "controls/win32/tab_peer.h"

#include <algorithm>

#include <commctrl.h>

#include "controls/win32/peer_host.h"

namespace orv::controls::win32 {
namespace {

/// The window takes an ampersand for the mark of an access key.
std::wstring Literal(const std::wstring& text) {
    std::wstring literal;
    for (wchar_t character : text)
        literal.append(character == L'&' ? 2 : 1, character);
    return literal;
}

} // namespace

TabPeer::TabPeer(PeerHost& host, TabStrip& strip)
    : WindowPeer(host, strip, {WC_TABCONTROLW, TCS_SINGLELINE | WS_TABSTOP}), strip_(strip) {
    FitHeight();
    MirrorItems();
    WindowPeer::Mirror(Aspect::Name);
}

/// All of the strip is tabs, with the line below them that the page goes on from.
void TabPeer::FitHeight() {
    constexpr int kRaised = 2; // the selected one stands out
    const int below = Host().Scale(3);
    Send(TCM_SETITEMSIZE, 0, MAKELPARAM(0, std::max(1, strip_.Bounds().height - kRaised - below)));
}

void TabPeer::Mirror(Aspect aspect) {
    switch (aspect) {
    case Aspect::Items:
        MirrorItems();
        break;
    case Aspect::Selection:
        Send(TCM_SETCURSEL, static_cast<WPARAM>(strip_.Selected()));
        break;
    case Aspect::Bounds:
        WindowPeer::Mirror(aspect);
        FitHeight();
        break;
    default:
        WindowPeer::Mirror(aspect);
    }
}

void TabPeer::MirrorItems() {
    const std::size_t count = strip_.Tabs().size();
    for (auto shown = static_cast<std::size_t>(Send(TCM_GETITEMCOUNT)); shown > count; --shown)
        Send(TCM_DELETEITEM, shown - 1);
    for (std::size_t tab = 0; tab < count; ++tab) {
        std::wstring caption = Literal(strip_.Tabs()[tab].caption);
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = caption.data();
        if (tab < static_cast<std::size_t>(Send(TCM_GETITEMCOUNT)))
            SendPointer(TCM_SETITEMW, tab, &item);
        else
            SendPointer(TCM_INSERTITEMW, tab, &item);
    }
    Send(TCM_SETCURSEL, static_cast<WPARAM>(strip_.Selected()));
}

LRESULT TabPeer::Press(POINT at) {
    TCHITTESTINFO hit{};
    hit.pt = at;
    const int tab = static_cast<int>(SendPointer(TCM_HITTEST, 0, &hit));
    const Life life = TakeLife();
    if (GetFocus() != Window())
        ::SetFocus(Window());
    // The field that had the focus may have kept it, and with it the tab.
    if (tab >= 0 && !life.expired() && strip_.Focused())
        strip_.Select(tab);
    return 0;
}

LRESULT TabPeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        return Press({static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))});
    case WM_MOUSEWHEEL:
        return SendMessageW(GetParent(Window()), message, wparam, lparam);
    default:
        return WindowPeer::Handle(message, wparam, lparam);
    }
}

} // namespace orv::controls::win32
