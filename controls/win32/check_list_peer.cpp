#include "controls/win32/check_list_peer.h"

#include <uxtheme.h>
#include <vssym32.h>

#include "controls/win32/colours.h"
#include "controls/win32/peer_host.h"
#include "platform/guarded.h"

namespace orv::controls::win32 {
namespace {

constexpr DWORD kStyle =
    LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS | WS_TABSTOP;
// The style for check boxes is what screen readers go by; the pictures of the boxes are our own.
constexpr DWORD kExtended = LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP;

constexpr int kBox = 13;

struct CloseTheme {
    void operator()(HTHEME theme) const { CloseThemeData(theme); }
};
using OwnedTheme = platform::win32::Owned<HTHEME, CloseTheme>;

void DrawBox(HDC dc, RECT area, bool checked, bool enabled) {
    // Opened for no window: the list would take it for its own and draw its border with it.
    const OwnedTheme theme(IsThemeActive() ? OpenThemeData(nullptr, L"BUTTON") : nullptr);
    if (theme) {
        const int plain = checked ? CBS_CHECKEDNORMAL : CBS_UNCHECKEDNORMAL;
        const int state = enabled ? plain : checked ? CBS_CHECKEDDISABLED : CBS_UNCHECKEDDISABLED;
        DrawThemeBackground(theme.Get(), dc, BP_CHECKBOX, state, &area, nullptr);
        return;
    }
    DrawFrameControl(dc, &area, DFC_BUTTON,
                     DFCS_BUTTONCHECK | (checked ? DFCS_CHECKED : 0u) | (enabled ? 0u : DFCS_INACTIVE));
}

UINT StateOf(bool checked) {
    return INDEXTOSTATEIMAGEMASK(checked ? 2u : 1u);
}

} // namespace

CheckListPeer::CheckListPeer(PeerHost& host, CheckList& list)
    : WindowPeer(host, list, {WC_LISTVIEWW, kStyle, WS_EX_CLIENTEDGE}), list_(list) {
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, kExtended, kExtended);
    LVCOLUMNW column{};
    column.mask = LVCF_WIDTH;
    column.cx = 10;
    SendPointer(LVM_INSERTCOLUMNW, 0, &column);
    // The window has made boxes of its own for the style; they are let go with the first of ours.
    const OwnedImageList unused(reinterpret_cast<HIMAGELIST>(Send(LVM_GETIMAGELIST, LVSIL_STATE)));
    ShowLook();
    MirrorItems();
    WindowPeer::Mirror(Aspect::Name);
}

void CheckListPeer::ShowLook() {
    const COLORREF window = GetSysColor(COLOR_WINDOW);
    Send(LVM_SETBKCOLOR, 0, static_cast<LPARAM>(window));
    Send(LVM_SETTEXTBKCOLOR, 0, static_cast<LPARAM>(window));
    Send(LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(GetSysColor(COLOR_WINDOWTEXT)));
    MakeBoxes();
}

void CheckListPeer::MakeBoxes() {
    const int side = Host().Scale(kBox);
    const int width = side + Host().Scale(7);
    const int height = Host().LineHeight() + Host().Scale(4);
    OwnedImageList boxes(ImageList_Create(width, height, ILC_COLOR24, 2, 0));
    const platform::win32::WindowDc screen(Window());
    const HDC dc = CreateCompatibleDC(screen.Get());
    for (const bool checked : {false, true}) {
        const platform::win32::OwnedBitmap picture(CreateCompatibleBitmap(screen.Get(), width, height));
        {
            const platform::win32::Selected drawnOn(dc, picture.Get());
            const RECT all{0, 0, width, height};
            FillRect(dc, &all, GetSysColorBrush(COLOR_WINDOW));
            const int left = Host().Scale(4);
            const int top = (height - side) / 2;
            DrawBox(dc, {left, top, left + side, top + side}, checked, list_.EffectivelyEnabled());
        }
        ImageList_Add(boxes.Get(), picture.Get(), nullptr);
    }
    DeleteDC(dc);
    Send(LVM_SETIMAGELIST, LVSIL_STATE, reinterpret_cast<LPARAM>(boxes.Get()));
    boxes_ = std::move(boxes);
}

void CheckListPeer::Mirror(Aspect aspect) {
    switch (aspect) {
    case Aspect::Items:
        MirrorItems();
        break;
    case Aspect::Check:
        MirrorChecks();
        break;
    case Aspect::Selection:
        MirrorSelection();
        break;
    case Aspect::Bounds:
        WindowPeer::Mirror(aspect);
        FitColumn();
        break;
    case Aspect::Enabled:
        WindowPeer::Mirror(aspect);
        ShowLook();
        InvalidateRect(Window(), nullptr, TRUE);
        break;
    default:
        WindowPeer::Mirror(aspect);
    }
}

void CheckListPeer::MirrorItems() {
    const std::size_t count = list_.Rows().size();
    Send(WM_SETREDRAW, FALSE);
    {
        showing_ = true;
        const platform::Restoring done([this] { showing_ = false; });
        for (; shown_.size() > count; shown_.pop_back())
            Send(LVM_DELETEITEM, shown_.size() - 1);
        for (std::size_t row = 0; row < count; ++row)
            MirrorText(row);
    }
    MirrorChecks();
    MirrorSelection();
    Send(WM_SETREDRAW, TRUE);
    FitColumn();
    InvalidateRect(Window(), nullptr, TRUE);
}

