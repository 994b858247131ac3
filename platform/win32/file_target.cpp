// Where a name leads, and what stands there.
#include "platform/win32/file_calls.h"
#include "platform/win32/system_error.h"
#include "text/error.h"

namespace orv::platform {
namespace win32 {

void RaiseFileError(DWORD code) {
    const std::wstring reason = SystemText(code);
    throw Error(error_number::kFileAccess, reason.empty() ? std::to_wstring(code) : reason);
}

std::wstring LongName(const FileName& given) {
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetFullPathNameW(given.c_str(), static_cast<DWORD>(name.size()), name.data(), nullptr);
        if (length == 0)
            RaiseFileError(GetLastError());
        const bool fits = length < name.size();
        name.resize(length);
        if (fits)
            break;
    }
    if (name.starts_with(L"\\\\?\\") || IsDeviceName(name))
        return name;
    return name.starts_with(L"\\\\") ? L"\\\\?\\UNC" + name.substr(1) : L"\\\\?\\" + name;
}

std::string MachineName() {
    wchar_t name[MAX_COMPUTERNAME_LENGTH + 1] = {};
    DWORD length = ARRAYSIZE(name);
    if (!GetComputerNameW(name, &length))
        return {};
    std::string bytes;
    for (DWORD i = 0; i < length; ++i)
        bytes += {static_cast<char>(name[i] & 0xFF), static_cast<char>(name[i] >> 8)};
    return bytes;
}

namespace {

/// Empty where the volume has no letter.
std::wstring FinalName(HANDLE file) {
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetFinalPathNameByHandleW(file, name.data(), static_cast<DWORD>(name.size()), 0);
        const bool fits = length < name.size();
        name.resize(length);
        if (fits)
            return name;
    }
}

/// A second stream beside the file's own bytes, where it came from for one.
bool HasStreams(const std::wstring& name) {
    WIN32_FIND_STREAM_DATA stream{};
    const HANDLE found = FindFirstStreamW(name.c_str(), FindStreamInfoStandard, &stream, 0);
    if (found == INVALID_HANDLE_VALUE)
        return false;
    const bool more = FindNextStreamW(found, &stream) != FALSE;
    FindClose(found);
    return more;
}

Way WayTo(HANDLE file, const std::wstring& name) {
    if (GetFileType(file) != FILE_TYPE_DISK)
        return Way::Straight;
    BY_HANDLE_FILE_INFORMATION info{};
    if (!GetFileInformationByHandle(file, &info))
        RaiseFileError(GetLastError());
    // An account that may do everything opens it all the same.
    if ((info.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0)
        RaiseFileError(ERROR_ACCESS_DENIED);
    const bool encrypted = (info.dwFileAttributes & FILE_ATTRIBUTE_ENCRYPTED) != 0;
    return info.nNumberOfLinks > 1 || encrypted || HasStreams(name) ? Way::InPlace : Way::Beside;
}

} // namespace
} // namespace win32

FileTarget FindTarget(const FileName& given) {
    using namespace win32;
    const std::wstring name = LongName(given);
    // To open the end of a pipe uses it up.
    if (IsDeviceName(name))
        return {name, Way::Straight, true};
    OwnedHandle file;
    // For writing: what may not be written to must not be replaced either.
    if (!OpenExisting(file, name, FILE_WRITE_DATA | FILE_READ_ATTRIBUTES, kShareAll)) {
        if (GetLastError() != ERROR_FILE_NOT_FOUND)
            RaiseFileError(GetLastError());
        return {name, Way::Beside, false};
    }
    const std::wstring final = FinalName(file.Get());
    const std::wstring& end = final.empty() ? name : final;
    return {end, WayTo(file.Get(), end), true};
}

} // namespace orv::platform
