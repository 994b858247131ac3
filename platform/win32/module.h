#pragma once
#include "platform/win32/system.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace orv::platform::win32 {

/// The file this code was linked into: the component, or a test program.
inline HINSTANCE OwnModule() {
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

} // namespace orv::platform::win32
