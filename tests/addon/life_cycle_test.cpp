#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/addon/session.h"
#include "tests/support/scripted_service.h"

namespace orv::addon {
namespace {

using platform::Answer;
using test::Session;

TEST(LifeCycle, RunsFromCreationToTheDevice) {
    Session session;
    EXPECT_EQ(session.addOn->GetResult(), -1);
    session.Begin();
    EXPECT_EQ(session.bench.host.Application()->caption, L"Output Format Addon");
    EXPECT_EQ(session.bench.state.current.accessLevel, session.bench.host.AccessLevel());
    EXPECT_EQ(session.bench.state.progressOwner, 77);
    EXPECT_EQ(session.addOn->GetResult(), -1);
    EXPECT_EQ(session.bench.state.catalogue->Count(), 0);
    session.addOn->Activate();
    EXPECT_EQ(session.addOn->GetResult(), 2);
    EXPECT_TRUE(session.Boxes().empty());
    // Filled after the values: what the device does not support is among them.
    EXPECT_TRUE(session.bench.state.catalogue->Item(L"InkSpread").Supported());
    EXPECT_FALSE(session.bench.state.catalogue->Item(L"StartSync").Supported());
    EXPECT_FALSE(session.Widget(L"cmdApply").Enabled());
    EXPECT_FALSE(session.Widget(L"cmdOK").Enabled());
    EXPECT_TRUE(session.Widget(L"fraCodeDef").Visible());
    EXPECT_FALSE(session.Widget(L"fraFormatDef").Visible());

    session.Edit();
    EXPECT_TRUE(session.Widget(L"cmdApply").Enabled());
    session.Press(L"cmdApply");
    EXPECT_TRUE(session.Boxes().empty());
    EXPECT_EQ(session.addOn->GetResult(), 1);
    EXPECT_FALSE(session.Widget(L"cmdApply").Enabled());
    EXPECT_TRUE(session.container.sawDisabled);
    EXPECT_TRUE(session.container.enabled);
    const auto header = std::get<Bytes>(session.OnDevice(6));
    EXPECT_TRUE(std::find(header.begin(), header.end(), 2) != header.end());
    EXPECT_EQ(session.OnDevice(6), session.InHost(6));
    EXPECT_EQ(session.OnDevice(7), session.InHost(7));

    session.addOn->Unregister();
    session.addOn->Terminate();
    EXPECT_TRUE(session.addOn->Terminated());
    EXPECT_EQ(session.bench.host.OpenConfigurations(), 0);
    EXPECT_EQ(session.bench.state.root, nullptr);
}

TEST(LifeCycle, ShowBeforeEnableDoesNothing) {
    Session session;
    session.addOn->Register(session.bench.host.Application());
    session.addOn->Show();
    EXPECT_EQ(session.bench.host.Gate().Count(), 0);
    EXPECT_EQ(session.bench.state.common->calls.Count(), 0);
}

TEST(LifeCycle, ASecondShowHandsTheFirstConfigurationBack) {
    Session session;
    session.Begin();
    session.bench.host.Gate().KeepLog(true);
    session.addOn->Show();
    EXPECT_EQ(session.bench.host.OpenConfigurations(), 1);
    EXPECT_EQ(session.bench.host.Gate().Count("HostFactory.CreateConfigurationManager"), 0);
    EXPECT_TRUE(session.bench.state.common->calls.Flag());
    EXPECT_TRUE(session.Widget(L"fraDesign").Enabled());
    EXPECT_FALSE(session.Widget(L"fraDesign").Visible());
}

TEST(LifeCycle, TheSlaveQuestionComesWithEachActivation) {
    Session session("tunnel.json", {}, 2);
    session.Begin();
    bool visibleWhileAsked = true;
    session.bench.platform.boxes.whileOpen = [&](const platform::MessageBox&) {
        visibleWhileAsked = session.container.visible;
    };
    session.bench.platform.boxes.answers = {Answer::No, Answer::Yes, Answer::Yes};
    session.addOn->Activate();
    ASSERT_EQ(session.Boxes().size(), 1U);
    EXPECT_EQ(session.Boxes()[0].text,
              L"You are about to edit Data Format parameters for a Slave Device. Do you want to continue?");
    EXPECT_EQ(session.Boxes()[0].title, L"Warning");
    EXPECT_EQ(session.Boxes()[0].buttons, platform::Buttons::YesNo);
    EXPECT_FALSE(visibleWhileAsked);
    EXPECT_EQ(session.bench.host.Application()->closeCount, 1);
    EXPECT_EQ(session.addOn->GetResult(), -1);

    session.addOn->Activate();
    EXPECT_TRUE(session.container.visible);
    EXPECT_EQ(session.addOn->GetResult(), 2);
    session.bench.host.Gate().KeepLog(true);
    session.addOn->Activate();
    EXPECT_EQ(session.Boxes().size(), 3U);
    EXPECT_EQ(session.bench.host.Gate().Count("ParameterTable.FindByNumber"), 0) << "loaded once";
}

TEST(LifeCycle, ALoadThatFailsIsTriedAgain) {
    Session session;
    session.Begin();
    session.bench.host.Gate().FailNamed("ParameterTable.GetValue", 5, -7, L"host is busy", 100000);
    session.addOn->Activate();
    ASSERT_FALSE(session.Boxes().empty());
    EXPECT_EQ(session.Boxes()[0].text, L"AddOnControl.IAddOnGUI_Activate\n-7: host is busy");
    EXPECT_EQ(session.addOn->GetResult(), -1);
    session.bench.host.Gate().Reset();
    session.addOn->Activate();
    EXPECT_EQ(session.addOn->GetResult(), 2);
}

TEST(LifeCycle, ApplyToTheConfigurationOnlyLeavesTheDeviceAlone) {
    Session session;
    session.Start();
    session.Edit();
    dynamic_cast<controls::CheckBox&>(session.Widget(L"chkNoInteractive")).Toggle();
    const auto before = session.OnDevice(6);
    session.Press(L"cmdApply");
    EXPECT_EQ(session.OnDevice(6), before);
    EXPECT_NE(session.InHost(6), before);
    EXPECT_EQ(session.bench.device->AnsweredCount(), 0);
}

TEST(LifeCycle, OkSavesToTheConfigurationAndClosesAndCancelOnlyCloses) {
    Session session;
    session.Start();
    session.Edit();
    const auto before = session.InHost(7);
    session.Press(L"cmdCancel");
    EXPECT_EQ(session.InHost(7), before);
    EXPECT_EQ(session.bench.host.Application()->closeCount, 1);
    session.Press(L"cmdOK");
    EXPECT_NE(session.InHost(7), before);
    EXPECT_EQ(session.OnDevice(7), before);
    EXPECT_EQ(session.bench.host.Application()->closeCount, 2);
}

TEST(LifeCycle, OkWhoseSaveRaisesStaysOpen) {
    Session session;
    session.Start();
    session.Edit();
    session.bench.host.Gate().FailNamed("ParameterTable.SetValue", 2, -9, L"read-only");
    session.Press(L"cmdOK");
    ASSERT_EQ(session.Boxes().size(), 1U);
    EXPECT_EQ(session.Boxes()[0].text, L"AddOnControl.cmdOK_Click\n-9: read-only");
    EXPECT_EQ(session.bench.host.Application()->closeCount, 0);
    EXPECT_TRUE(session.Widget(L"cmdApply").Enabled());
    EXPECT_TRUE(session.container.enabled);
}

TEST(LifeCycle, ADoubtfulFormatIsSavedOnlyWhenTheUserSaysSo) {
    for (const wchar_t* button : {L"cmdApply", L"cmdOK"}) {
        Session session;
        session.Start();
        session.bench.state.root->Codes().Code(1)->CodeType(18);
        for (int mode = 0; mode < model::SevenFlags::kCount; ++mode)
            session.bench.state.root->Codes().Code(1)->MaxicodeEnable(mode, false);
        session.Edit();
        const device::Value before = session.InHost(7);
        session.bench.platform.boxes.answers = {Answer::No};
        session.Press(button);
        ASSERT_EQ(session.Boxes().size(), 1U);
        EXPECT_EQ(session.Boxes()[0].text, L"At least one Mode Reading must be enabled for code 1. Save anyway?");
        EXPECT_EQ(session.Boxes()[0].title, L"Warning");
        EXPECT_EQ(session.Boxes()[0].icon, platform::Icon::Warning);
        EXPECT_EQ(session.Boxes()[0].buttons, platform::Buttons::YesNo);
        EXPECT_EQ(session.InHost(7), before);
        EXPECT_TRUE(session.Widget(button).Enabled());
        EXPECT_EQ(session.bench.host.Application()->closeCount, 0);
        session.bench.platform.boxes.answers = {Answer::Yes};
        session.Press(button);
        EXPECT_EQ(session.InHost(2), device::Value(std::int32_t{18})) << "saved all the same";
    }
}

TEST(LifeCycle, AFailedApplyKeepsTheChangesAndSaysHowFarItCame) {
    sim::FaultPlan faults;
    faults.sets.push_back({L"#3", 310, 1});
    Session session("tiny.json", faults);
    session.Start();
    session.Edit();
    session.Press(L"cmdApply");
    ASSERT_EQ(session.Boxes().size(), 1U);
    EXPECT_TRUE(session.Widget(L"cmdApply").Enabled());
    EXPECT_EQ(session.addOn->GetResult(), 1);
    EXPECT_THAT(session.Widget(L"lblHint").Caption(), testing::HasSubstr(L"2 of "));
    session.Press(L"cmdApply");
    EXPECT_EQ(session.Boxes().size(), 1U);
    EXPECT_EQ(session.OnDevice(6), session.InHost(6));
}

TEST(LifeCycle, ASaveWhoseSessionTheDeviceDoesNotEndIsWholeAndSaysSo) {
    Session session;
    session.Start();
    session.Edit();
    const auto service = std::make_shared<test::ScriptedService>();
    session.bench.host.SetService(service);
    service->codes.assign(session.state.root->Plan().writes.size() + 2, 0); // connection and start before them
    service->codes.push_back(310);
    session.Press(L"cmdApply");
    EXPECT_TRUE(session.Boxes().empty());
    EXPECT_FALSE(session.Widget(L"cmdApply").Enabled());
    EXPECT_THAT(session.Widget(L"lblHint").Caption(), testing::HasSubstr(L"did not end the session (code 310)"));
}

TEST(LifeCycle, SurvivesBeingDestroyedWithoutBeingShown) {
    Session session;
    session.addOn.reset();
    EXPECT_EQ(session.bench.host.Gate().Count(), 0);
}

TEST(LifeCycle, RequestUnloadAnswersTheContainer) {
    Session session;
    EXPECT_TRUE(session.addOn->RequestUnload());
    session.container.userMode = false;
    EXPECT_FALSE(session.addOn->RequestUnload());
}

} // namespace
} // namespace orv::addon
