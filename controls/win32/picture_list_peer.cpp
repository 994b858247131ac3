#include "controls/win32/picture_list_peer.h"

#include <algorithm>

#include "controls/win32/peer_host.h"
#include "platform/guarded.h"
#include "text/texts.h"

namespace orv::controls::win32 {
namespace {

constexpr DWORD kStyle =
    LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS | WS_TABSTOP;
constexpr DWORD kExtended = LVS_EX_DOUBLEBUFFER | LVS_EX_FULLROWSELECT;
constexpr UINT_PTR kTimer = 1;
constexpr UINT kTick = 50;

Point PointOf(LPARAM lparam) {
    return {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
}

bool MayScroll(UINT message) {
    return message == WM_VSCROLL || message == WM_MOUSEWHEEL || message == LVM_SCROLL || message == LVM_ENSUREVISIBLE;
}

void Append(HMENU menu, PictureList::Command command, text::Id id, const PictureList& list) {
    AppendMenuW(menu, MF_STRING | (list.CanDo(command) ? MF_ENABLED : MF_GRAYED), static_cast<UINT_PTR>(command) + 1,
                text::Load(id).c_str());
}

} // namespace

PictureListPeer::PictureListPeer(PeerHost& host, PictureList& list)
    : WindowPeer(host, list, {WC_LISTVIEWW, kStyle, WS_EX_CLIENTEDGE}), list_(list), look_(host, list),
      rows_(Window()) {
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, kExtended, kExtended);
    ShowColours();
    rows_.Prepare(PictureList::RowHeight(host));
    Sync();
    WindowPeer::Mirror(Aspect::Name);
}

PictureListPeer::~PictureListPeer() {
    LetGo();
    list_.CancelDrag();
}

void PictureListPeer::ShowColours() {
    Send(LVM_SETBKCOLOR, 0, static_cast<LPARAM>(PictureListLook::Background(list_.EffectivelyEnabled())));
    InvalidateRect(Window(), nullptr, TRUE);
}

Point PictureListPeer::Inset() const {
    POINT origin{};
    ClientToScreen(Window(), &origin);
    RECT window{};
    GetWindowRect(Window(), &window);
    return {static_cast<int>(origin.x - window.left), static_cast<int>(origin.y - window.top)};
}

void PictureListPeer::TellGeometry() {
    const RECT client = rows_.Client();
    const Point inset = Inset();
    RowGeometry geometry;
    geometry.view = {inset.x, inset.y, static_cast<int>(client.right), static_cast<int>(client.bottom)};
    geometry.rowHeight = PictureList::RowHeight(Host());
    if (const RECT row = rows_.AreaOf(0); row.bottom > row.top)
        geometry.rowHeight = static_cast<int>(row.bottom - row.top);
    geometry.dragDistance = std::max(GetSystemMetrics(SM_CXDRAG), Host().Scale(4));
    list_.SetGeometry(geometry);
}

void PictureListPeer::Sync() {
    {
        showing_ = true;
        const platform::Restoring done([this] { showing_ = false; });
        rows_.SetCount(list_.Core().Count());
        rows_.FillWidth();
    }
    Hover({-1, -1});
    TellGeometry();
    Scroll();
    Select();
    InvalidateRect(Window(), nullptr, TRUE);
}

void PictureListPeer::Select() {
    showing_ = true;
    const platform::Restoring done([this] { showing_ = false; });
    rows_.Select(list_.Selected());
    // Of its own accord the window draws less than the whole width anew.
    for (const int row : {std::exchange(selected_, list_.Selected()), list_.Selected()})
        if (const RECT area = rows_.AreaOf(row); row >= 0)
            InvalidateRect(Window(), &area, FALSE);
}

void PictureListPeer::Scroll() {
    showing_ = true;
    const platform::Restoring done([this] { showing_ = false; });
    rows_.ScrollTo(list_.Core().Top());
    if (list_.Core().Dragging()) // the mark has gone along with the rows
        InvalidateRect(Window(), nullptr, FALSE);
}

void PictureListPeer::RunDrag() {
    if (list_.Core().Dragging() && ticked_ == 0) {
        ticked_ = GetTickCount64();
        SetTimer(Window(), kTimer, kTick, nullptr);
    } else if (!list_.Core().Dragging() && ticked_ != 0) {
        ticked_ = 0;
        KillTimer(Window(), kTimer);
    }
    InvalidateRect(Window(), nullptr, FALSE);
}

void PictureListPeer::Ticked() {
    const ULONGLONG now = GetTickCount64();
    list_.Tick(static_cast<int>(std::min<ULONGLONG>(now - std::exchange(ticked_, now), 500)));
}

void PictureListPeer::TellTop() {
    if (!showing_)
        list_.ScrollTo(rows_.Top());
}

void PictureListPeer::Mirror(Aspect aspect) {
    switch (aspect) {
    case Aspect::Items:
        Sync();
        break;
    case Aspect::Selection:
        Select();
        break;
    case Aspect::Scroll:
        Scroll();
        break;
    case Aspect::Mark:
        RunDrag();
        break;
    case Aspect::Enabled:
        WindowPeer::Mirror(aspect);
        ShowColours();
        break;
    default:
        WindowPeer::Mirror(aspect);
    }
}

LRESULT PictureListPeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONUP:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_MOUSEMOVE:
        return Pointer(message, lparam);
    case WM_RBUTTONUP:
        return DefWindowProcW(Window(), message, wparam, lparam); // asks for the menu
    case WM_CONTEXTMENU:
        RunMenu(lparam);
        return 0;
    case WM_CAPTURECHANGED:
        if (std::exchange(captured_, false))
            list_.CancelDrag();
        return 0;
    case WM_TIMER:
        if (wparam == kTimer) {
            Ticked();
            return 0;
        }
        break;
    case WM_SYSCOLORCHANGE:
        ShowColours();
        break;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        InvalidateRect(Window(), nullptr, FALSE);
        break;
    case WM_MOUSEWHEEL:
        if (list_.Core().LastTop() == 0) // nothing to scroll here: the page
            return SendMessageW(GetParent(Window()), message, wparam, lparam);
        break;
    default:
        break;
    }
    const Life life = TakeLife();
    const LRESULT result = WindowPeer::Handle(message, wparam, lparam);
    if (life.expired())
        return result;
    if (MayScroll(message))
        TellTop();
    if (message == WM_SIZE) {
        rows_.FillWidth();
        TellGeometry();
        Scroll();
    }
    return result;
}

