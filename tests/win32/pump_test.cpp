#include "platform/win32/pump.h"

#include <thread>

#include <gtest/gtest.h>

namespace orv::tests {
namespace {

using platform::Wait;
using platform::win32::SystemPump;

struct PumpTest : testing::Test {
    SystemPump pump;
};

TEST_F(PumpTest, LooksBeforeItSleeps) {
    EXPECT_EQ(pump.PumpUntil([] { return true; }), Wait::Satisfied);
    EXPECT_EQ(pump.Depth(), 0);
}

TEST_F(PumpTest, WakesForTasksOfThisAndOfAnotherThread) {
    bool own = false;
    bool other = false;
    pump.Post([&] { own = true; });
    EXPECT_FALSE(own);
    std::thread worker([&] {
        Sleep(50);
        pump.Post([&] { other = true; });
    });
    EXPECT_EQ(pump.PumpUntil([&] { return own && other; }), Wait::Satisfied);
    worker.join();
}

LRESULT CALLBACK Receive(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_APP)
        *reinterpret_cast<bool*>(lparam) = true;
    return DefWindowProcW(window, message, wparam, lparam);
}

TEST_F(PumpTest, WakesForAMessageThatIsSent) {
    // A sent message is dispatched inside the look into the queue, which hands nothing out.
    const platform::win32::OwnedWindow window(
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr));
    SetWindowLongPtrW(window.Get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Receive));
    bool arrived = false;
    std::thread worker([&] {
        Sleep(50);
        SendMessageW(window.Get(), WM_APP, 0, reinterpret_cast<LPARAM>(&arrived));
    });
    EXPECT_EQ(pump.PumpUntil([&] { return arrived; }), Wait::Satisfied);
    worker.join();
}

TEST_F(PumpTest, SleepsInTheSystem) {
    int looks = 0;
    std::thread worker([&] {
        Sleep(300);
        pump.Post([] {});
    });
    const ULONGLONG start = GetTickCount64();
    pump.PumpUntil([&] {
        ++looks;
        return GetTickCount64() - start >= 250;
    });
    worker.join();
    EXPECT_LT(looks, 20);
}

TEST_F(PumpTest, CloseEndsNestedWaitsInnermostFirst) {
    std::vector<int> ended;
    Wait inner = Wait::Satisfied;
    pump.Post([&] {
        inner = pump.PumpUntil([] { return false; });
        ended.push_back(2);
    });
    std::thread worker([&] {
        Sleep(100);
        pump.Close();
    });
    EXPECT_EQ(pump.PumpUntil([] { return false; }), Wait::Closing);
    ended.push_back(1);
    worker.join();
    EXPECT_EQ(inner, Wait::Closing);
    EXPECT_EQ(ended, (std::vector{2, 1}));
    EXPECT_EQ(pump.PumpUntil([] { return true; }), Wait::Closing);
}

TEST_F(PumpTest, CloseDropsTasksUnseen) {
    bool ran = false;
    pump.Post([&] { ran = true; });
    pump.Close();
    pump.Post([&] { ran = true; });
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
    EXPECT_FALSE(ran);
}

TEST_F(PumpTest, QuitIsLeftForTheApplication) {
    PostQuitMessage(7);
    EXPECT_EQ(pump.PumpUntil([] { return false; }), Wait::Quit);
    EXPECT_EQ(pump.PumpUntil([] { return false; }), Wait::Quit);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7u);
}

TEST_F(PumpTest, FailingTaskIsReportedAndTheNextOneRuns) {
    int failures = 0;
    int quiet = 0;
    bool last = false;
    pump.SetFailureHook([&] { ++failures; });
    pump.Post([] { throw 1; });
    pump.Post([&] {
        ++quiet;
        throw platform::WaitAbandoned{};
    });
    pump.Post([&] { last = true; });
    EXPECT_EQ(pump.PumpUntil([&] { return last; }), Wait::Satisfied);
    EXPECT_EQ(failures, 1);
    EXPECT_EQ(quiet, 1);
}

TEST_F(PumpTest, KeysAreOfferedWhileWaiting) {
    const platform::win32::OwnedWindow window(
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr));
    int keys = 0;
    const auto outer = pump.AddPreTranslate([&](MSG& message) { return message.message == WM_KEYDOWN && ++keys > 0; });
    PostMessageW(window.Get(), WM_KEYDOWN, 'A', 1);
    EXPECT_EQ(pump.PumpUntil([&] { return keys == 1; }), Wait::Satisfied);
    {
        int inner = 0;
        const auto latest = pump.AddPreTranslate(
            [&](MSG& message) { return message.message == WM_KEYDOWN && message.wParam == 'B' && ++inner > 0; });
        PostMessageW(window.Get(), WM_KEYDOWN, 'B', 1);
        PostMessageW(window.Get(), WM_KEYDOWN, 'C', 1);
        EXPECT_EQ(pump.PumpUntil([&] { return keys == 2; }), Wait::Satisfied) << "what the latest leaves, others see";
        EXPECT_EQ(inner, 1);
    }
    PostMessageW(window.Get(), WM_KEYDOWN, 'B', 1);
    EXPECT_EQ(pump.PumpUntil([&] { return keys == 3; }), Wait::Satisfied);
}

} // namespace
} // namespace orv::tests
