#pragma once
// For the start of a program, before anything is loaded.
#ifdef _WIN32
#include <windows.h>
#endif

namespace orv::host {

/// Libraries without a path come from the system's folder, never from where the program or its user happens to stand.
inline void SearchSystemLibrariesOnly() {
#ifdef _WIN32
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32 | LOAD_LIBRARY_SEARCH_USER_DIRS);
    SetDllDirectoryW(L"");
#endif
}

} // namespace orv::host
