// An open file.
#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

#include "platform/temporary_name.h"
#include "platform/win32/file_calls.h"

namespace orv::platform {

using win32::FolderOf;
using win32::RaiseFileError;

namespace {

constexpr int kMostNames = 100;

HANDLE AsHandle(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}
std::intptr_t AsNumber(HANDLE handle) {
    return reinterpret_cast<std::intptr_t>(handle);
}

std::uint64_t Chance() {
    std::random_device device;
    return std::uint64_t{device()} << 32 | device();
}

std::intptr_t OpenToStay(const FileName& name, DWORD access, DWORD share) {
    win32::OwnedHandle file;
    if (!win32::OpenExisting(file, name, access, share))
        RaiseFileError(GetLastError());
    return AsNumber(file.Release());
}

/// In one step, also while somebody reads the old file, where the system can; else as soon as nobody does.
bool TakeName(HANDLE file, const FileName& temporary, const FileName& target) {
    constexpr auto kRenameWithFlags = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
    constexpr DWORD kReplaceWhileOpen = 1 | 2;
    const std::size_t bytes = target.size() * sizeof(wchar_t);
    std::vector<BYTE> buffer(sizeof(FILE_RENAME_INFO) + bytes);
    auto* const info = reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
    std::memcpy(info, &kReplaceWhileOpen, sizeof kReplaceWhileOpen);
    info->FileNameLength = static_cast<DWORD>(bytes);
    std::memcpy(info->FileName, target.data(), bytes);
    if (SetFileInformationByHandle(file, kRenameWithFlags, info, static_cast<DWORD>(buffer.size())))
        return true;
    return MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE;
}

} // namespace

namespace win32 {

bool GoesWhenClosed(HANDLE file, bool goes) {
    FILE_DISPOSITION_INFO info{};
    info.DeleteFile = goes ? TRUE : FALSE;
    return SetFileInformationByHandle(file, FileDispositionInfo, &info, sizeof info) != FALSE;
}

} // namespace win32

SystemFile SystemFile::CreateBeside(const FileTarget& target) {
    constexpr DWORD kAccess = GENERIC_READ | GENERIC_WRITE | DELETE | READ_CONTROL | WRITE_DAC;
    const std::string machine = win32::MachineName();
    for (int tries = 0; tries < kMostNames; ++tries) {
        const std::string own = TemporaryName(Chance(), machine);
        const FileName name = FolderOf(target.name) + FileName(own.begin(), own.end());
        // Shared for renaming alone: who can open it for anything else knows that its writer is gone.
        const HANDLE file =
            CreateFileW(name.c_str(), kAccess, FILE_SHARE_DELETE, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE) {
            win32::GoesWhenClosed(file, true); // a killed program closes its handles, too
            return SystemFile(AsNumber(file), name);
        }
        if (GetLastError() != ERROR_FILE_EXISTS)
            RaiseFileError(GetLastError());
    }
    RaiseFileError(ERROR_FILE_EXISTS);
}

SystemFile SystemFile::OpenInPlace(const FileName& name) {
    return SystemFile(OpenToStay(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ));
}

SystemFile SystemFile::OpenStraight(const FileName& name) {
    return SystemFile(OpenToStay(name, GENERIC_WRITE, win32::kShareAll));
}

SystemFile SystemFile::StandardOutput() {
    const HANDLE stream = GetStdHandle(STD_OUTPUT_HANDLE);
    return SystemFile(AsNumber(stream == nullptr ? INVALID_HANDLE_VALUE : stream), {}, false);
}

void SystemFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        constexpr std::size_t kMost = 1 << 20;
        DWORD written = 0;
        if (!WriteFile(AsHandle(handle_), bytes.data(), static_cast<DWORD>(std::min(bytes.size(), kMost)), &written,
                       nullptr))
            RaiseFileError(GetLastError());
        if (written == 0)
            RaiseFileError(ERROR_WRITE_FAULT);
        bytes.remove_prefix(written);
    }
}

void SystemFile::Flush() {
    if (!FlushFileBuffers(AsHandle(handle_)))
        RaiseFileError(GetLastError());
}

std::string SystemFile::ReadAll() {
    LARGE_INTEGER size{};
    const LARGE_INTEGER begin{};
    if (!GetFileSizeEx(AsHandle(handle_), &size) || !SetFilePointerEx(AsHandle(handle_), begin, nullptr, FILE_BEGIN))
        RaiseFileError(GetLastError());
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    std::size_t have = 0;
    for (DWORD got = 1; have < bytes.size() && got != 0; have += got) {
        const std::size_t rest = std::min<std::size_t>(bytes.size() - have, 1 << 20);
        if (!ReadFile(AsHandle(handle_), bytes.data() + have, static_cast<DWORD>(rest), &got, nullptr))
            RaiseFileError(GetLastError());
    }
    bytes.resize(have);
    SetFilePointerEx(AsHandle(handle_), begin, nullptr, FILE_BEGIN);
    return bytes;
}

void SystemFile::CutHere() {
    if (!SetEndOfFile(AsHandle(handle_)))
        RaiseFileError(GetLastError());
}

bool SystemFile::TakeOver(const FileName& target) {
    win32::OwnedHandle old;
    if (!win32::OpenExisting(old, target, FILE_READ_ATTRIBUTES | READ_CONTROL, win32::kShareAll))
        RaiseFileError(GetLastError());
    return win32::KeepAttributes(old.Get(), AsHandle(handle_));
}

void SystemFile::Rename(const FileName& target) {
    const HANDLE file = AsHandle(handle_);
    win32::GoesWhenClosed(file, false);
    if (!win32::Retried([&] { return TakeName(file, temporary_, target); }, true))
        RaiseFileError(GetLastError());
    temporary_.clear();
    Close();
}

void SystemFile::Close() noexcept {
    if (!temporary_.empty())
        win32::GoesWhenClosed(AsHandle(handle_), true);
    temporary_.clear();
    if (owned_ && handle_ != kNone)
        CloseHandle(AsHandle(handle_));
    handle_ = kNone;
}

} // namespace orv::platform
