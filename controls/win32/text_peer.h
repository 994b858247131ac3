#pragma once
#include "controls/text_box.h"
#include "controls/win32/edit_peer.h"

namespace orv::controls::win32 {

class TextPeer final : public EditPeer {
  public:
    TextPeer(PeerHost& host, TextBox& box) : EditPeer(host, box, ES_READONLY), box_(box) { ShowContent(); }

  protected:
    const std::wstring& Content() const override { return box_.Text(); }

  private:
    TextBox& box_;
};

} // namespace orv::controls::win32
