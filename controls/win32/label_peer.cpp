#include "controls/win32/label_peer.h"

namespace orv::controls::win32 {
namespace {

DWORD StyleOf(const Widget& label) {
    // Hints quote what the user typed; an ampersand in them is just that.
    const DWORD hint = label.GetKind() == Kind::HintLine ? SS_NOPREFIX : 0;
    return SS_LEFT | SS_CENTERIMAGE | SS_ENDELLIPSIS | hint;
}

} // namespace

LabelPeer::LabelPeer(PeerHost& host, Widget& label) : WindowPeer(host, label, {L"STATIC", StyleOf(label)}) {
    Mirror(Aspect::Caption);
}

} // namespace orv::controls::win32
