#pragma once
// Exceptions end here: every method of a COM face answers through Answer.
#include <windows.h>

#include <ole2.h>

#include <cstdint>

namespace orv::host {

/// A host's own number (negative) as it is; a small one as automation sees it.
constexpr HRESULT ToHresult(std::int32_t number) {
    return number > 0 && number < 0x10000 ? static_cast<HRESULT>(0x800A0000u + static_cast<std::uint32_t>(number))
                                          : static_cast<HRESULT>(number);
}

/// Turns the exception in flight into a result and the thread's error information. Call from a catch block only.
HRESULT AnswerCurrentException(REFIID iid) noexcept;

/// S_OK, or what `action` raised.
template <typename Action>
HRESULT Answer(REFIID iid, Action&& action) noexcept {
    try {
        action();
        return S_OK;
    } catch (...) {
        return AnswerCurrentException(iid);
    }
}

/// A required pointer argument; raises E_POINTER when it is null.
void Require(const void* pointer);

/// Raises the failure of a call on another object, with the description that came along.
void Check(HRESULT result);

} // namespace orv::host
