// The host calls back from inside a wait; the device falls silent; the component goes in mid-save.
#include <gtest/gtest.h>

#include "tests/addon/session.h"

namespace orv::addon {
namespace {

using namespace std::chrono_literals;
using test::Session;

sim::FaultPlan SilentAfter(std::int64_t requests) {
    sim::FaultPlan plan;
    plan.silentAfter = requests;
    return plan;
}

TEST(Reentrancy, ClosingWhileASaveWaitsForASilentDeviceEndsCleanly) {
    for (const std::int64_t answered : {0, 1, 2, 4}) {
        SCOPED_TRACE(answered);
        Session session("tiny.json", SilentAfter(answered));
        session.bench.host.SetConfigurationInteractive(true);
        session.Start();
        session.Edit();
        bool told = false;
        session.addOn->whenTerminated = [&] { told = true; };
        session.bench.platform.pump.PostAfter(30ms, [&] {
            EXPECT_TRUE(session.addOn->Saving());
            session.addOn->Terminate();
            EXPECT_FALSE(session.addOn->Terminated()) << "released under a running save";
            EXPECT_NE(session.bench.state.root, nullptr);
        });
        session.Press(L"cmdApply");
        EXPECT_TRUE(session.addOn->Terminated());
        EXPECT_TRUE(told);
        EXPECT_TRUE(session.Boxes().empty()) << "an abandoned wait is no error";
        EXPECT_TRUE(session.bench.host.ConfigurationInteractive());
        EXPECT_FALSE(session.bench.host.Progress().shown);
        EXPECT_TRUE(session.container.enabled);
        EXPECT_EQ(session.bench.host.OpenConfigurations(), 0);
    }
}

TEST(Reentrancy, CallsFromInsideASaveDoNoHarm) {
    Session session("tunnel.json");
    session.Start();
    session.Edit();
    int inside = 0;
    session.bench.host.Gate().Before("SupportObject.SetProgress", [&] {
        ++inside;
        EXPECT_TRUE(session.addOn->Saving());
        session.Press(L"cmdApply"); // refused: a save runs
        session.addOn->Activate();  // put off
        session.addOn->Show();      // put off
        session.addOn->CurrentDeviceIndex(2);
    });
    session.Press(L"cmdApply");
    session.addOn->CurrentDeviceIndex(0);
    EXPECT_GT(inside, 3);
    EXPECT_EQ(session.OnDevice(6), session.InHost(6));
    EXPECT_EQ(session.OnDevice(7), session.InHost(7));
    EXPECT_EQ(session.addOn->GetResult(), 1);
    EXPECT_FALSE(session.Widget(L"cmdApply").Enabled());
    // The put-off activation found another device current, so it asked; nothing else was said.
    ASSERT_EQ(session.Boxes().size(), 1U);
    EXPECT_EQ(session.Boxes()[0].title, L"Warning");
    EXPECT_EQ(session.bench.host.OpenConfigurations(), 1);
}

TEST(Reentrancy, TerminateUnderTheSlaveQuestionWaitsForTheAnswer) {
    Session session("tunnel.json", {}, 1);
    session.Begin();
    session.bench.platform.boxes.whileOpen = [&](const platform::MessageBox&) {
        session.addOn->Terminate();
        EXPECT_FALSE(session.addOn->Terminated());
    };
    session.addOn->Activate();
    EXPECT_TRUE(session.addOn->Terminated());
    EXPECT_EQ(session.bench.host.Application()->closeCount, 0) << "the host is closing already";
    EXPECT_EQ(session.bench.host.OpenConfigurations(), 0);
}

TEST(Reentrancy, TerminateFromTheLoadStepFinishesIt) {
    Session session;
    session.Begin();
    session.bench.host.Gate().Before("ParameterTable.GetValue", [&] { session.addOn->Terminate(); });
    session.addOn->Activate();
    EXPECT_TRUE(session.addOn->Terminated());
    EXPECT_EQ(session.bench.host.AccessLevel(), 3);
}

TEST(Reentrancy, AnActivationInsideTheSlaveQuestionAsksOnce) {
    Session session("tunnel.json", {}, 1);
    session.Begin();
    session.bench.platform.boxes.whileOpen = [&](const platform::MessageBox&) {
        session.addOn->Activate();
        session.addOn->Show();
    };
    session.addOn->Activate();
    EXPECT_EQ(session.Boxes().size(), 1U);
    EXPECT_EQ(session.addOn->GetResult(), 2);
}

} // namespace
} // namespace orv::addon
