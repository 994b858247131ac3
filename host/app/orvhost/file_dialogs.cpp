#include "host/app/orvhost/file_dialogs.h"

#include <commdlg.h>

#include <string>

namespace orv::host {
namespace {

constexpr std::size_t kLongestPath = 32768;

OPENFILENAMEW Request(HWND owner, std::wstring& buffer) {
    OPENFILENAMEW request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = owner;
    request.lpstrFilter = L"Device descriptions (*.json)\0*.json\0All files (*.*)\0*.*\0";
    request.lpstrFile = buffer.data();
    request.nMaxFile = static_cast<DWORD>(buffer.size());
    request.lpstrDefExt = L"json";
    request.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    return request;
}

} // namespace

std::filesystem::path AskOpenFile(HWND owner) {
    std::wstring buffer(kLongestPath, L'\0');
    OPENFILENAMEW request = Request(owner, buffer);
    request.Flags |= OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST;
    return GetOpenFileNameW(&request) ? std::filesystem::path(buffer.c_str()) : std::filesystem::path();
}

std::filesystem::path AskSaveFile(HWND owner, const std::filesystem::path& present) {
    std::wstring buffer = present.wstring();
    buffer.resize(kLongestPath, L'\0');
    OPENFILENAMEW request = Request(owner, buffer);
    request.Flags |= OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST;
    return GetSaveFileNameW(&request) ? std::filesystem::path(buffer.c_str()) : std::filesystem::path();
}

} // namespace orv::host
