#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>

#include "host/sim/portable_platform.h"

namespace orv::sim {
namespace {

using namespace std::chrono_literals;
using platform::Answer;
using platform::Wait;

TEST(PortablePump, LooksBeforeItSleepsAndWakesForOtherThreads) {
    PortablePump pump;
    EXPECT_EQ(pump.PumpUntil([] { return true; }), Wait::Satisfied);
    EXPECT_EQ(pump.SleepCount(), 0);
    bool done = false;
    std::thread worker([&] { pump.Post([&] { done = true; }); });
    EXPECT_EQ(pump.PumpUntil([&] { return done; }), Wait::Satisfied);
    worker.join();
}

TEST(PortablePump, CloseEndsNestedWaitsAndQuitGivesWayToIt) {
    PortablePump pump;
    Wait inner = Wait::Satisfied;
    int depth = 0;
    pump.Post([&] {
        pump.PostAfter(5ms, [&] {
            depth = pump.Depth();
            pump.Quit();
            pump.Close();
        });
        inner = pump.PumpUntil([] { return false; });
    });
    EXPECT_EQ(pump.PumpUntil([] { return false; }), Wait::Closing);
    EXPECT_EQ(inner, Wait::Closing);
    EXPECT_EQ(depth, 2);
    EXPECT_EQ(pump.Depth(), 0);
    EXPECT_EQ(pump.PumpUntil([] { return true; }), Wait::Closing);
}

TEST(PortablePump, DelayedTasksComeInTheOrderOfTheirTimes) {
    PortablePump pump;
    std::string order;
    pump.PostAfter(20ms, [&] { order += 'c'; });
    pump.PostAfter(1ms, [&] { order += 'b'; });
    pump.Post([&] { order += 'a'; });
    pump.PumpUntil([&] { return order.size() == 3; });
    EXPECT_EQ(order, "abc");
}

TEST(PortablePump, LimitCatchesAWaitThatNothingEnds) {
    PortablePump pump;
    pump.SetLimit(20ms);
    EXPECT_THROW(pump.PumpUntil([] { return false; }), std::runtime_error);
    EXPECT_EQ(pump.Depth(), 0);
}

TEST(PortablePump, ProcessPendingLeavesWhatIsPostedMeanwhile) {
    PortablePump pump;
    int runs = 0;
    std::function<void()> again = [&] {
        ++runs;
        pump.Post(again);
    };
    pump.Post(again);
    pump.ProcessPending();
    EXPECT_EQ(runs, 1);
    pump.ProcessPending();
    EXPECT_EQ(runs, 2);
}

TEST(ScriptedBoxes, AnswersFromScriptThenPresetThenNoOnceClosed) {
    PortablePlatform platform;
    const platform::MessageBox question{L"?", L"t", platform::Icon::Warning, platform::Buttons::YesNo, Answer::No};
    platform::MessageBox yes = question;
    yes.preset = Answer::Yes;
    platform.boxes.answers = {Answer::Yes};
    EXPECT_EQ(platform.services.boxes.Show(question), Answer::Yes);
    EXPECT_EQ(platform.services.boxes.Show(question), Answer::No);
    EXPECT_EQ(platform.services.boxes.Show(yes), Answer::Yes);
    EXPECT_EQ(platform.services.boxes.Show({L"!", L"t"}), Answer::Ok);
    platform.boxes.whileOpen = [&](const platform::MessageBox&) {
        EXPECT_EQ(platform.boxes.open, 1);
        platform.boxes.Close();
    };
    EXPECT_EQ(platform.services.boxes.Show(yes), Answer::No) << "closed under the open box";
    EXPECT_EQ(platform.boxes.shown.size(), 5U);
    EXPECT_EQ(platform.boxes.open, 0);
}

} // namespace
} // namespace orv::sim
