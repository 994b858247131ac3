#include "controls/win32/combo_peer.h"

#include <algorithm>

#include "controls/win32/peer_host.h"

namespace orv::controls::win32 {
namespace {

constexpr int kRowsShown = 12;
constexpr WPARAM kField = static_cast<WPARAM>(-1);

} // namespace

ComboPeer::ComboPeer(PeerHost& host, ComboBox& combo)
    : WindowPeer(host, combo, {L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP}), combo_(combo) {
    MirrorItems();
    MirrorBounds();
    WindowPeer::Mirror(Aspect::Name);
}

void ComboPeer::Mirror(Aspect aspect) {
    switch (aspect) {
    case Aspect::Items:
        MirrorItems();
        break;
    case Aspect::Selection:
        // The window draws itself anew even when told what it shows; a look costs nothing.
        if (static_cast<int>(Send(CB_GETCURSEL)) != combo_.Selected())
            Send(CB_SETCURSEL, static_cast<WPARAM>(combo_.Selected()));
        break;
    case Aspect::Bounds:
        MirrorBounds();
        break;
    default:
        WindowPeer::Mirror(aspect);
    }
}

void ComboPeer::MirrorItems() {
    Send(WM_SETREDRAW, FALSE);
    Send(CB_RESETCONTENT);
    for (const ComboBox::Entry& entry : combo_.Entries())
        SendPointer(CB_ADDSTRING, 0, entry.text.c_str());
    Send(CB_SETCURSEL, static_cast<WPARAM>(combo_.Selected()));
    Send(WM_SETREDRAW, TRUE);
    InvalidateRect(Window(), nullptr, TRUE);
}

int ComboPeer::WidestEntry() const {
    int widest = 0;
    for (const ComboBox::Entry& entry : combo_.Entries())
        widest = std::max(widest, Host().Width(entry.text));
    return widest + GetSystemMetrics(SM_CXVSCROLL) + Host().Scale(8);
}

Rect ComboPeer::Placement() const {
    // The height of the window is that of the opened list.
    Rect place = combo_.WindowBounds();
    place.height += kRowsShown * (Host().LineHeight() + Host().Scale(2));
    return place;
}

void ComboPeer::MirrorBounds() {
    WindowPeer::Mirror(Aspect::Bounds);
    // What is added around the field differs by system and theme: set, look, correct.
    int field = static_cast<int>(Send(CB_GETITEMHEIGHT, kField));
    for (int i = 0; i < 2; ++i) {
        RECT closed{};
        GetWindowRect(Window(), &closed);
        const int over = static_cast<int>(closed.bottom - closed.top) - combo_.Bounds().height;
        field -= over;
        if (over == 0 || field <= 0)
            return;
        Send(CB_SETITEMHEIGHT, kField, field);
    }
}

void ComboPeer::Command(WORD code) {
    switch (code) {
    case CBN_DROPDOWN:
        // Measured when it is seen: most lists are filled and never opened.
        Send(CB_SETDROPPEDWIDTH, static_cast<WPARAM>(WidestEntry()));
        cancelled_ = false;
        combo_.SetDropped(true);
        break;
    case CBN_SELENDCANCEL:
        cancelled_ = true;
        break;
    case CBN_CLOSEUP:
        combo_.SetDropped(false);
        if (cancelled_)
            Send(CB_SETCURSEL, static_cast<WPARAM>(combo_.Selected()));
        else
            combo_.Select(static_cast<int>(Send(CB_GETCURSEL)));
        break;
    case CBN_SELCHANGE:
        // Moving through the open list chooses nothing yet.
        if (!Dropped())
            combo_.Select(static_cast<int>(Send(CB_GETCURSEL)));
        break;
    default:
        break;
    }
}

LRESULT ComboPeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
    // Over a closed box the wheel scrolls the page; a value must not change under it.
    if (message == WM_MOUSEWHEEL && !Dropped())
        return SendMessageW(GetParent(Window()), message, wparam, lparam);
    return WindowPeer::Handle(message, wparam, lparam);
}

} // namespace orv::controls::win32
