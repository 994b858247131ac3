#pragma once
#include "platform/win32/system.h"

#include <string>

#include "text/error.h"

namespace orv::platform::win32 {

/// `window` as it is; raises the system's own code when it was not made.
inline HWND Made(HWND window, const wchar_t* type) {
    if (window == nullptr)
        throw Error(HRESULT_FROM_WIN32(GetLastError()), type);
    return window;
}

} // namespace orv::platform::win32
