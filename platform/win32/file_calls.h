#pragma once
// What the files of this folder that write share.
#include <string>

#include "platform/system_file.h"
#include "platform/win32/owned.h"

namespace orv::platform::win32 {

[[noreturn]] void RaiseFileError(DWORD code);

/// Absolute, and in the form that has no limit of length; devices keep their own form.
std::wstring LongName(const FileName& given);

inline bool IsDeviceName(const std::wstring& longName) {
    return longName.starts_with(L"\\\\.\\");
}

/// With the separator at its end.
inline std::wstring FolderOf(const std::wstring& longName) {
    return longName.substr(0, longName.rfind(L'\\') + 1);
}

/// Bytes enough to tell machines apart.
std::string MachineName();

/// Somebody who reads the file, or looks into it for viruses, holds it for a moment only.
template <typename Call>
bool Retried(const Call& call, bool alsoDenied = false) {
    constexpr ULONGLONG kPatience = 3000;
    // Short: a reader that opens the file again and again leaves small gaps.
    constexpr DWORD kPause = 1;
    const ULONGLONG begin = GetTickCount64();
    for (;;) {
        if (call())
            return true;
        const DWORD code = GetLastError();
        const bool isShared = code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION ||
                              code == ERROR_USER_MAPPED_FILE || (alsoDenied && code == ERROR_ACCESS_DENIED);
        if (!isShared || GetTickCount64() - begin > kPatience)
            return false;
        Sleep(kPause);
    }
}

/// Opens what is there. Answers false with the system's last error.
inline bool OpenExisting(OwnedHandle& opened, const std::wstring& name, DWORD access, DWORD share, DWORD flags = 0) {
    return Retried([&] {
        const HANDLE handle = CreateFileW(name.c_str(), access, share, nullptr, OPEN_EXISTING, flags, nullptr);
        if (handle != INVALID_HANDLE_VALUE)
            opened.Reset(handle);
        return handle != INVALID_HANDLE_VALUE;
    });
}

inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Whether the file goes when its last handle is closed, whoever closes it.
bool GoesWhenClosed(HANDLE file, bool goes);

/// Access list, attributes, time of creation. False when the new file cannot have one of them, or another owner.
bool KeepAttributes(HANDLE from, HANDLE to);

} // namespace orv::platform::win32
