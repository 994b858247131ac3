#pragma once
// Which names of files say where the file is.
#include <string_view>

namespace orv::platform {

/// Begins with a drive and its root. What does not is looked for in places that others may write to, or is no file of
/// this machine.
inline bool IsFullPath(std::wstring_view path) {
    const auto isLetter = [](wchar_t c) { return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z'); };
    return path.size() > 3 && isLetter(path[0]) && path[1] == L':' && path[2] == L'\\' &&
           path.find_first_of(L"\"<>|*?") == std::wstring_view::npos;
}

} // namespace orv::platform
