#pragma once
// The wrapper round every host call and every event handler.
#include <string>
#include <string_view>

#include "platform/services.h"
#include "text/error.h"
#include "text/restoring.h"

namespace orv::platform {

/// Title "Output Format Addon", text: handler, line break, number, ": ", description. Survives want of memory.
void ReportError(MessageBoxes& boxes, std::wstring_view handler, std::int32_t number, std::wstring_view description);

/// Reports the exception in flight under `handler`; an abandoned wait passes silently. Call from a catch block only.
void ReportCurrentException(MessageBoxes& boxes, std::wstring_view handler);

/// Runs `action`; a failure is shown under `handler` (qualified, "AddOnControl.cmdApply_Click") and swallowed.
/// Answers whether `action` ran to its end.
template <typename Action>
bool Guarded(MessageBoxes& boxes, std::wstring_view handler, Action&& action) {
    try {
        action();
        return true;
    } catch (...) {
        ReportCurrentException(boxes, handler);
        return false;
    }
}

using orv::Restoring;

} // namespace orv::platform
