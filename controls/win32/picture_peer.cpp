#include "controls/win32/picture_peer.h"

#include "controls/win32/peer_host.h"
#include "platform/win32/module.h"

namespace orv::controls::win32 {
namespace {

HICON Load(int icon, int side) {
    return static_cast<HICON>(
        LoadImageW(platform::win32::OwnModule(), MAKEINTRESOURCEW(icon), IMAGE_ICON, side, side, LR_DEFAULTCOLOR));
}

} // namespace

PicturePeer::PicturePeer(PeerHost& host, Picture& picture)
    : WindowPeer(host, picture, {L"STATIC", SS_ICON | SS_REALSIZECONTROL}),
      icon_(Load(picture.Icon(), host.Scale(Picture::kSide))) {
    Send(STM_SETICON, reinterpret_cast<WPARAM>(icon_.Get()));
}

PicturePeer::~PicturePeer() {
    Send(STM_SETICON, 0);
}

} // namespace orv::controls::win32
