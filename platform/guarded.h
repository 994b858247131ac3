#pragma once
// The wrapper round every host call and every event handler.
#include <string>
#include <string_view>

#include "platform/services.h"
#include "text/error.h"
#include "text/restoring.h"

namespace orv::platform {

/// A handler's qualified name in pieces, "AddOnControl." "ud" "MinLength" "_Change", put together only when a failure
/// is told. Refers to texts that live as long as the call it is made for.
struct HandlerName {
    using Piece = std::wstring_view;
    // NOLINTBEGIN(google-explicit-constructor): most handlers go by one plain name.
    HandlerName(const wchar_t* whole) : stem(whole) {}
    HandlerName(const std::wstring& whole) : stem(whole) {}
    HandlerName(Piece whole) : stem(whole) {}
    // NOLINTEND(google-explicit-constructor)
    HandlerName(Piece name, Piece suffix) : stem(name), event(suffix) {}
    HandlerName(Piece before, Piece name, Piece suffix) : prefix(before), stem(name), event(suffix) {}
    HandlerName Of(Piece whose) const {
        HandlerName qualified = *this;
        qualified.owner = whose;
        return qualified;
    }

    Piece owner;
    Piece prefix;
    Piece stem;
    Piece event;
};

/// Title "Output Format Addon", text: handler, line break, number, ": ", an excerpt of the description. Needs no
/// memory: where there is none the text is cut to what a fixed buffer holds.
void ReportError(MessageBoxes& boxes, const HandlerName& handler, std::int32_t number,
                 std::wstring_view description) noexcept;

/// Reports the exception in flight under `handler`; an abandoned wait passes silently. Call from a catch block only.
void ReportCurrentException(MessageBoxes& boxes, const HandlerName& handler) noexcept;

/// Runs `action`; a failure is shown under `handler` (qualified, "AddOnControl.cmdApply_Click") and swallowed.
/// Answers whether `action` ran to its end.
template <typename Action>
bool Guarded(MessageBoxes& boxes, const HandlerName& handler, Action&& action) {
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
