// Temporaries of runs that ended without closing them, for want of power for one.
#include "platform/temporary_name.h"
#include "platform/win32/file_calls.h"

namespace orv::platform {
namespace {

struct CloseSearch {
    void operator()(HANDLE search) const { FindClose(search); }
};

std::string Narrow(const wchar_t* name) {
    std::string narrow;
    for (; *name != 0; ++name)
        narrow += *name < 128 ? static_cast<char>(*name) : '?';
    return narrow;
}

/// A living writer lets nobody else open it for reading; who is alone with the file may remove it.
void RemoveIfDead(const std::wstring& name) {
    const HANDLE opened = CreateFileW(name.c_str(), GENERIC_READ | DELETE, 0, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
        return;
    const win32::OwnedHandle file(opened);
    BY_HANDLE_FILE_INFORMATION info{};
    if (GetFileInformationByHandle(opened, &info) && info.nNumberOfLinks == 1 &&
        (info.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) == 0)
        win32::GoesWhenClosed(opened, true);
}

} // namespace

void RemoveLeftOvers(const FileName& target) noexcept {
    try {
        const std::wstring folder = win32::FolderOf(target);
        const std::string machine = win32::MachineName();
        WIN32_FIND_DATAW entry{};
        const HANDLE found = FindFirstFileW((folder + L".orv-*.tmp").c_str(), &entry);
        if (found == INVALID_HANDLE_VALUE)
            return;
        const win32::Owned<HANDLE, CloseSearch> search(found);
        do {
            if (IsTemporaryName(Narrow(entry.cFileName), machine))
                RemoveIfDead(folder + entry.cFileName);
        } while (FindNextFileW(found, &entry));
    } catch (const std::exception&) {
        return; // no memory: the next run will do it
    }
}

// A console that ends the program closes its handles, and what is open goes with them.
EndingHeld::EndingHeld() noexcept = default;
EndingHeld::~EndingHeld() = default;

void FailWritesQuietly() noexcept {}

} // namespace orv::platform
