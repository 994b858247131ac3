#include "controls/win32/peer_host.h"

#include "controls/win32/button_peer.h"
#include "controls/win32/check_list_peer.h"
#include "controls/win32/combo_peer.h"
#include "controls/win32/drop_button_peer.h"
#include "controls/win32/frame_peer.h"
#include "controls/win32/label_peer.h"
#include "controls/win32/mark_peer.h"
#include "controls/win32/mb_edit_peer.h"
#include "controls/win32/number_peer.h"
#include "controls/win32/picture_list_peer.h"
#include "controls/win32/picture_peer.h"
#include "controls/win32/strip_peer.h"
#include "controls/win32/tab_peer.h"
#include "controls/win32/text_peer.h"
#include "controls/win32/toolbar_peer.h"
#include "controls/win32/tree_peer.h"
#include "platform/guarded.h"

namespace orv::controls::win32 {
namespace {

constexpr int kFirstId = 100;
constexpr int kTipWidth = 360;

// Only sizes, fonts and colours concern the windows; the message comes for a hundred other settings as well.
bool ChangesFont(UINT message, WPARAM wparam) {
    return message == WM_DPICHANGED_AFTERPARENT || message == WM_THEMECHANGED ||
           (message == WM_SETTINGCHANGE && (wparam == SPI_SETNONCLIENTMETRICS || wparam == SPI_SETHIGHCONTRAST));
}

// The system registers a themed class when it is first asked for; two threads that ask at once may find it half done.
void AskForClasses(const platform::win32::ActivationContext& context) {
    static const bool asked = [&context] {
        const platform::win32::ActivationScope active(context);
        WNDCLASSEXW about{};
        about.cbSize = sizeof about;
        for (const wchar_t* name : {WC_BUTTONW, WC_STATICW, WC_EDITW, WC_COMBOBOXW, WC_LISTBOXW, WC_TREEVIEWW,
                                    WC_LISTVIEWW, WC_TABCONTROLW, TOOLBARCLASSNAMEW, TOOLTIPS_CLASSW, UPDOWN_CLASSW})
            GetClassInfoExW(nullptr, name, &about);
        return true;
    }();
    static_cast<void>(asked);
}

} // namespace

PeerHost::PeerHost(Form& form, const platform::win32::ActivationContext& context, PeerHooks hooks)
    : form_(form), context_(context), hooks_(std::move(hooks)),
      richEdit_(LoadLibraryExW(L"Msftedit.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {
    AskForClasses(context);
}

PeerHost::~PeerHost() {
    Detach();
}

void PeerHost::Attach(HWND parent) {
    parent_ = parent;
    metrics_.Refresh(parent);
    images_.Refresh(Dpi());
    {
        const platform::win32::ActivationScope active(context_);
        tips_.Create(parent, Font(), Scale(kTipWidth));
    }
    if (hooks_.layout)
        hooks_.layout();
    form_.AttachPeers(*this);
}

void PeerHost::Detach() {
    if (!Attached())
        return;
    form_.DetachPeers();
    tips_.Destroy();
    seen_ = {};
    parent_ = nullptr;
}

void PeerHost::Remake() {
    if (!Attached() || remaking_)
        return;
    remaking_ = true;
    const platform::Restoring done([this] { remaking_ = false; });
    const HWND parent = parent_;
    const bool hadFocus = Ours(GetFocus());
    Detach();
    Attach(parent);
    if (hadFocus)
        TakeFocus();
}

std::optional<LRESULT> PeerHost::HandleControlMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    if (!Attached())
        return std::nullopt;
    if (message == FindMessage())
        return reinterpret_cast<LRESULT>(FindByAtom(static_cast<ATOM>(wparam), static_cast<int>(lparam)));
    if (ChangesFont(message, wparam)) {
        Remake();
        return 0;
    }
    switch (message) {
    case WM_SYSCOLORCHANGE:
        for (const auto& [window, peer] : peers_) {
            SendMessageW(window, message, wparam, lparam);
            InvalidateRect(window, nullptr, TRUE);
        }
        return 0;
    case WM_SETFOCUS:
        TakeFocus();
        return 0;
    default:
        return std::nullopt;
    }
}

void PeerHost::TakeFocus() {
    if (Widget* focused = form_.Focused(); focused != nullptr && focused->GetPeer() != nullptr)
        focused->GetPeer()->TakeFocus();
    else
        form_.FocusFirst();
}

HWND PeerHost::WindowOf(std::wstring_view name, int index) const {
    Widget* widget = form_.Root().Find(name, index);
    if (widget == nullptr)
        return ArrowsOf(name, index);
    return widget->GetPeer() != nullptr ? static_cast<WindowPeer*>(widget->GetPeer())->Window() : nullptr;
}

HWND PeerHost::ArrowsOf(std::wstring_view name, int index) const {
    constexpr std::wstring_view kArrows = L"ud";
    if (!name.starts_with(kArrows))
        return nullptr;
    Widget* box = form_.Root().Find(L"txt" + std::wstring(name.substr(kArrows.size())), index);
    if (box == nullptr || box->GetKind() != Kind::NumberBox || box->GetPeer() == nullptr)
        return nullptr;
    return static_cast<NumberPeer*>(box->GetPeer())->Arrows();
}

// Both kinds of atom share their numbers. Other processes can only mean the global one; a name that is no control's is
// none of theirs.
HWND PeerHost::FindByAtom(ATOM atom, int index) const {
    wchar_t name[256] = {};
    if (GlobalGetAtomNameW(atom, name, ARRAYSIZE(name)) != 0)
        if (const HWND found = WindowOf(name, index))
            return found;
    return GetAtomNameW(atom, name, ARRAYSIZE(name)) != 0 ? WindowOf(name, index) : nullptr;
}

UINT PeerHost::FindMessage() {
    static const UINT message = RegisterWindowMessageW(L"OrvFindControl");
    return message;
}

std::unique_ptr<Peer> PeerHost::Make(Widget& widget) {
    switch (widget.GetKind()) {
    case Kind::Frame:
        return std::make_unique<FramePeer>(*this, static_cast<Frame&>(widget));
    case Kind::Label:
    case Kind::HintLine:
        return std::make_unique<LabelPeer>(*this, widget);
    case Kind::Picture:
        return std::make_unique<PicturePeer>(*this, static_cast<Picture&>(widget));
    case Kind::WarningStrip:
    case Kind::OutputStrip:
        return std::make_unique<StripPeer>(*this, widget);
    case Kind::Button:
        return std::make_unique<ButtonPeer>(*this, static_cast<Button&>(widget));
    case Kind::DropButton:
        return std::make_unique<DropButtonPeer>(*this, static_cast<DropButton&>(widget));
    case Kind::CheckBox:
    case Kind::OptionButton:
        return std::make_unique<MarkPeer>(*this, widget);
    case Kind::ComboBox:
        return std::make_unique<ComboPeer>(*this, static_cast<ComboBox&>(widget));
    case Kind::Tree:
        return std::make_unique<TreePeer>(*this, static_cast<Tree&>(widget));
    case Kind::MBEdit:
        return std::make_unique<MBEditPeer>(*this, static_cast<MBEdit&>(widget));
    case Kind::NumberBox:
        return std::make_unique<NumberPeer>(*this, static_cast<NumberBox&>(widget));
    case Kind::PictureList:
        return std::make_unique<PictureListPeer>(*this, static_cast<PictureList&>(widget));
    case Kind::CheckList:
        return std::make_unique<CheckListPeer>(*this, static_cast<CheckList&>(widget));
    case Kind::TabStrip:
        return std::make_unique<TabPeer>(*this, static_cast<TabStrip&>(widget));
    case Kind::Toolbar:
        return std::make_unique<ToolbarPeer>(*this, static_cast<Toolbar&>(widget));
    case Kind::TextBox:
        return std::make_unique<TextPeer>(*this, static_cast<TextBox&>(widget));
    }
    return nullptr;
}

int PeerHost::IdOf(const Widget& widget) {
    const int next = kFirstId + static_cast<int>(ids_.size());
    return ids_.try_emplace({widget.Name(), widget.Index()}, next).first->second;
}

WindowPeer* PeerHost::PeerOf(HWND window) const {
    const auto found = peers_.find(window);
    return found == peers_.end() ? nullptr : found->second;
}

bool PeerHost::Ours(HWND window) const {
    return window != nullptr && Attached() && IsChild(parent_, window);
}

KeyOutcome PeerHost::Route(const KeyEvent& event) {
    if (event.character == 0 || event.alt)
        ShowCues();
    return hooks_.route ? hooks_.route(event) : form_.RouteKey(event);
}

void PeerHost::ShowCues() {
    // Whoever works with the keyboard sees access keys and the focus, also in a container that forgets to say so.
    SendMessageW(parent_, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS | UISF_HIDEACCEL), 0);
}

