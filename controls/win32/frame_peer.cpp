#include "controls/win32/frame_peer.h"

#include "controls/win32/group_box.h"
#include "controls/win32/peer_host.h"
#include "platform/win32/window_class.h"

namespace orv::controls::win32 {
namespace {

constexpr wchar_t kClassName[] = L"OrvOutFormat.Frame";
constexpr int kCaptionIndent = 9;

const wchar_t* FrameClass() {
    WNDCLASSEXW type{};
    type.lpfnWndProc = &DefWindowProcW;
    type.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    type.lpszClassName = kClassName;
    platform::win32::RequireWindowClass(type);
    return kClassName;
}

template <typename T>
T& At(LPARAM lparam) {
    return *reinterpret_cast<T*>(lparam);
}

} // namespace

FramePeer::FramePeer(PeerHost& host, Frame& frame)
    : WindowPeer(host, frame, {FrameClass(), WS_CLIPCHILDREN, WS_EX_CONTROLPARENT}), frame_(frame) {
    Mirror(Aspect::Caption);
    MirrorScroll();
}

std::wstring FramePeer::WindowText() const {
    return frame_.AccessibleName() == kPageMark ? L"" : frame_.AccessibleName();
}

void FramePeer::Mirror(Aspect aspect) {
    WindowPeer::Mirror(aspect);
    switch (aspect) {
    case Aspect::Caption:
    case Aspect::Enabled:
        if (frame_.IsGroupBox())
            InvalidateRect(Window(), nullptr, TRUE);
        break;
    case Aspect::Name:
        SetWindowTextW(Window(), WindowText().c_str());
        break;
    case Aspect::Bounds:
        if (frame_.IsGroupBox())
            InvalidateRect(Window(), nullptr, TRUE);
        MirrorScroll();
        break;
    case Aspect::Scroll:
        MirrorScroll();
        break;
    default:
        break;
    }
}

void FramePeer::MirrorScroll() {
    const auto show = [this](int bar, bool wanted, int content, int page, int position) {
        const LONG style = bar == SB_VERT ? WS_VSCROLL : WS_HSCROLL;
        const bool has = (GetWindowLongW(Window(), GWL_STYLE) & style) != 0;
        if (wanted) {
            SCROLLINFO info{};
            info.cbSize = sizeof info;
            info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
            info.nMax = content - 1;
            info.nPage = static_cast<UINT>(page);
            info.nPos = position;
            SetScrollInfo(Window(), bar, &info, TRUE);
        }
        if (has != wanted)
            ShowScrollBar(Window(), bar, wanted);
    };
    const Size view = frame_.View();
    show(SB_VERT, frame_.ScrollsDown(), frame_.ContentSize().height, view.height, frame_.Scroll().y);
    show(SB_HORZ, frame_.ScrollsAcross(), frame_.ContentSize().width, view.width, frame_.Scroll().x);
}

void FramePeer::ScrollBy(int bar, WPARAM wparam) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS;
    GetScrollInfo(Window(), bar, &info);
    const bool down = bar == SB_VERT;
    Point to = frame_.Scroll();
    int& position = down ? to.y : to.x;
    const int line = 2 * Host().LineHeight();
    const int page = (down ? frame_.View().height : frame_.View().width) - line;
    switch (LOWORD(wparam)) {
    case SB_LINEUP:
        position -= line;
        break;
    case SB_LINEDOWN:
        position += line;
        break;
    case SB_PAGEUP:
        position -= page;
        break;
    case SB_PAGEDOWN:
        position += page;
        break;
    case SB_TOP:
        position = 0;
        break;
    case SB_BOTTOM:
        position = down ? frame_.ContentSize().height : frame_.ContentSize().width;
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        position = info.nTrackPos;
        break;
    default:
        return;
    }
    frame_.ScrollTo(to);
}

LRESULT FramePeer::Wheel(WPARAM wparam, LPARAM lparam) {
    if (!frame_.ScrollsDown())
        return Default(WM_MOUSEWHEEL, wparam, lparam); // on to the parent
    wheel_ += GET_WHEEL_DELTA_WPARAM(wparam);
    const int notches = wheel_ / WHEEL_DELTA;
    wheel_ -= notches * WHEEL_DELTA;
    UINT lines = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    const int step = lines == WHEEL_PAGESCROLL ? frame_.View().height : static_cast<int>(lines) * Host().LineHeight();
    frame_.ScrollTo({frame_.Scroll().x, frame_.Scroll().y - notches * step});
    return 0;
}

void FramePeer::Erase(HDC dc) {
    RECT client{};
    GetClientRect(Window(), &client);
    FillRect(dc, &client, GetSysColorBrush(COLOR_BTNFACE));
}

void FramePeer::PaintOn(HDC dc) {
    if (frame_.IsGroupBox())
        PaintGroupBox(dc, {Window(), Host().Font(), frame_.Caption(), Host().LineHeight(), Host().Scale(kCaptionIndent),
                           frame_.EffectivelyEnabled()});
}

LRESULT FramePeer::Paint() {
    PAINTSTRUCT paint{};
    const HDC dc = BeginPaint(Window(), &paint);
    PaintOn(dc);
    EndPaint(Window(), &paint);
    return 0;
}

LRESULT FramePeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_COMMAND:
        if (WindowPeer* child = Host().PeerOf(reinterpret_cast<HWND>(lparam)))
            child->Command(HIWORD(wparam));
        return 0;
    case WM_NOTIFY:
        if (WindowPeer* child = Host().PeerOf(At<NMHDR>(lparam).hwndFrom))
            return child->Notify(At<NMHDR>(lparam));
        return 0;
    case WM_DRAWITEM:
        if (WindowPeer* child = Host().PeerOf(At<DRAWITEMSTRUCT>(lparam).hwndItem))
            child->Draw(At<DRAWITEMSTRUCT>(lparam));
        return TRUE;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
        if (WindowPeer* child = Host().PeerOf(reinterpret_cast<HWND>(lparam)))
            return reinterpret_cast<LRESULT>(child->Colour(reinterpret_cast<HDC>(wparam)));
        return Default(message, wparam, lparam);
    case WM_ERASEBKGND:
        Erase(reinterpret_cast<HDC>(wparam));
        return TRUE;
    case WM_PAINT:
        return Paint();
    case WM_PRINTCLIENT:
        Erase(reinterpret_cast<HDC>(wparam));
        PaintOn(reinterpret_cast<HDC>(wparam));
        return 0;
    case WM_VSCROLL:
        ScrollBy(SB_VERT, wparam);
        return 0;
    case WM_HSCROLL:
        ScrollBy(SB_HORZ, wparam);
        return 0;
    case WM_MOUSEWHEEL:
        return Wheel(wparam, lparam);
    default:
        return WindowPeer::Handle(message, wparam, lparam);
    }
}

} // namespace orv::controls::win32
