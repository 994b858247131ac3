#pragma once
// Between exceptions and HRESULTs, in both directions.
#include <type_traits>

#include "addon/com/com_ptr.h"
#include "addon/com/module.h"
#include "platform/win32/system.h"
#include "text/error.h"

namespace orv::addon::com {

/// HRESULT of the exception in flight, its description left as the thread's error object. Call from a catch block only.
HRESULT CaughtAsResult() noexcept;

/// Goes round every method that COM can call. `action` gives an HRESULT or nothing, which is success.
template <typename Action>
HRESULT Guarded(Action&& action) noexcept {
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<Action>>) {
            action();
            return S_OK;
        } else {
            return action();
        }
    } catch (...) {
        return CaughtAsResult();
    }
}

/// The number under which a failed result is shown, with the description of the system.
Error SystemError(HRESULT result);

/// Raises a failed `result` with the description that `source` left for `interfaceId`, else the system's.
void Check(HRESULT result, IUnknown* source, REFIID interfaceId);

/// A method of a host's object; raises 91 without an object. Holds the object for the call: a host that dispatches
/// messages in it may make the component drop the last reference.
template <typename I, typename Method, typename... Arguments>
void Call(ComPtr<I> object, Method method, Arguments... arguments) {
    if (!object)
        throw Error(error_number::kObjectNotSet);
    const HostCallScope running;
    Check((object.Get()->*method)(arguments...), object.Get(), __uuidof(I));
}

} // namespace orv::addon::com
