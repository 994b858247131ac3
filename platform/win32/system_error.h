#pragma once
// The system's own words for its error numbers.
#include <string>

#include "platform/win32/system.h"

namespace orv::platform::win32 {

/// Empty when it has none. Without the line break at the end.
inline std::wstring SystemText(DWORD code) {
    wchar_t text[512] = {};
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, text,
                                  ARRAYSIZE(text), nullptr);
    while (length > 0 && text[length - 1] <= L' ')
        --length;
    return {text, length};
}

} // namespace orv::platform::win32