LRESULT PictureListPeer::Pointer(UINT message, LPARAM lparam) {
    const Point inset = Inset();
    const Point inside = PointOf(lparam);
    const Point at{inside.x + inset.x, inside.y + inset.y};
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        // The second press of two may be the first of a drag as well; the widget tells when it is let go.
        Pressed(at, message == WM_LBUTTONDBLCLK);
        break;
    case WM_LBUTTONUP:
        LetGo();
        list_.Release(at);
        break;
    case WM_MOUSEMOVE:
        Hover(at);
        list_.PointTo(at);
        ShowPointer(at);
        if (captured_ && list_.Core().GetState() == PictureListCore::State::Idle)
            LetGo();
        break;
    default: // the right button
        list_.CancelDrag();
        if (const Life life = TakeLife(); TakesFocus() && !life.expired())
            list_.Select(list_.Core().RowAt(at));
        break;
    }
    return 0;
}

bool PictureListPeer::TakesFocus() {
    const Life life = TakeLife();
    TakeFocus();
    // Another widget may have refused to let it go.
    return !life.expired() && list_.Focused();
}

void PictureListPeer::Pressed(Point at, bool twice) {
    const Life life = TakeLife();
    if (!TakesFocus())
        return;
    if (list_.Core().RowAt(at) >= 0) {
        SetCapture(Window());
        captured_ = true;
    }
    list_.Press(at, twice);
}

void PictureListPeer::LetGo() {
    if (std::exchange(captured_, false))
        ReleaseCapture();
}

void PictureListPeer::Hover(Point at) {
    const int row = list_.Core().Dragging() ? -1 : list_.Core().RowAt(at);
    if (row == tipRow_)
        return;
    tipRow_ = row;
    const bool cut = row >= 0 && look_.IsCut(row, static_cast<int>(rows_.Client().right));
    Host().Tips().Set(Window(), row >= 0 ? list_.TipOf(row, cut) : list_.ToolTip());
}

