#include "controls/win32/tree_peer.h"

#include "controls/win32/colours.h"
#include "controls/win32/peer_host.h"
#include "platform/guarded.h"

namespace orv::controls::win32 {
namespace {

constexpr UINT kSync = WM_APP + 1;
constexpr DWORD kStyle = TVS_HASBUTTONS | TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_FULLROWSELECT |
                         TVS_DISABLEDRAGDROP | TVS_NONEVENHEIGHT | WS_TABSTOP;

bool Reads(UINT message) {
    return (message >= TV_FIRST && message < TV_FIRST + 0x100) || message == WM_PAINT;
}

} // namespace

TreePeer::TreePeer(PeerHost& host, Tree& tree)
    : WindowPeer(host, tree, {WC_TREEVIEWW, kStyle, WS_EX_CLIENTEDGE}), tree_(tree), nodes_(Window()) {
    Send(TVM_SETEXTENDEDSTYLE, TVS_EX_DOUBLEBUFFER, TVS_EX_DOUBLEBUFFER);
    Send(TVM_SETITEMHEIGHT, static_cast<WPARAM>(host.LineHeight() + host.Scale(6)));
    ShowColours();
    Sync();
    WindowPeer::Mirror(Aspect::Name);
}

void TreePeer::ShowColours() {
    // Named outright: a theme may fill the empty part below the nodes with the colour of a page.
    TreeView_SetBkColor(Window(), GetSysColor(COLOR_WINDOW));
    TreeView_SetTextColor(Window(), GetSysColor(COLOR_WINDOWTEXT));
}

void TreePeer::Sync() {
    if (!stale_ || showing_)
        return;
    stale_ = false;
    {
        showing_ = true;
        const platform::Restoring done([this] { showing_ = false; });
        nodes_.Show(tree_.Nodes());
    }
    Select();
}

void TreePeer::Select() {
    showing_ = true;
    const platform::Restoring done([this] { showing_ = false; });
    TreeView_SelectItem(Window(), nodes_.ItemOf(tree_.SelectedKey()));
}

void TreePeer::Mirror(Aspect aspect) {
    switch (aspect) {
    case Aspect::Items:
        // A tree is built node by node; the window takes them in one go.
        if (!stale_)
            PostMessageW(Window(), kSync, 0, 0);
        stale_ = true;
        break;
    case Aspect::Selection:
        Sync();
        Select();
        break;
    case Aspect::Reveal:
        Sync();
        TreeView_EnsureVisible(Window(), nodes_.ItemOf(tree_.RevealKey()));
        break;
    default:
        WindowPeer::Mirror(aspect);
    }
}

LRESULT TreePeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
    if (stale_ && Reads(message))
        Sync();
    switch (message) {
    case kSync:
        Sync();
        return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        pressed_ = {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
        break;
    case WM_SYSCOLORCHANGE:
        ShowColours();
        break;
    default:
        break;
    }
    return WindowPeer::Handle(message, wparam, lparam);
}

LRESULT TreePeer::Notify(NMHDR& header) {
    switch (header.code) {
    case NM_CLICK:
        return Clicked();
    case NM_CUSTOMDRAW:
        return Drawing(reinterpret_cast<NMTVCUSTOMDRAW&>(header));
    case TVN_SELCHANGINGW:
        return showing_ ? FALSE : TRUE;
    case TVN_ITEMEXPANDINGW:
        return Expanding(reinterpret_cast<const NMTREEVIEWW&>(header));
    default:
        return 0;
    }
}

/// The node of the page on show must be seen while the focus is in the page; some themes leave next to nothing of it.
LRESULT TreePeer::Drawing(NMTVCUSTOMDRAW& draw) {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) // every node asks, so only when one of them is to look different
        return GetFocus() == Window() ? CDRF_DODEFAULT : CDRF_NOTIFYITEMDRAW;
    if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && (draw.nmcd.uItemState & CDIS_SELECTED) != 0 &&
        GetFocus() != Window()) {
        draw.clrText = GetSysColor(COLOR_WINDOWTEXT);
        draw.clrTextBk = InactiveSelection();
    }
    return CDRF_DODEFAULT;
}

LRESULT TreePeer::Clicked() {
    TVHITTESTINFO hit{};
    hit.pt = pressed_;
    TreeView_HitTest(Window(), &hit);
    if (hit.hItem == nullptr || (hit.flags & TVHT_ONITEMBUTTON) != 0)
        return 0;
    if (const std::wstring* found = nodes_.KeyOf(hit.hItem)) {
        const std::wstring key = *found;
        tree_.Click(key);
    }
    return 1;
}

LRESULT TreePeer::Expanding(const NMTREEVIEWW& change) {
    if (showing_)
        return FALSE;
    if (const std::wstring* found = nodes_.KeyOf(change.itemNew.hItem)) {
        const std::wstring key = *found;
        if (change.action == TVE_EXPAND)
            tree_.Expand(key);
        else
            tree_.Collapse(key);
    }
    return TRUE;
}

} // namespace orv::controls::win32
