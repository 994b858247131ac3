#pragma once
#include "platform/win32/system.h"

#include <functional>

#include "controls/form.h"

namespace orv::controls::win32 {

/// The system's clipboard: text for everybody, the bytes in a format of our own. One that another program holds
/// open counts as empty.
class SystemClipboard final : public Clipboard {
  public:
    explicit SystemClipboard(std::function<HWND()> owner);
    bool Put(const ClipboardContent& content) override;
    ClipboardContent Get() override;

  private:
    std::function<HWND()> owner_;
    UINT bytesFormat_;
};

} // namespace orv::controls::win32
