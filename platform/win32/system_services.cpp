#include "platform/win32/system_services.h"

#include "platform/guarded.h"
#include "platform/win32/module.h"

namespace orv::platform::win32 {

SystemServices::SystemServices(ModalHooks hooks)
    : hooks_(std::move(hooks)), context_(OwnModule()), boxes_(context_, hooks_), desktop_(context_, hooks_) {
    // Handlers guard themselves under their own names; this is for a task that forgot to.
    pump_.SetFailureHook([this] { ReportCurrentException(boxes_, L"AddOnControl.Post"); });
}

void SystemServices::Close() {
    pump_.Close();
    boxes_.Close();
}

} // namespace orv::platform::win32
