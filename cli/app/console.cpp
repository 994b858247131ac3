#include "cli/app/console.h"

#ifdef _WIN32
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>

#include "host/sim/utf8.h"
#else
#include <unistd.h>
#endif

#include "platform/system_file.h"

namespace orv::cli {

#ifdef _WIN32

void SearchSystemLibrariesOnly() {
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32 | LOAD_LIBRARY_SEARCH_USER_DIRS);
    SetDllDirectoryW(L"");
}

std::vector<std::string> Arguments(int, char**) {
    // The narrow ones have lost what the system's code page lacks.
    int count = 0;
    LPWSTR* const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; words != nullptr && i < count; ++i)
        arguments.push_back(sim::ToUtf8(words[i]));
    LocalFree(static_cast<HLOCAL>(words));
    return arguments;
}

bool PrepareStreams() {
    _setmode(_fileno(stderr), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

#else

void SearchSystemLibrariesOnly() {}

std::vector<std::string> Arguments(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

bool PrepareStreams() {
    platform::FailWritesQuietly();
    return isatty(STDERR_FILENO) != 0;
}

#endif

} // namespace orv::cli
