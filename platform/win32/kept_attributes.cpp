// What a new file takes over from the one whose place it takes.
#include <vector>

#include "platform/win32/file_calls.h"

namespace orv::platform::win32 {
namespace {

constexpr SECURITY_INFORMATION kOwnerAndAccess = OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;

/// Empty when it cannot be read.
std::vector<BYTE> Security(HANDLE file) {
    DWORD size = 0;
    GetKernelObjectSecurity(file, kOwnerAndAccess, nullptr, 0, &size);
    std::vector<BYTE> security(size);
    if (size == 0 || !GetKernelObjectSecurity(file, kOwnerAndAccess, security.data(), size, &size))
        security.clear();
    return security;
}

bool SameOwner(std::vector<BYTE>& a, std::vector<BYTE>& b) {
    PSID first = nullptr;
    PSID second = nullptr;
    BOOL inherited = FALSE;
    if (!GetSecurityDescriptorOwner(a.data(), &first, &inherited) ||
        !GetSecurityDescriptorOwner(b.data(), &second, &inherited))
        return false;
    return first == nullptr || second == nullptr ? first == second : EqualSid(first, second) != FALSE;
}

bool KeepSecurity(HANDLE from, HANDLE to) {
    std::vector<BYTE> old = Security(from);
    std::vector<BYTE> made = Security(to);
    if (old.empty() || made.empty() || !SameOwner(old, made))
        return false;
    return old == made || SetKernelObjectSecurity(to, DACL_SECURITY_INFORMATION, old.data()) != FALSE;
}

} // namespace

bool KeepAttributes(HANDLE from, HANDLE to) {
    constexpr DWORD kKept =
        FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    BY_HANDLE_FILE_INFORMATION old{};
    if (!GetFileInformationByHandle(from, &old) || old.nNumberOfLinks > 1)
        return false;
    FILE_BASIC_INFO info{}; // what is zero stays
    info.CreationTime.LowPart = old.ftCreationTime.dwLowDateTime;
    info.CreationTime.HighPart = static_cast<LONG>(old.ftCreationTime.dwHighDateTime);
    info.FileAttributes = (old.dwFileAttributes & kKept) != 0 ? old.dwFileAttributes & kKept : FILE_ATTRIBUTE_NORMAL;
    return KeepSecurity(from, to) && SetFileInformationByHandle(to, FileBasicInfo, &info, sizeof info);
}

} // namespace orv::platform::win32
