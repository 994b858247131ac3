#include "platform/win32/desktop.h"

#include <vector>

#include <commdlg.h>
#include <shellapi.h>
#include <winver.h>

#include "platform/full_path.h"
#include "platform/win32/module.h"
#include "platform/win32/owned.h"
#include "platform/win32/system_error.h"
#include "text/error.h"

namespace orv::platform::win32 {
namespace {

[[noreturn]] void RaiseSystemError(DWORD code, const std::wstring& path) {
    const std::wstring reason = SystemText(code);
    throw Error(HRESULT_FROM_WIN32(code), reason.empty() ? path : path + L": " + reason);
}

std::wstring ModulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(OwnModule(), path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

// Name, zero, pattern, zero, zero.
std::wstring FilterText(const SaveFileRequest& request) {
    std::wstring filter = request.filterName;
    filter.push_back(L'\0');
    filter.append(request.filterPattern);
    filter.push_back(L'\0');
    filter.push_back(L'\0');
    return filter;
}

} // namespace

bool SystemDesktop::FileExists(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

Bytes SystemDesktop::ReadStart(const std::wstring& path, std::size_t count) {
    const HANDLE opened = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
        RaiseSystemError(GetLastError(), path);
    const OwnedHandle file(opened);
    Bytes bytes(count);
    DWORD read = 0;
    if (!ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(count), &read, nullptr))
        RaiseSystemError(GetLastError(), path);
    bytes.resize(read);
    return bytes;
}

bool SystemDesktop::RemoveFile(const std::wstring& path) {
    return DeleteFileW(path.c_str()) != FALSE;
}

void SystemDesktop::DuplicateFile(const std::wstring& from, const std::wstring& to) {
    if (!CopyFileW(from.c_str(), to.c_str(), FALSE))
        RaiseSystemError(GetLastError(), to);
}

void SystemDesktop::StartProcess(const std::wstring& path) {
    if (!IsFullPath(path))
        RaiseSystemError(ERROR_BAD_PATHNAME, path);
    // The full path as program name: the command line alone would be searched for, cut at its blanks.
    std::wstring command = L"\"" + path + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(path.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started))
        RaiseSystemError(GetLastError(), path);
    const OwnedHandle process(started.hProcess);
    const OwnedHandle thread(started.hThread);
}

void SystemDesktop::OpenDocument(const std::wstring& path) {
    // The shell would also take an address, or search for a name.
    if (!IsFullPath(path) || !FileExists(path))
        RaiseSystemError(ERROR_FILE_NOT_FOUND, path);
    SHELLEXECUTEINFOW request{};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
    request.hwnd = OwnerOf(hooks_);
    request.lpVerb = L"open";
    request.lpFile = path.c_str();
    request.nShow = SW_SHOWNORMAL;
    if (!ShellExecuteExW(&request))
        RaiseSystemError(GetLastError(), path);
}

std::wstring SystemDesktop::ChooseSaveFile(const SaveFileRequest& request) {
    constexpr std::size_t kLongestPath = 32768;
    std::vector<wchar_t> path(kLongestPath, L'\0');
    request.suggestedName.copy(path.data(), path.size() - 1);
    const std::wstring filter = FilterText(request);
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = OwnerOf(hooks_);
    dialog.lpstrFilter = filter.c_str();
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrTitle = request.title.empty() ? nullptr : request.title.c_str();
    dialog.lpstrDefExt = request.defaultExtension.empty() ? nullptr : request.defaultExtension.c_str();
    dialog.Flags = OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_EXPLORER;
    const ModalScope modal(hooks_);
    const ActivationScope active(context_);
    return GetSaveFileNameW(&dialog) ? std::wstring(path.data()) : std::wstring();
}

std::wstring SystemDesktop::ComponentFolder() {
    const std::wstring path = ModulePath();
    return path.substr(0, path.find_last_of(L'\\'));
}

std::wstring SystemDesktop::TemporaryFolder() {
    wchar_t path[MAX_PATH + 1] = {};
    DWORD length = GetTempPathW(ARRAYSIZE(path), path);
    if (length == 0 || length >= ARRAYSIZE(path))
        RaiseSystemError(length == 0 ? GetLastError() : ERROR_BUFFER_OVERFLOW, L"TEMP");
    while (length > 0 && path[length - 1] == L'\\')
        --length;
    return {path, length};
}

Version SystemDesktop::ComponentVersion() {
    const std::wstring path = ModulePath();
    DWORD ignored = 0;
    std::vector<BYTE> record(GetFileVersionInfoSizeW(path.c_str(), &ignored));
    void* found = nullptr;
    UINT size = 0;
    if (record.empty() || !GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(record.size()), record.data()) ||
        !VerQueryValueW(record.data(), L"\\", &found, &size) || size < sizeof(VS_FIXEDFILEINFO))
        return {};
    const auto& version = *static_cast<const VS_FIXEDFILEINFO*>(found);
    return {HIWORD(version.dwFileVersionMS), LOWORD(version.dwFileVersionMS), HIWORD(version.dwFileVersionLS)};
}

} // namespace orv::platform::win32
