#include "addon/com/same_file.h"

#include <optional>
#include <tuple>

#include "platform/win32/owned.h"

namespace orv::addon::com {
namespace {

using Identity = std::tuple<DWORD, DWORD, DWORD>;

struct CloseFile {
    void operator()(HANDLE file) const {
        if (file != INVALID_HANDLE_VALUE)
            CloseHandle(file);
    }
};

std::wstring Unquoted(const std::wstring& path) {
    return path.size() > 1 && path.front() == L'"' && path.back() == L'"' ? path.substr(1, path.size() - 2) : path;
}

std::optional<Identity> IdentityOf(const std::wstring& path) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const platform::win32::Owned<HANDLE, CloseFile> file(
        CreateFileW(path.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    BY_HANDLE_FILE_INFORMATION about{};
    if (file.Get() == INVALID_HANDLE_VALUE || !GetFileInformationByHandle(file.Get(), &about))
        return std::nullopt;
    // Not every file system numbers its files.
    if (about.nFileIndexHigh == 0 && about.nFileIndexLow == 0)
        return std::nullopt;
    return Identity{about.dwVolumeSerialNumber, about.nFileIndexHigh, about.nFileIndexLow};
}

std::wstring Full(const std::wstring& path) {
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(full.empty() ? 0
                             : GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

} // namespace

bool SameFile(const std::wstring& a, const std::wstring& b) {
    const std::wstring first = Full(Unquoted(a));
    const std::wstring second = Full(Unquoted(b));
    if (first.empty() || second.empty())
        return false;
    if (CompareStringOrdinal(first.c_str(), -1, second.c_str(), -1, TRUE) == CSTR_EQUAL)
        return true;
    const auto identity = IdentityOf(first);
    return identity && identity == IdentityOf(second);
}

} // namespace orv::addon::com
