#include "controls/win32/mark_peer.h"

namespace orv::controls::win32 {
namespace {

WPARAM MarkOf(const Widget& widget) {
    if (widget.GetKind() != Kind::CheckBox)
        return static_cast<const OptionButton&>(widget).Chosen() ? BST_CHECKED : BST_UNCHECKED;
    const auto& box = static_cast<const CheckBox&>(widget);
    if (box.Undetermined())
        return BST_INDETERMINATE;
    return box.Checked() ? BST_CHECKED : BST_UNCHECKED;
}

// The plain styles, not the automatic ones: the widget says what a click does.
DWORD StyleOf(const Widget& widget) {
    return WS_TABSTOP | (widget.GetKind() == Kind::CheckBox ? BS_3STATE : BS_RADIOBUTTON);
}

} // namespace

MarkPeer::MarkPeer(PeerHost& host, Widget& widget) : WindowPeer(host, widget, {L"BUTTON", StyleOf(widget)}) {
    Mirror(Aspect::Caption);
    Mirror(Aspect::Check);
}

void MarkPeer::Mirror(Aspect aspect) {
    if (aspect == Aspect::Check)
        Send(BM_SETCHECK, MarkOf(Subject()));
    else
        WindowPeer::Mirror(aspect);
}

void MarkPeer::Command(WORD code) {
    if (code != BN_CLICKED || focusing_)
        return;
    if (Subject().GetKind() == Kind::CheckBox)
        static_cast<CheckBox&>(Subject()).Toggle();
    else
        static_cast<OptionButton&>(Subject()).Choose();
}

LRESULT MarkPeer::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
    if (message != WM_SETFOCUS)
        return WindowPeer::Handle(message, wparam, lparam);
    // An option button reports a click when it gets the focus. Moving the focus chooses nothing here.
    const Life life = TakeLife();
    focusing_ = true;
    const LRESULT result = WindowPeer::Handle(message, wparam, lparam);
    if (!life.expired())
        focusing_ = false;
    return result;
}

} // namespace orv::controls::win32