void CheckListPeer::MirrorText(std::size_t row) {
    const bool there = row < shown_.size();
    const std::wstring& text = list_.Rows()[row].text;
    if (there && shown_[row].text == text)
        return;
    if (!there)
        shown_.emplace_back();
    shown_[row].text = text;
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = static_cast<int>(row);
    item.pszText = shown_[row].text.data();
    SendPointer(there ? LVM_SETITEMW : LVM_INSERTITEMW, 0, &item);
}

void CheckListPeer::MirrorChecks() {
    showing_ = true;
    const platform::Restoring done([this] { showing_ = false; });
    for (std::size_t row = 0; row < list_.Rows().size(); ++row) {
        const bool checked = list_.Rows()[row].checked;
        if (std::exchange(shown_[row].marked, true) && shown_[row].checked == checked)
            continue;
        shown_[row].checked = checked;
        LVITEMW item{};
        item.stateMask = LVIS_STATEIMAGEMASK;
        item.state = StateOf(checked);
        SendPointer(LVM_SETITEMSTATE, row, &item);
    }
}

void CheckListPeer::MirrorSelection() {
    showing_ = true;
    const platform::Restoring done([this] { showing_ = false; });
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    SendPointer(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), &item);
    if (list_.Selected() < 0)
        return;
    item.state = item.stateMask;
    SendPointer(LVM_SETITEMSTATE, static_cast<WPARAM>(list_.Selected()), &item);
    Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(list_.Selected()), FALSE);
}

void CheckListPeer::FitColumn() {
    RECT client{};
    GetClientRect(Window(), &client);
    Send(LVM_SETCOLUMNWIDTH, 0, client.right);
}

LRESULT CheckListPeer::Notify(NMHDR& header) {
    switch (header.code) {
    case LVN_ITEMCHANGING:
        return showing_ ? FALSE : Changing(reinterpret_cast<const NMLISTVIEW&>(header));
    case NM_CUSTOMDRAW:
        return Drawing(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
    default:
        return 0;
    }
}

/// A program wants it so, a screen reader perhaps: a gesture like any other.
LRESULT CheckListPeer::Changing(const NMLISTVIEW& change) {
    const UINT changes = change.uOldState ^ change.uNewState;
    if ((changes & LVIS_STATEIMAGEMASK) != 0) {
        list_.Toggle(change.iItem);
        return TRUE;
    }
    if ((changes & LVIS_SELECTED) == 0)
        return FALSE;
    if ((change.uNewState & LVIS_SELECTED) != 0)
        list_.Select(change.iItem);
    return TRUE;
}

LRESULT CheckListPeer::Drawing(NMLVCUSTOMDRAW& draw) const {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT)
        return CDRF_NOTIFYITEMDRAW;
    const auto row = static_cast<std::size_t>(draw.nmcd.dwItemSpec);
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT || row >= list_.Rows().size())
        return CDRF_DODEFAULT;
    if (static_cast<int>(row) == list_.Selected() && GetFocus() != Window()) {
        // Some themes leave next to nothing of it.
        draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);
        draw.clrTextBk = InactiveSelection();
        draw.clrText = GetSysColor(COLOR_WINDOWTEXT);
    }
    if (list_.Rows()[row].greyed || !list_.EffectivelyEnabled())
        draw.clrText = GetSysColor(COLOR_GRAYTEXT);
    return CDRF_DODEFAULT;
}

LRESULT CheckListPeer::Press(POINT at, bool twice) {
    LVHITTESTINFO hit{};
    hit.pt = at;
    SendPointer(LVM_HITTEST, 0, &hit);
    const bool onBox = (hit.flags & LVHT_ONITEM) == LVHT_ONITEMSTATEICON;
    const Life life = TakeLife();
    if (GetFocus() != Window())
        ::SetFocus(Window());
    // The field that had the focus may have kept it.
    if (hit.iItem < 0 || life.expired() || !list_.Focused())
        return 0;
    list_.Select(hit.iItem);
    if (life.expired())
        return 0;
    if (onBox)
        list_.Toggle(hit.iItem);
    else if (twice)
        list_.Activate(hit.iItem);
    return 0;
}

LRESULT CheckListPeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
        return Press({static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))},
                     message == WM_LBUTTONDBLCLK);
    case WM_LBUTTONUP:
        return 0;
    case WM_MOUSEWHEEL:
        if ((GetWindowLongW(Window(), GWL_STYLE) & WS_VSCROLL) != 0)
            return WindowPeer::Handle(message, wparam, lparam);
        return SendMessageW(GetParent(Window()), message, wparam, lparam);
    case WM_SYSCOLORCHANGE:
        ShowLook();
        return WindowPeer::Handle(message, wparam, lparam);
    default:
        return WindowPeer::Handle(message, wparam, lparam);
    }
}

} // namespace orv::controls::win32
