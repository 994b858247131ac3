// A box that nobody answers must not hold up the whole run.
#include "platform/win32/system.h"

#include <thread>

#include <ole2.h>

#include <gtest/gtest.h>

namespace {

constexpr DWORD kLongestRun = 240'000;
constexpr UINT kHung = 86;

void Watch() {
    Sleep(kLongestRun);
    TerminateProcess(GetCurrentProcess(), kHung);
}

} // namespace

int main(int argc, char** argv) {
    std::thread(Watch).detach();
    OleInitialize(nullptr);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
