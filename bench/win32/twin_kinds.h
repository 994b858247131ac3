#pragma once
// Reading and filling windows of the system's classes.
#include "platform/win32/system.h"

#include <string>

#include "bench/win32/twin.h"

namespace orv::bench {

/// By the name of a window's class; nothing for a class without content of its own.
struct TwinKind {
    const wchar_t* type;
    /// Another class for the copy, or nothing; and style bits that the copy must do without.
    const wchar_t* copyType;
    DWORD without;
    /// Once, when the copy is made.
    void (*prepare)(HWND original, HWND copy);
    void (*read)(HWND window, Twin::Shown& shown);
    void (*fill)(HWND window, const Twin::Shown& shown);
};

const TwinKind& TwinKindOf(HWND window);

std::wstring TextOf(HWND window);

} // namespace orv::bench
