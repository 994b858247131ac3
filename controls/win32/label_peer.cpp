#include "controls/win32/label_peer.h"

#include "controls/simple_widgets.h"
#include "controls/win32/peer_host.h"

namespace orv::controls::win32 {
namespace {

DWORD StyleOf(const Widget& label) {
    // Hints quote what the user typed; an ampersand in them is just that.
    const DWORD hint = label.GetKind() == Kind::HintLine ? SS_NOPREFIX : 0;
    return SS_LEFT | SS_CENTERIMAGE | SS_ENDELLIPSIS | hint;
}

} // namespace

LabelPeer::LabelPeer(PeerHost& host, Widget& label) : WindowPeer(host, label, {L"STATIC", StyleOf(label)}) {
    WindowPeer::Mirror(Aspect::Caption);
    if (static_cast<const Label&>(label).Heading())
        MakeHeading();
}

std::wstring LabelPeer::WindowText() const {
    return Subject().GetKind() == Kind::HintLine ? Subject().PlainCaption() : Subject().Caption();
}

void LabelPeer::Mirror(Aspect aspect) {
    WindowPeer::Mirror(aspect);
    // The system draws only the part that is new, and an ellipsis moves with the width.
    if (aspect == Aspect::Bounds)
        InvalidateRect(Window(), nullptr, TRUE);
}

void LabelPeer::MakeHeading() {
    LOGFONTW font{};
    GetObjectW(Host().Font(), sizeof font, &font);
    font.lfWeight = FW_BOLD;
    heading_.Reset(CreateFontIndirectW(&font));
    if (heading_.Get())
        Send(WM_SETFONT, reinterpret_cast<WPARAM>(heading_.Get()), FALSE);
}

} // namespace orv::controls::win32
