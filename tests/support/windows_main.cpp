// Entry of the test programs with windows: OLE, common controls, and an end to everything that hangs.
#include <windows.h>

#include <commctrl.h>
#include <ole2.h>

#include <thread>

#include <gtest/gtest.h>

namespace {

constexpr DWORD kLongestRun = 600'000;
constexpr UINT kHung = 86;

// A window that never answers must not hold up the whole run.
void Watch() {
    Sleep(kLongestRun);
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
