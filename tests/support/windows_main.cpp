// Entry of the test programs with windows: OLE, common controls, and an end to everything that hangs.
#include <windows.h>

#include <commctrl.h>
#include <ole2.h>

#include <cstdlib>
#include <thread>

#include <gtest/gtest.h>

namespace {

constexpr UINT kHung = 86;

/// In seconds; a run that is long on purpose says so.
DWORD LongestRun() {
    const char* const given = std::getenv("ORV_LONGEST_RUN");
    return given ? static_cast<DWORD>(std::atoi(given)) : 600;
}

// A window that never answers must not hold up the whole run.
void Watch() {
    Sleep(LongestRun() * 1000);
    TerminateProcess(GetCurrentProcess(), kHung);
}

} // namespace

int main(int argc, char** argv) {
    std::thread(Watch).detach();
    testing::InitGoogleTest(&argc, argv);
    if (FAILED(OleInitialize(nullptr)))
        return 1;
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    const int status = RUN_ALL_TESTS();
    OleUninitialize();
    return status;
}
