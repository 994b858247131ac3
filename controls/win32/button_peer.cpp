#include "controls/win32/button_peer.h"

namespace orv::controls::win32 {

ButtonPeer::ButtonPeer(PeerHost& host, Button& button)
    : WindowPeer(host, button, {L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP}), button_(button) {
    Mirror(Aspect::Caption);
}

void ButtonPeer::Command(WORD code) {
    if (code == BN_CLICKED)
        button_.Press();
}

} // namespace orv::controls::win32
