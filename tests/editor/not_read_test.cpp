// How the editor shows what was never read, and what it says of it.
#include <gmock/gmock.h>

#include "controls/check_list.h"
#include "controls/number_box.h"
#include "controls/picture_list.h"
#include "controls/text_box.h"
#include "controls/toolbar.h"
#include "fixture.h"
#include "tests/model/fixture.h"

namespace orv::editor {
namespace {

using controls::CheckBox;
using controls::ComboBox;
using controls::NumberBox;
using controls::OptionButton;
using device::Value;
using testing::HasSubstr;
using testing::Not;

/// The conveyor sample changed before it is opened under a level.
struct Opened : test::EditorFixture {
    void TestBody() override {}
    explicit Opened(const std::function<void(sim::DeviceDescription&)>& change, std::int32_t level = 3)
        : EditorFixture(Changed(change)) {
        bench.host.SetAccessLevel(level);
        bench.state.current.accessLevel = level;
        Load();
    }
    static sim::SystemDescription Changed(const std::function<void(sim::DeviceDescription&)>& change) {
        sim::SystemDescription system = test::Sample("conveyor.json");
        change(system.devices.front());
        return system;
    }
    std::string Strip() { return testing::PrintToString(Caption(L"lblTarget")); }
    std::string Tip() { return testing::PrintToString(editor->Root().Find(L"lblTarget")->ToolTip()); }
    std::string Hint() { return testing::PrintToString(Caption(L"lblHint")); }
    bool Writes(std::int32_t number, std::int32_t element = 0) {
        const sim::ParameterStore& store = *bench.host.Store(bench.cluster, 0);
        for (const auto& write : root.Plan().writes)
            if (const auto address = store.FindName(write.entry);
                store.Parameter(*address).number == number && address->element == element)
                return true;
        return false;
    }
    template <typename T>
    T& Shown(const wchar_t* name, int index = controls::Widget::kNoIndex) {
        T& widget = Get<T>(name, index);
        EXPECT_TRUE(widget.EffectivelyVisible()) << testing::PrintToString(name);
        EXPECT_TRUE(widget.EffectivelyEnabled()) << testing::PrintToString(name);
        return widget;
    }
};

auto Put(std::int32_t number, std::size_t element, Value value) {
    return [=](sim::DeviceDescription& device) { test::Parameter(device, number).values.at(element) = value; };
}

TEST(NotReadShown, ASlotShowsNothingFromTheValueOnThatCouldNotBeConverted) {
    Opened it([](sim::DeviceDescription& device) {
        Put(1, 0, std::int16_t{1})(device);
        Put(2, 0, std::int32_t{12})(device);
        Put(3002, 0, std::int16_t{300})(device);
    });
    it.Click(L"Code2");
    EXPECT_EQ(it.Strip(), "L\"\"");
    it.Click(L"Code1");
    EXPECT_THAT(it.Strip(), HasSubstr("3002 (Overflow), 3003, 3005, 3006, 3004,"));
    EXPECT_THAT(it.Strip(), HasSubstr("(not asked for)"));
    NumberBox& columns = it.Shown<NumberBox>(L"txtDMCols");
    EXPECT_EQ(columns.Text(), L"");
    EXPECT_TRUE(it.Shown<CheckBox>(L"chkDMRectangular").Undetermined());
    EXPECT_TRUE(it.editor->CommitPending()) << "an empty number that stays empty is no wrong one";
    it.editor->Form().SetFocus(columns);
    columns.Edit(L"0");
    it.editor->Form().RouteKey({.key = controls::Key::Tab});
    EXPECT_TRUE(it.Writes(3002)) << "the same number is a change";
    EXPECT_FALSE(it.Writes(3003));
    EXPECT_THAT(it.Strip(), Not(HasSubstr("3002 ")));
    it.Shown<CheckBox>(L"chkDMRectangular").Toggle();
    EXPECT_TRUE(it.Writes(3005));
    EXPECT_TRUE(it.editor->Modified());
}

TEST(NotReadShown, EachSortOfFieldShowsNothingAndTakesAValue) {
    Opened it([](sim::DeviceDescription& device) {
        for (const std::int32_t number : {330, 72, 14, 399, 6, 341, 342, 343, 345, 352, 364, 365, 366})
            Put(number, 0, Value())(device);
        Put(9, 0, std::int16_t{5})(device);
    });
    it.Click(L"CodeDef");
    EXPECT_THAT(it.Strip(), HasSubstr("399, 72, 14 (no value), 9 (Type mismatch)"));
    EXPECT_EQ(it.Shown<ComboBox>(L"cboNoReadMsg").Selected(), -1);
    for (int value = 0; value < 4; ++value)
        EXPECT_FALSE(it.Get<OptionButton>(L"optCodeComb", value).Chosen());
    EXPECT_EQ(it.Shown<controls::MBEdit>(L"mbeNoReadStr").Text(), L"");
    it.Shown<ComboBox>(L"cboNoReadMsg").Select(0);
    it.Shown<OptionButton>(L"optCodeComb", 0).Choose();
    it.editor->Form().SetFocus(it.Box(L"mbeNoReadStr"));
    it.Box(L"mbeNoReadStr").TypeText(L"x");
    EXPECT_TRUE(it.editor->CommitPending());
    EXPECT_TRUE(it.Writes(14) && it.Writes(72) && it.Writes(9));
    EXPECT_THAT(it.Strip(), Not(HasSubstr("14")));
    EXPECT_THAT(it.Strip(), Not(HasSubstr("9 (Type")));

    it.Click(L"FormatDef");
    EXPECT_FALSE(it.Get<OptionButton>(L"optStdFormat").Chosen() || it.Get<OptionButton>(L"optAdvFormat").Chosen());
    EXPECT_THAT(it.Strip(), HasSubstr("330, 6 (no value)"));
    it.Shown<OptionButton>(L"optAdvFormat").Choose();
    EXPECT_TRUE(it.Writes(330));

    it.Click(L"Format1");
    EXPECT_EQ(it.Get<controls::TextBox>(L"txtTransports").Text(), L"");
    EXPECT_EQ(it.Get<ComboBox>(L"cboAlign").Selected(), -1);
    EXPECT_EQ(it.Get<NumberBox>(L"txtAlignLength").Text(), L"");
    EXPECT_EQ(it.Get<ComboBox>(L"cboLinkTo").Selected(), -1);
    EXPECT_THAT(it.Strip(),
                HasSubstr("item 1: 352, 364, 365, 366 (no value), 342, 343, 341, 345 (no value). When items"));
}

TEST(NotReadShown, ATypeThatWasNotReadIsNotCalledACode) {
    Opened it([](sim::DeviceDescription& device) {
        Put(330, 0, std::int16_t{1})(device);
        Put(355, 0, Value())(device);
        Put(351, 0, std::int32_t{0})(device);
    });
    it.Click(L"Format1");
    EXPECT_EQ(it.Get<ComboBox>(L"cboItemType").Selected(), -1);
    EXPECT_EQ(it.Get<controls::PictureList>(L"pls").Rows().front().caption, L"Type not read, group 1");
}

TEST(NotReadShown, AnExpressionThatDoesNotParseIsKeptUntilANumberOfGroupsIsChosen) {
    Opened it([](sim::DeviceDescription& device) {
        Put(72, 0, std::int32_t{2})(device);
        Put(191, 0, std::wstring(L"1|2^3&4"))(device);
    });
    for (const wchar_t* key : {L"CodeDef", L"GroupDef"}) {
        it.Click(key);
        EXPECT_THAT(it.Strip(), HasSubstr("1|2^3&4, makes no sense from character 4 on"));
    }
    it.Click(L"CodeDef");
    EXPECT_EQ(it.Shown<ComboBox>(L"cboSlotsCount").Selected(), -1);
    EXPECT_FALSE(it.Writes(191));
    it.Shown<ComboBox>(L"cboSlotsCount").Select(0);
    EXPECT_TRUE(it.Writes(191)) << "none is a number, too";
    EXPECT_EQ(it.Strip(), "L\"\"");
}

TEST(NotReadShown, WithoutTheNumberOfItemsNoneIsAddedOrRemoved) {
    Opened it([](sim::DeviceDescription& device) {
        Put(330, 0, std::int16_t{1})(device);
        Put(350, 0, Value())(device);
        Put(72, 0, std::int32_t{2})(device);
        Put(191, 0, std::wstring(L"1&2"))(device);
        Put(351, 0, std::int32_t{0})(device);
        Put(358, 0, std::uint8_t{2})(device);
    });
    it.Click(L"Format1");
    EXPECT_THAT(it.Strip(), HasSubstr("349 (350 (no value))"));
    EXPECT_EQ(it.Caption(L"lblItems"), L"Items 5") << "of how many nobody knows";
    const std::int32_t count = it.root.AdvancedFormats().Item(1).OutItems().Count();
    EXPECT_FALSE(it.Get<controls::Toolbar>(L"tbrCodeRel").Enabled());
    EXPECT_THAT(testing::PrintToString(it.Get<controls::Toolbar>(L"tbrMisc").Hint()), HasSubstr("did not say"));
    auto& list = it.Get<controls::PictureList>(L"pls");
    list.onDrop(L"Length", 0);
    EXPECT_THAT(it.Hint(), HasSubstr("did not say"));
    list.onDelete(1);
    EXPECT_EQ(it.root.AdvancedFormats().Item(1).OutItems().Count(), count);
    EXPECT_TRUE(it.Boxes().empty());
    EXPECT_FALSE(it.editor->Modified());
    it.Click(L"CodeDef");
    it.Shown<ComboBox>(L"cboSlotsCount").Select(1);
    EXPECT_THAT(it.Hint(), HasSubstr("The number of groups stays"));
    EXPECT_EQ(it.Get<ComboBox>(L"cboSlotsCount").SelectedData(), 2);
    EXPECT_EQ(it.root.AdvancedFormats().Item(1).OutItems().Count(), count);
    EXPECT_TRUE(it.Boxes().empty());
}

TEST(NotReadShown, AFixedLengthThatCannotBeSavedCannotBeChosen) {
    Opened it([](sim::DeviceDescription& device) { test::Parameter(device, 4).level = 3; }, 2);
    it.Click(L"Code1");
    for (const wchar_t* name :
         {L"optLengthFixed", L"optLengthVariable", L"txtLength", L"txtMinLength", L"txtMaxLength"}) {
        EXPECT_FALSE(it.editor->Root().Find(name)->Enabled()) << testing::PrintToString(name);
        if (name != std::wstring(L"txtMaxLength")) { // which the device hides
            EXPECT_THAT(testing::PrintToString(it.editor->Root().Find(name)->Hint()),
                        HasSubstr("fixed length needs both"));
        }
    }
}

TEST(NotReadShown, SeveralStripsAreCountedAndAllStandInTheTip) {
    Opened it(
        [](sim::DeviceDescription& device) {
            Put(330, 0, std::int16_t{1})(device);
            Put(350, 0, std::int16_t{0})(device);
            Put(345, 0, Value())(device);
            for (const std::int32_t number : {357, 366})
                test::Parameter(device, number).level = 3;
        },
        2);
    it.Click(L"Format1");
    it.bench.state.current.device = 1;
    it.bench.state.current.accessLevel = 1;
    it.editor->RefreshDeviceLine();
    EXPECT_THAT(it.Strip(), HasSubstr("1 of 5: Read from device 0"));
    const std::string tip = it.Tip();
    std::size_t last = 0;
    for (const char* part : {"saving writes to device 1", "Read at access level 2, but the level is 1 now",
                             "a format holds 0 items", "345 (no value)", "357, 366 are above"}) {
        const std::size_t at = tip.find(part);
        ASSERT_NE(at, std::string::npos) << part << " in " << tip;
        EXPECT_GE(at, last) << part;
        last = at;
    }
    EXPECT_TRUE(it.Get<controls::Button>(L"cmdReadAgain").Visible());
    it.Get<controls::Button>(L"cmdReadAgain").Press();
    EXPECT_EQ(it.readings, 1);
}

TEST(NotReadShown, AnotherTypeLeavesAFormatAloneThatWasNotRead) {
    Opened it([](sim::DeviceDescription& device) {
        Put(330, 0, std::int16_t{1})(device);
        Put(351, 0, std::int32_t{0})(device);
        Put(355, 0, std::int32_t{1})(device);
        for (const std::int32_t number : {364, 365})
            Put(number, 0, Value())(device);
    });
    it.Click(L"Format1");
    it.Shown<ComboBox>(L"cboItemType").Select(0); // a code has no number format
    EXPECT_TRUE(it.Writes(355));
    EXPECT_FALSE(it.Visible(L"fraDataFormat"));
    EXPECT_FALSE(it.Writes(364) || it.Writes(365)) << "0 over what nobody saw, in fields that nobody sees";
    EXPECT_THAT(it.Strip(), HasSubstr("364, 365"));
}

TEST(NotReadShown, AnUndoneTextIsNoChange) {
    Opened it([](sim::DeviceDescription& device) { Put(6, 0, Value())(device); });
    it.Click(L"FormatDef");
    controls::MBEdit& header = it.Shown<controls::MBEdit>(L"mbeHeader");
    it.editor->Form().SetFocus(header);
    header.TypeText(L"x");
    header.Undo();
    it.editor->Form().RouteKey({.key = controls::Key::Tab});
    EXPECT_FALSE(it.Writes(6)) << "an empty header over the one on the device";
    EXPECT_THAT(it.Strip(), HasSubstr("6 (no value)"));
}

TEST(NotReadShown, AnExpressionIsKeptWhenItsCombinationWasNotRead) {
    Opened it([](sim::DeviceDescription& device) {
        Put(72, 0, Value())(device);
        Put(191, 0, std::wstring(L"1&2"))(device);
    });
    it.Click(L"CodeDef");
    it.Shown<OptionButton>(L"optCodeComb", 2).Choose();
    EXPECT_TRUE(it.Writes(72));
    EXPECT_TRUE(!it.Writes(191) || it.root.Codes().Groups().Count() == 2) << "the groups of the device are gone";
}

TEST(NotReadShown, AWrongLimitIsNoObstacleOnceItsFieldIsOff) {
    Opened it([](sim::DeviceDescription& device) {
        Put(1, 0, std::int16_t{1})(device);
        Put(2, 0, std::int32_t{1})(device);
        Put(70, 0, Value())(device);
    });
    it.Click(L"Code1");
    it.Shown<OptionButton>(L"optLengthVariable").Choose();
    NumberBox& minimum = it.Shown<NumberBox>(L"txtMinLength");
    it.editor->Form().SetFocus(minimum);
    minimum.Edit(L"99999");
    it.editor->Form().FocusLeft();
    it.Shown<OptionButton>(L"optLengthFixed").Choose();
    EXPECT_FALSE(minimum.Enabled());
    it.Button(L"cmdApply").Press();
    EXPECT_EQ(it.saves.size(), 1U) << it.Hint();
}

TEST(NotReadShown, ASaveAsksNothingAboutReadingModesThatWereNotRead) {
    Opened it([](sim::DeviceDescription& device) {
        Put(1, 0, std::int16_t{1})(device);
        Put(2, 0, std::int32_t{18})(device);
        Put(3002, 0, std::int16_t{300})(device);
    });
    it.editor->SetModified(true);
    it.Button(L"cmdApply").Press();
    EXPECT_TRUE(it.Boxes().empty()) << "they may well be enabled on the device, and stay as they are";
}

} // namespace
} // namespace orv::editor
