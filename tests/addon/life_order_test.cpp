// What the component asks of host and container while it is shown, activated, saved and let go, and for one read, in
// which order.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "controls/check_list.h"
#include "controls/picture_list.h"
#include "device/parameter_access.h"
#include "tests/addon/ordered_session.h"

namespace orv::addon {
namespace {

using platform::Answer;
using test::OrderedSession;
using test::Starts;
using testing::StartsWith;

constexpr std::int32_t kFailure = -7; ///< of the host

const std::vector<std::string> kShowSteps = {"HostFactory.CreateConfigurationManager\n",
                                             "ConfigurationManager.GetConfiguration\n", "Configuration.AccessLevel\n",
                                             "HostApplication.SetCaption Output Format Addon\n", "Container.Window\n"};

TEST(LifeOrder, ShowStopsAtTheStepThatFails) {
    for (std::size_t failing = 1; failing <= kShowSteps.size() + 1; ++failing) {
        OrderedSession session;
        if (failing <= kShowSteps.size())
            session.gate.FailCall(static_cast<std::int64_t>(failing), kFailure, L"no");
        session.Begin();
        std::string steps;
        for (std::size_t step = 0; step < std::min(failing, kShowSteps.size()); ++step)
            steps += kShowSteps[step];
        if (failing <= kShowSteps.size())
            steps += "MessageBoxes.Show Output Format Addon: AddOnControl.UserControl_Show -7: no\n";
        EXPECT_THAT(session.Calls(), StartsWith(steps));
    }
}

TEST(LifeOrder, AnotherShowHandsTheConfigurationBackFirst) {
    OrderedSession session;
    session.Begin();
    session.BeginList();
    session.bench.host.SetAccessLevel(1);
    session.addOn->Show();
    EXPECT_THAT(session.Calls(), StartsWith("ConfigurationManager.ReleaseConfiguration\n" + kShowSteps[1] +
                                            kShowSteps[2] + kShowSteps[3] + kShowSteps[4]));
    EXPECT_EQ(session.state.current.accessLevel, 1);
}

const std::string kQuestion = "MessageBoxes.Show Warning: You are about to edit Data Format parameters for a Slave "
                              "Device. Do you want to continue?\n";
const std::string kHidden = "Container.SetVisible off\n";
const std::string kVisible = "Container.SetVisible on\n";
const Starts kAround = {"Container.", "MessageBoxes.", "MessagePump.", "HostApplication.",
                        "ParameterTable.FindByPath /SystemInfo/"};

TEST(LifeOrder, ASlaveIsAskedAboutWhileHiddenAndReadAfterwards) {
    const std::string read = "ParameterTable.FindByPath /SystemInfo/Model/ModelIndex, 3\nMessagePump.ProcessPending\n";
    const std::string told = "MessageBoxes.Show Output Format Addon: AddOnControl.IAddOnGUI_Activate -7: no\n";
    const struct {
        const char* what;
        const char* failing;
        Answer answer;
        std::int16_t result;
        std::string calls;
    } cases[] = {
        {"no", "", Answer::No, -1, kHidden + kQuestion + "HostApplication.CloseAddOn\n"},
        {"yes", "", Answer::Yes, 2, kHidden + kQuestion + kVisible + read},
        {"the box fails", "MessageBoxes.Show", Answer::Yes, -1, kHidden + kQuestion + kVisible + told},
        {"hiding fails", "Container.SetVisible", Answer::Yes, -1, kHidden + kVisible + told},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        OrderedSession session("tunnel.json", 2);
        session.Begin();
        session.BeginList();
        session.bench.platform.boxes.answers = {c.answer};
        if (*c.failing != '\0')
            session.gate.FailNamed(c.failing, 1, kFailure, L"no");
        session.addOn->Activate();
        EXPECT_EQ(session.Calls(kAround), c.calls);
        EXPECT_EQ(session.addOn->GetResult(), c.result);
        EXPECT_EQ(session.container.visible, c.answer == Answer::Yes);
    }
}

TEST(LifeOrder, WhatWasPendingWhenAllIsLoadedIsNoChange) {
    OrderedSession session;
    session.Begin();
    std::int16_t result = 0;
    session.bench.platform.pump.Post([&] {
        result = session.addOn->GetResult();
        session.addOn->Editor().SetModified(true);
    });
    session.addOn->Activate();
    EXPECT_EQ(result, 2);
    EXPECT_FALSE(session.addOn->Editor().Modified());
}

/// Header and terminator are all that this device has.
struct TwoValues : OrderedSession {
    TwoValues() : OrderedSession("bare.json") {
        bench.host.SetConfigurationInteractive(true);
        Start();
        Edit();
    }
    /// The calls of a press, without what is looked up and what is asked of the device.
    std::string Pressed(const wchar_t* button, std::deque<int> answers = {}, const char* failing = nullptr) {
        BeginList(std::move(answers));
        if (failing)
            gate.FailNamed(failing, 1, kFailure, L"no");
        Press(button);
        return Calls({"Container.", "MessageBoxes.", "MessagePump.", "HostApplication.", "SupportObject.CommitPanel",
                      "SupportObject.ShowProgress", "SupportObject.HideProgress", "Configuration.SetInteractiveMode",
                      "ParameterTable.SetInteractiveMode", "ParameterTable.SetValue"});
    }
};

TEST(LifeOrder, TheControlIsDisabledRoundTheWholeOfASave) {
    const std::string begun = R"(SupportObject.CommitPanel 0
Container.SetEnabled off
HostApplication.PrepareProgress 0
Configuration.SetInteractiveMode 0
SupportObject.ShowProgress Saving parameters..., Output Format Addon
)";
    const std::string values = "ParameterTable.SetValue <STX>\nParameterTable.SetValue <CR><LF><CR>\n";
    const std::string switchOn = "Configuration.SetInteractiveMode 1\n";
    const std::string enabled = "Container.SetEnabled on\n";
    TwoValues session;
    EXPECT_EQ(session.Pressed(L"cmdApply", {0, 0, 311}),
              begun + "MessagePump.ProcessPending\nSupportObject.HideProgress\n" + switchOn +
                  "MessageBoxes.Show Error: Couldn't save parameters to MIB! MIBSAP Error 311\n" + enabled);
    EXPECT_TRUE(session.addOn->Editor().Modified());
    EXPECT_EQ(session.addOn->GetResult(), 1);
    EXPECT_EQ(session.Pressed(L"cmdApply", {}, "ParameterTable.SetValue"),
              begun + "ParameterTable.SetValue <STX>\nSupportObject.HideProgress\n" + switchOn + enabled +
                  "MessageBoxes.Show Output Format Addon: AddOnControl.cmdApply_Click -7: no\n");
    EXPECT_EQ(session.Pressed(L"cmdApply"),
              begun + values +
                  "MessagePump.ProcessPending\nSupportObject.HideProgress\nParameterTable.SetInteractiveMode 1\n" +
                  switchOn + enabled);
    EXPECT_FALSE(session.addOn->Editor().Modified());
    session.Edit();
    EXPECT_EQ(session.Pressed(L"cmdOK"),
              "Container.SetEnabled off\nHostApplication.PrepareProgress 0\nParameterTable.SetValue <STX><STX>\n"
              "ParameterTable.SetValue <CR><LF><CR><LF><CR>\n" +
                  enabled + "HostApplication.CloseAddOn\n");
}

TEST(LifeOrder, TheServiceGoesBeforeTheConfiguration) {
    TwoValues session;
    session.Press(L"cmdApply");
    session.BeginList();
    session.gate.FailNamed("MibSapService.Disconnect", 1, kFailure, L"no");
    session.addOn->Terminate();
    EXPECT_EQ(session.Calls(), "MibSapService.Disconnect\nConfigurationManager.ReleaseConfiguration\n");
    EXPECT_EQ(session.bench.host.OpenConfigurations(), 0);
}

TEST(LifeOrder, AJumpStoresWhatCouldNotBeStoredWhenItsFieldWasLeft) {
    using controls::PictureList;
    const struct {
        const wchar_t* page;
        const wchar_t* box;
        std::function<void(OrderedSession&)> jump;
        const wchar_t* to;
        std::function<std::wstring(model::OutFormatConfig&)> stored;
    } cases[] = {
        {L"FormatDef", L"mbeHeader",
         [](auto& session) {
             auto& formats = dynamic_cast<PictureList&>(session.Widget(L"plsFormats"));
             formats.Select(0);
             formats.HandleKey({.key = controls::Key::Return});
         },
         L"Format1", [](auto& root) { return root.StandardFormat().Header(); }},
        {L"Group1", L"mbeGroupLocalNoReadStr",
         [](auto& session) {
             dynamic_cast<controls::CheckList&>(session.Widget(L"lvwCodes")).Select(0);
             session.Press(L"cmdGoGrpCode");
         },
         L"Code1", [](auto& root) { return root.Codes().Groups().Item(1).NoReadString(); }},
        {L"Format1", L"mbeAdvFmtHeader", [](auto& session) { session.Press(L"cmdGoItemCode"); }, L"Group1",
         [](auto& root) { return root.AdvancedFormats().Item(1).Header(); }},
    };
    for (const auto& c : cases) {
        OrderedSession session;
        session.Start();
        model::OutFormatConfig& root = *session.state.root;
        root.Codes().Combination(2);
        root.Codes().Groups().Add().AddCode(L"1");
        root.Advanced(true);
        root.AdvancedFormats().Item(1).OutItems().Item(1).CodeNumber(1);
        session.addOn->Editor().BuildTree();
        session.Select(c.page);
        session.Type(c.box, L"x");
        session.gate.FailNamed("SupportObject.BytesToText", 1, kFailure, L"no");
        session.addOn->Editor().Form().SetFocus(session.Widget(L"tvw"));
        EXPECT_EQ(c.stored(root).find(L'x'), std::wstring::npos);
        c.jump(session);
        EXPECT_EQ(dynamic_cast<controls::Tree&>(session.Widget(L"tvw")).SelectedKey(), c.to);
        EXPECT_NE(c.stored(root).find(L'x'), std::wstring::npos) << std::string(c.box, c.box + 5);
    }
}

/// A host at level 2, which is asked for what only level 3 may see.
struct LookUps : OrderedSession {
    LookUps() {
        bench.host.SetAccessLevel(2);
        Begin();
        BeginList();
    }
    device::ParameterAccess access{state};
};

TEST(ReadOrder, SwitchesTheLevelRoundTheLookUpAlone) {
    const std::string table =
        "Configuration.GetDeviceRecords\nDeviceRecords.Record 0, 0\nDeviceRecord.GetParameterTable 0\n";
    const std::string under3 = "Configuration.AccessLevel\nConfiguration.SetAccessLevel 3\n" + table;
    LookUps session;
    session.access.Read(330, 0, 3);
    EXPECT_EQ(session.Calls(), under3 + "ParameterTable.FindByNumber 330\nParameterTable.GetValue 0\n"
                                        "Configuration.SetAccessLevel 2\n");
    session.BeginList();
    session.access.Read(std::wstring(L"/OutputFormat/Header"), 0, 3);
    EXPECT_EQ(session.Calls(), under3 + "ParameterTable.FindByPath /OutputFormat/Header, 3\nParameterTable.GetValue 0\n"
                                        "Configuration.SetAccessLevel 2\n");
    session.BeginList();
    EXPECT_EQ(session.access.Read(330, 0, 0), device::Value()) << "hidden, although the host may see it";
    EXPECT_THAT(session.Calls(), StartsWith("Configuration.AccessLevel\nConfiguration.SetAccessLevel 0\n"));
    session.BeginList();
    EXPECT_EQ(session.access.Read(999999), device::Value());
    EXPECT_EQ(session.Calls(), "Configuration.AccessLevel\nConfiguration.SetAccessLevel 2\n" + table +
                                   "ParameterTable.FindByNumber 999999\nConfiguration.SetAccessLevel 2\n");
}

TEST(ReadOrder, PutsLevelAndDeviceBackWhateverFails) {
    const std::function<void(device::ParameterAccess&)> lookUps[] = {
        [](auto& access) { access.Read(330, 0, 3); },
        [](auto& access) { access.ElementCount(330, 3); },
        [](auto& access) { access.ValueLabel(330, 1, 3); },
        [](auto& access) { access.ClusterOrDeviceDescription(1); },
    };
    for (const auto& lookUp : lookUps)
        for (int call = 1; call <= 7; ++call) { // the eighth puts the level back
            SCOPED_TRACE(testing::Message() << "look-up " << &lookUp - lookUps << ", call " << call);
            LookUps session;
            session.gate.FailCall(call, kFailure, L"no");
            EXPECT_THROW(lookUp(session.access), Error);
            EXPECT_EQ(session.bench.host.AccessLevel(), 2) << session.Calls();
            EXPECT_EQ(session.state.current.device, 0) << "left at the device that was described";
        }
}

} // namespace
} // namespace orv::addon