bool PeerHost::TranslateKey(MSG& message) {
    if (!KeyMessages::IsKeyMessage(message.message) || !Ours(message.hwnd))
        return false;
    const KeyMessages::Result read = keys_.Read(message.message, message.wParam);
    if (read.reading != KeyMessages::Reading::Event)
        return read.reading == KeyMessages::Reading::Repeat;
    const KeyOutcome outcome = Route(read.event);
    if (outcome == KeyOutcome::Handled || !Attached())
        return true;
    const bool leave = outcome == KeyOutcome::LeaveNext || outcome == KeyOutcome::LeaveBack;
    if (outcome != KeyOutcome::Native && hooks_.passOn && hooks_.passOn(message, leave))
        return true;
    if (leave)
        return true; // nowhere to go: the focus stays
    keys_.ExpectCharacterOf(read.event);
    seen_ = {message.hwnd, message.message, message.wParam, message.lParam};
    seenAs_ = outcome == KeyOutcome::Native ? KeyVerdict::Window : KeyVerdict::Nobody;
    if (outcome != KeyOutcome::Native)
        return false;
    TranslateMessage(&message);
    DispatchMessageW(&message);
    return true;
}

PeerHost::KeyVerdict PeerHost::KeyArrived(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const Seen here{window, message, wparam, lparam};
    if (here == std::exchange(seen_, {}))
        return seenAs_;
    const KeyMessages::Result read = keys_.Read(message, wparam);
    if (read.reading == KeyMessages::Reading::Repeat)
        return KeyVerdict::Done;
    if (read.reading == KeyMessages::Reading::Other)
        return KeyVerdict::Nobody;
    // The container's loop has made the character already.
    keys_.ExpectCharacterOf(read.event);
    switch (const KeyOutcome outcome = Route(read.event)) {
    case KeyOutcome::Handled:
        return KeyVerdict::Done;
    case KeyOutcome::Native:
        return KeyVerdict::Window;
    default: {
        MSG copy{};
        copy.hwnd = window;
        copy.message = message;
        copy.wParam = wparam;
        copy.lParam = lparam;
        const bool leave = outcome != KeyOutcome::NotHandled;
        const bool taken = Attached() && hooks_.passOn && hooks_.passOn(copy, leave);
        return taken || leave ? KeyVerdict::Done : KeyVerdict::Nobody;
    }
    }
}

void PeerHost::FocusGained(Widget& widget) {
    if (hooks_.activate && !remaking_)
        hooks_.activate();
    form_.FocusArrived(widget);
}

void PeerHost::FocusWentTo(HWND window) {
    // Boxes, menus and other programs borrow the focus; only a neighbour inside the container's window takes it.
    if (!Attached() || remaking_ || window == nullptr || window == parent_ || Ours(window))
        return;
    if (GetAncestor(window, GA_ROOT) == GetAncestor(parent_, GA_ROOT))
        form_.FocusLeft();
}

void PeerHost::ReportFailure() {
    try {
        platform::ReportCurrentException(form_.Boxes(), L"AddOnControl.Window");
    } catch (...) {
        // A window procedure is the last place where it could have been told.
    }
}

} // namespace orv::controls::win32
