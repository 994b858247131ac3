#include "controls/win32/edit_peer.h"

#include <algorithm>

#include "controls/win32/mb_edit_dress.h"
#include "controls/win32/peer_host.h"
#include "platform/guarded.h"

namespace orv::controls::win32 {

EditPeer::EditPeer(PeerHost& host, Widget& widget, DWORD style)
    : WindowPeer(host, widget, {L"EDIT", ES_AUTOHSCROLL | WS_TABSTOP | style, WS_EX_CLIENTEDGE}) {
    SetWindowPos(Window(), nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    WindowPeer::Mirror(Aspect::Name);
}

void EditPeer::ShowContent() {
    std::wstring shown(static_cast<std::size_t>(GetWindowTextLengthW(Window())) + 1, L'\0');
    shown.resize(static_cast<std::size_t>(GetWindowTextW(Window(), shown.data(), static_cast<int>(shown.size()))));
    if (shown == Content())
        return; // the caret stays where it is
    showing_ = true;
    const platform::Restoring done([this] { showing_ = false; });
    SetWindowTextW(Window(), Content().c_str());
    Send(EM_SETSEL, Content().size(), static_cast<LPARAM>(Content().size()));
}

void EditPeer::Mirror(Aspect aspect) {
    switch (aspect) {
    case Aspect::Content:
        ShowContent();
        break;
    case Aspect::Selection:
        Send(EM_SETSEL, 0, -1);
        break;
    case Aspect::Caption:
        WindowPeer::Mirror(Aspect::Name); // the window's text is the content
        break;
    case Aspect::Enabled:
        // First, because some versions of the window paint at once when they are enabled: once is enough.
        RedrawWindow(Window(), nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
        WindowPeer::Mirror(aspect);
        break;
    default:
        WindowPeer::Mirror(aspect);
    }
}

/// The window's class waits for the characters of these keys, which end where keys are read.
bool EditPeer::EditingKey(WPARAM key) {
    if (key == VK_BACK) {
        Default(WM_CHAR, VK_BACK, 1);
        return true;
    }
    if (GetKeyState(VK_CONTROL) >= 0)
        return false;
    switch (key) {
    case 'A':
        Send(EM_SETSEL, 0, -1);
        return true;
    case 'C':
        Send(WM_COPY);
        return true;
    case 'V':
        Send(WM_PASTE);
        return true;
    case 'X':
        Send(WM_CUT);
        return true;
    case 'Z':
        Send(EM_UNDO);
        return true;
    default:
        return false;
    }
}

LRESULT EditPeer::TakeKey(UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_KEYDOWN && EditingKey(wparam))
        return 0;
    return Default(message, wparam, lparam);
}

LRESULT EditPeer::PlaceText(WPARAM wparam, LPARAM lparam) {
    const LRESULT result = Default(WM_NCCALCSIZE, wparam, lparam);
    RECT& client = *reinterpret_cast<RECT*>(lparam); // first member of the longer form as well
    // The window's class writes its line at the very top: the border takes room above. What stands beside the line
    // needs the room below.
    const int spare = static_cast<int>(client.bottom - client.top) - Host().LineHeight();
    const int above = spare / 2 - 1;
    client.top += std::max(0, above);
    client.bottom -= std::max(0, above - 2);
    return result;
}

void EditPeer::DrawBorder() const {
    const bool plain = !IsWindowEnabled(Window()) || (GetWindowLongW(Window(), GWL_STYLE) & ES_READONLY) != 0;
    PaintBorder(Window(), true, GetSysColor(plain ? COLOR_BTNFACE : COLOR_WINDOW));
}

LRESULT EditPeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_NCCALCSIZE:
        return PlaceText(wparam, lparam);
    case WM_NCPAINT:
        DrawBorder();
        return 0;
    default:
        return WindowPeer::Handle(message, wparam, lparam);
    }
}

} // namespace orv::controls::win32
