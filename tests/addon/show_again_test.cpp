// The host hides the control and shows it again, perhaps under another access level.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "controls/combo_box.h"
#include "controls/number_box.h"
#include "controls/text_box.h"
#include "tests/addon/session.h"

namespace orv::addon {
namespace {

using platform::Answer;
using test::Session;
using testing::HasSubstr;

struct ShownAgain : testing::Test {
    ShownAgain() {
        session.bench.host.SetAccessLevel(1);
        session.Start();
        session.Select(L"FormatDef");
    }
    void Show(std::int32_t level) {
        session.bench.host.SetAccessLevel(level);
        session.addOn->Show();
    }
    std::string Caption(const wchar_t* name) { return testing::PrintToString(session.Widget(name).PlainCaption()); }
    model::OutFormatConfig& Root() { return *session.state.root; }
    /// Numbers of the parameters in which two states of the device differ.
    static std::vector<std::int32_t> Changed(const sim::DeviceDescription& before,
                                             const sim::DeviceDescription& after) {
        std::vector<std::int32_t> numbers;
        for (std::size_t i = 0; i < before.parameters.size(); ++i)
            if (before.parameters[i].values != after.parameters[i].values)
                numbers.push_back(before.parameters[i].number);
        return numbers;
    }

    Session session{"conveyor.json"};
};

TEST_F(ShownAgain, UnderAnotherLevelWithNothingChangedTheModelIsReadAnew) {
    const std::int32_t items = Root().AdvancedFormats().Item(1).OutItems().Item(1).LinkTo();
    session.bench.host.Store(session.bench.cluster, 0)->Set(366, 0, items + 1);
    Show(3);
    EXPECT_EQ(Root().AdvancedFormats().Item(1).OutItems().Item(1).LinkTo(), items + 1);
    EXPECT_TRUE(session.Boxes().empty());
    EXPECT_TRUE(session.Widget(L"fraFormatDef").Visible()) << "the page of the node that is selected";
    EXPECT_FALSE(session.Widget(L"fraCodeDef").Visible());
    EXPECT_THAT(Caption(L"lblPage"), HasSubstr("Format Definition"));
    EXPECT_THAT(Caption(L"lblDevice"), HasSubstr("level 3"));
    EXPECT_EQ(Caption(L"lblTarget"), "L\"\"");
    EXPECT_FALSE(session.Widget(L"cmdApply").Enabled());
    EXPECT_FALSE(session.Widget(L"cmdReadAgain").Visible());
    EXPECT_EQ(session.addOn->GetResult(), 2);
    session.bench.host.Gate().KeepLog(true);
    session.addOn->Activate();
    EXPECT_EQ(session.bench.host.Gate().Count("ParameterTable.GetValue"), 1)
        << "the cluster's description; nothing is loaded";
}

TEST_F(ShownAgain, WithSomethingChangedItIsOfferedAndASaveWritesTheChangeAlone) {
    session.Type(L"mbeHeader", L"\x02");
    Show(3);
    EXPECT_THAT(Caption(L"lblTarget"), HasSubstr("Read at access level 1, but the level is 3 now"));
    EXPECT_TRUE(session.Widget(L"cmdReadAgain").Visible());
    EXPECT_THAT(Caption(L"lblDevice"), HasSubstr("level 3"));
    const sim::DeviceDescription before = session.bench.device->Store().Contents();
    session.Press(L"cmdApply");
    EXPECT_TRUE(session.Boxes().empty());
    // Codes are read at the highest level, so the normal form of a fixed length is no secret that was not seen.
    EXPECT_EQ(Changed(before, session.bench.device->Store().Contents()), (std::vector<std::int32_t>{3, 4, 6, 70}));

    session.Type(L"mbeHeader", L"\x03");
    session.bench.platform.boxes.answers = {Answer::No, Answer::Yes};
    session.Press(L"cmdReadAgain");
    ASSERT_EQ(session.Boxes().size(), 1U);
    EXPECT_EQ(session.Boxes()[0].preset, Answer::No);
    EXPECT_TRUE(session.Widget(L"cmdApply").Enabled());
    session.Press(L"cmdReadAgain");
    EXPECT_FALSE(session.Widget(L"cmdApply").Enabled());
    EXPECT_FALSE(session.Widget(L"cmdReadAgain").Visible());
    EXPECT_EQ(Root().StandardFormat().Header().find(L'\x03'), std::wstring::npos);
    EXPECT_EQ(Caption(L"lblTarget"), "L\"\"");
    EXPECT_EQ(session.addOn->GetResult(), 1) << "reading is no result";
}

TEST_F(ShownAgain, AReadingThatFailsLeavesNothingToEditUntilTheNextActivation) {
    session.bench.host.Gate().FailNamed("ParameterTable.GetValue", 5, -7, L"host is busy", 100000);
    Show(3);
    ASSERT_EQ(session.Boxes().size(), 1U);
    EXPECT_EQ(session.Boxes()[0].text, L"AddOnControl.UserControl_Show\n-7: host is busy");
    for (const wchar_t* name : {L"fraCodeDef", L"fraFormatDef", L"tvw", L"cmdApply", L"cmdOK"})
        EXPECT_FALSE(session.Widget(name).EffectivelyEnabled()) << testing::PrintToString(name);
    session.bench.host.Gate().Reset();
    session.addOn->Activate();
    EXPECT_TRUE(session.Widget(L"fraCodeDef").EffectivelyEnabled());
    EXPECT_TRUE(session.Widget(L"tvw").Enabled());
    EXPECT_EQ(Root().Plan().leftOut.size(), 0U);
}

TEST_F(ShownAgain, UnderTheSameLevelWhatIsTypedStaysAndTheFieldsAreSetUpAnew) {
    session.Type(L"mbeHeader", L"\x02");
    session.bench.host.Gate().KeepLog(true);
    Show(1);
    EXPECT_NE(Root().StandardFormat().Header().find(L'\x02'), std::wstring::npos);
    EXPECT_TRUE(session.Widget(L"fraFormatDef").Visible());
    EXPECT_TRUE(session.Widget(L"cmdApply").Enabled());
    EXPECT_GT(session.bench.host.Gate().Count("ParameterTable.Describe"), 0);
    EXPECT_EQ(Caption(L"lblTarget"), "L\"\"");
}

TEST_F(ShownAgain, AWrongNumberIsStillThere) {
    Show(3);
    session.Select(L"Code1");
    auto& number = dynamic_cast<controls::NumberBox&>(session.Widget(L"txtMinLength"));
    session.addOn->Editor().Form().SetFocus(number);
    number.Edit(L"99999");
    session.addOn->Editor().Form().FocusLeft();
    for (const std::int32_t level : {3, 2}) {
        Show(level);
        EXPECT_EQ(number.Text(), L"99999");
        EXPECT_TRUE(number.EffectivelyVisible());
    }
    EXPECT_TRUE(session.Boxes().empty());
    session.bench.platform.boxes.answers = {Answer::Yes};
    session.Press(L"cmdReadAgain");
    EXPECT_EQ(session.Boxes().size(), 1U) << "what was typed is a change, too";
    EXPECT_EQ(number.Text(), L"4") << "given up";
}

TEST_F(ShownAgain, AnIdentifierThatWasGivenUpDoesNotComeBack) {
    Show(3);
    session.Select(L"CodeDef");
    auto& modes = dynamic_cast<controls::ComboBox&>(session.Widget(L"cboCodeID"));
    for (std::size_t i = 0; i < modes.Entries().size(); ++i)
        if (modes.Entries()[i].data == 2)
            modes.Select(static_cast<int>(i));
    Root().CustomCodeID(0, {});
    session.addOn->Editor().SetModified(true);
    session.Press(L"cmdApply");
    ASSERT_EQ(session.OnDevice(400), device::Value(Bytes()));

    Root().CustomCodeID(0, L"X");
    session.addOn->Editor().SetModified(true);
    Show(2);
    session.bench.platform.boxes.answers = {Answer::Yes}; // changes since the last save are lost
    session.Press(L"cmdReadAgain");
    EXPECT_EQ(Root().CustomCodeID(0), L"");
    session.Select(L"FormatDef");
    session.Type(L"mbeHeader", L"\x02");
    session.Press(L"cmdApply");
    EXPECT_EQ(session.OnDevice(400), device::Value(Bytes())) << "written although it was given up";
}

TEST_F(ShownAgain, APageThatCannotBeOpenedLeavesPageAndTreeInAgreement) {
    session.bench.host.Gate().FailNamed("ParameterTable.Describe", 1, -7, L"host is busy");
    Show(1);
    ASSERT_EQ(session.Boxes().size(), 1U);
    EXPECT_EQ(dynamic_cast<controls::Tree&>(session.Widget(L"tvw")).SelectedKey(), L"FormatDef");
    EXPECT_TRUE(session.Widget(L"fraFormatDef").Visible());
    EXPECT_FALSE(session.Widget(L"fraCodeDef").Visible());
}

TEST_F(ShownAgain, AReadingThatFailsStillNamesTheNewLevel) {
    session.bench.host.Gate().FailNamed("ParameterTable.GetValue", 1, -7, L"host is busy");
    Show(3);
    ASSERT_EQ(session.Boxes().size(), 1U);
    EXPECT_THAT(Caption(L"lblDevice"), HasSubstr("level 3"));
}

TEST(ShownForAnotherDevice, ASlaveIsNotReadBeforeTheQuestionAndNotWhenDeclined) {
    Session session("tunnel.json");
    session.bench.host.SetAccessLevel(1);
    session.Start();
    const std::wstring header = session.state.root->StandardFormat().Header();
    session.addOn->CurrentDeviceIndex(2);
    session.bench.host.SetAccessLevel(3);
    session.addOn->Show();
    EXPECT_EQ(session.state.root->StandardFormat().Header(), header) << "a slave's, and nobody was asked";
    session.bench.platform.boxes.answers = {Answer::No};
    session.addOn->Activate();
    session.addOn->CurrentDeviceIndex(0);
    session.addOn->Show();
    session.addOn->Activate();
    EXPECT_EQ(session.state.root->StandardFormat().Header(), header);
    EXPECT_EQ(testing::PrintToString(session.Widget(L"lblTarget").PlainCaption()).find("Read from device 2"),
              std::string::npos);
}

} // namespace
} // namespace orv::addon
