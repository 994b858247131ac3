// What reaches the host from elsewhere: debug lines and tasks of other threads.
#include <gtest/gtest.h>

#include <thread>

#include "host/app/orvhost/debug_lines.h"
#include "host/app/orvhost/host_pump.h"

namespace orv::host {
namespace {

TEST(DebugLines, ArriveAtOnceAndWithoutTheirLineBreaks) {
    std::vector<std::wstring> lines;
    {
        DebugLines debug([&lines](const std::wstring& line) { lines.push_back(line); });
        OutputDebugStringA("  Writing /A = <STX>...\r\n");
        ASSERT_EQ(lines.size(), 1u);
        OutputDebugStringW(L"wide");
        OutputDebugStringA("");
    }
    OutputDebugStringA("nobody listens");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], L"  Writing /A = <STX>...");
    EXPECT_EQ(lines[1], L"wide");
    EXPECT_EQ(lines[2], L"");
}

TEST(DebugLines, OfOtherThreadsWaitForTheWindowsThread) {
    std::vector<std::wstring> lines;
    DebugLines debug([&lines](const std::wstring& line) { lines.push_back(line); });
    std::thread([] { OutputDebugStringA("from afar"); }).join();
    EXPECT_TRUE(lines.empty());
    debug.Drain();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0], L"from afar");
}

TEST(HostPump, RunsTasksOfAnyThreadInTheirOrder) {
    HostPump pump;
    std::vector<int> order;
    std::thread worker([&] {
        for (int i = 0; i < 100; ++i)
            pump.Post([&order, i] { order.push_back(i); });
    });
    worker.join();
    EXPECT_TRUE(order.empty()) << "nothing runs on the other thread";
    EXPECT_EQ(pump.PumpUntil([&] { return order.size() == 100; }), platform::Wait::Satisfied);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST(HostPump, SurvivesTasksThatFailPostOrOutliveIt) {
    int runs = 0;
    {
        HostPump pump;
        pump.Post([] { throw std::runtime_error("a task that fails is reported"); });
        pump.Post([&] { pump.Post([&] { ++runs; }); });
        EXPECT_TRUE(pump.PumpFor(2000, [&] { return runs == 1; }));
        pump.Post([&] { ++runs; });
        pump.Close();
        pump.Post([&] { ++runs; });
        EXPECT_EQ(pump.PumpUntil([] { return false; }), platform::Wait::Closing);
    }
    EXPECT_EQ(runs, 1) << "what is posted to a pump that closes is dropped";
}

TEST(HostPump, LooksAtItsPredicateBeforeItSleepsAndLeavesOnQuit) {
    HostPump pump;
    EXPECT_EQ(pump.PumpUntil([] { return true; }), platform::Wait::Satisfied);
    PostQuitMessage(3);
    EXPECT_EQ(pump.PumpUntil([] { return false; }), platform::Wait::Quit);
    MSG message;
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) << "the outer loop must see it, too";
    EXPECT_EQ(message.wParam, 3u);
}

} // namespace
} // namespace orv::host