void PictureListPeer::ShowPointer(Point at) const {
    if (list_.Core().GetState() != PictureListCore::State::Carrying)
        return;
    const bool nowhere = list_.Core().Gap() < 0 && list_.Core().RowAt(at) < 0;
    SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(nowhere ? IDC_NO : IDC_ARROW)));
}

POINT PictureListPeer::MenuPlace(LPARAM lparam) const {
    if (lparam != -1)
        return {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
    const LONG below = rows_.AreaOf(list_.Selected()).bottom;
    POINT place{Host().Scale(8), std::clamp<LONG>(below, 0, rows_.Client().bottom)};
    ClientToScreen(Window(), &place);
    return place;
}

void PictureListPeer::RunMenu(LPARAM lparam) {
    if (list_.Selected() < 0 || !(list_.onMove || list_.onDelete))
        return;
    const platform::win32::OwnedMenu menu(CreatePopupMenu());
    Append(menu.Get(), PictureList::Command::MoveUp, text::Id::MenuMoveUp, list_);
    Append(menu.Get(), PictureList::Command::MoveDown, text::Id::MenuMoveDown, list_);
    AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
    Append(menu.Get(), PictureList::Command::Delete, text::Id::MenuDelete, list_);
    const POINT place = MenuPlace(lparam);
    const Life life = TakeLife();
    const int chosen =
        TrackPopupMenuEx(menu.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, place.x, place.y, Window(), nullptr);
    if (chosen > 0 && !life.expired())
        list_.Do(static_cast<PictureList::Command>(chosen - 1));
}

LRESULT PictureListPeer::Notify(NMHDR& header) {
    switch (header.code) {
    case NM_CUSTOMDRAW:
        return Drawing(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
    case LVN_GETDISPINFOW:
        return Wanted(reinterpret_cast<NMLVDISPINFOW&>(header));
    case LVN_ITEMCHANGED:
        return Changed(reinterpret_cast<const NMLISTVIEW&>(header));
    case LVN_ODFINDITEMW:
        return -1;
    default:
        return 0;
    }
}

LRESULT PictureListPeer::Drawing(NMLVCUSTOMDRAW& draw) {
    const bool focused = GetFocus() == Window();
    switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
        return CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPREPAINT: {
        const int row = static_cast<int>(draw.nmcd.dwItemSpec);
        if (row < list_.Core().Count())
            look_.DrawRow(draw.nmcd.hdc, rows_.AreaOf(row), row, focused);
        return CDRF_SKIPDEFAULT;
    }
    case CDDS_POSTPAINT:
        look_.DrawRest(draw.nmcd.hdc, rows_.Client(), focused);
        if (const int gap = list_.Core().Gap(); gap >= 0)
            look_.DrawMark(draw.nmcd.hdc, rows_.Client(), list_.Core().GapLine(gap) - list_.Core().Geometry().view.y);
        return CDRF_DODEFAULT;
    default:
        return CDRF_DODEFAULT;
    }
}

/// The words of a row are for whoever reads the screen aloud; drawing does not ask for them.
LRESULT PictureListPeer::Wanted(NMLVDISPINFOW& wanted) const {
    const int row = wanted.item.iItem;
    if ((wanted.item.mask & LVIF_TEXT) == 0 || wanted.item.cchTextMax <= 0 || row < 0 || row >= list_.Core().Count())
        return 0;
    const std::wstring text = std::to_wstring(row + 1) + L" " + list_.Rows()[static_cast<std::size_t>(row)].caption;
    const auto length = std::min(text.size(), static_cast<std::size_t>(wanted.item.cchTextMax) - 1);
    std::copy_n(text.c_str(), length, wanted.item.pszText);
    wanted.item.pszText[length] = 0;
    return 0;
}

LRESULT PictureListPeer::Changed(const NMLISTVIEW& change) {
    // An assistive program selects by the window's own means.
    const bool chosen = (change.uNewState & ~change.uOldState & LVIS_SELECTED) != 0;
    if (showing_ || !chosen || change.iItem < 0)
        return 0;
    const Life life = TakeLife();
    list_.Select(change.iItem);
    if (!life.expired())
        Select();
    return 0;
}

} // namespace orv::controls::win32
