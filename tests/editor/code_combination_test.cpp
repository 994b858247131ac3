#include "fixture.h"

namespace orv::editor {
namespace {

using controls::ComboBox;
using controls::OptionButton;

struct CodeCombinationTest : test::EditorFixture {
    CodeCombinationTest() : CodeCombinationTest(test::Sample("conveyor.json")) {}
    explicit CodeCombinationTest(const sim::SystemDescription& system) : EditorFixture(system) {
        root.Codes().Combination(2);
        root.Codes().Groups().ParseExpression(L"1&2&3");
        Refresh();
    }
    void Refresh() {
        editor->BuildTree();
        Click(L"CodeDef");
        editor->SetModified(false);
    }
    ComboBox& Count() { return Get<ComboBox>(L"cboSlotsCount"); }
    OptionButton& Option(int value) { return Get<OptionButton>(L"optCodeComb", value); }
    bool HasNode(const wchar_t* key) { return Get<controls::Tree>(L"tvw").FindNode(key) != nullptr; }
    model::OutItem& AddItem(int format, std::int32_t category, std::uint8_t code) {
        model::OutItems& items = root.AdvancedFormats().Item(format).OutItems();
        model::OutItem& item = items.Create(static_cast<std::int16_t>(items.Count() + 1), {});
        item.ItemCategory(category);
        item.CodeNumber(code);
        return item;
    }
    std::wstring CodesOf(int format) {
        std::wstring all;
        for (const model::OutItem& item : root.AdvancedFormats().Item(format).OutItems())
            all += std::to_wstring(item.CodeNumber()) + L" ";
        return all;
    }
    /// In the first format a code-related item for each group and a global one with a number that means nothing, in
    /// the second the last group alone.
    void AddItems() {
        for (int format : {1, 2})
            root.AdvancedFormats().Item(format).OutItems().Clear();
        for (std::uint8_t code : {3, 1, 3, 2, 3})
            AddItem(1, model::item_category::kCodeRelated, code);
        AddItem(1, model::item_category::kGlobal, 3);
        AddItem(2, model::item_category::kCodeRelated, 3);
    }
};

TEST_F(CodeCombinationTest, EachListedCombinationHasItsOptionAndAClickStoresIt) {
    EXPECT_TRUE(Option(2).Chosen());
    EXPECT_EQ(Option(3).PlainCaption(), L"Match code");
    EXPECT_TRUE(HasNode(L"GroupDef") && HasNode(L"Group3"));
    Option(1).Choose();
    EXPECT_EQ(root.Codes().Combination(), 1);
    EXPECT_TRUE(editor->Modified());
    EXPECT_FALSE(HasNode(L"GroupDef"));
    EXPECT_FALSE(Count().Enabled());
    EXPECT_NE(Count().ToolTip().find(L"combined by expression"), std::wstring::npos);
    Option(2).Choose();
    EXPECT_TRUE(HasNode(L"Group3"));
    EXPECT_TRUE(Count().Enabled());
    EXPECT_EQ(Count().ToolTip(), L"");
    EXPECT_EQ(Get<controls::Tree>(L"tvw").SelectedKey(), L"CodeDef");
    root.Codes().Combination(9);
    Click(L"CodeDef");
    for (OptionButton* option : Option(2).Group())
        EXPECT_FALSE(option->Chosen()) << "a value that the device does not list";
    EXPECT_EQ(root.Codes().Combination(), 9);
}

TEST_F(CodeCombinationTest, AnotherDeviceHasOtherOptions) {
    EXPECT_EQ(Count().Entries().size(), 11u) << "0 to as many as the device holds";
    EXPECT_EQ(Count().SelectedData(), 3);
    bench.state.current.accessLevel = 0;
    bench.host.SetAccessLevel(0);
    editor->ValuesRead();
    Click(L"CodeDef");
    EXPECT_FALSE(Option(2).EffectivelyVisible());
    EXPECT_NE(Caption(L"lblCodeComb").find(L"not on this device"), std::wstring::npos);
    EXPECT_FALSE(Count().Enabled());
    bench.state.current.accessLevel = 3;
    bench.host.SetAccessLevel(3);
    editor->ValuesRead();
    Click(L"CodeDef");
    EXPECT_TRUE(Option(2).EffectivelyVisible());
    EXPECT_EQ(Option(2).Group().size(), 4u) << "the widgets are used again";
}

TEST_F(CodeCombinationTest, MoreGroupsAreAppendedWithTheFirstCode) {
    Count().Select(5);
    ASSERT_EQ(root.Codes().Groups().Count(), 5);
    const model::Group& added = root.Codes().Groups().Item(5);
    EXPECT_EQ(added.Multiple(), 0);
    EXPECT_EQ(added.Text(true), L"1");
    EXPECT_EQ(added.NoReadString(), L"");
    EXPECT_EQ(root.Codes().Groups().Item(3).Text(true), L"3");
    EXPECT_TRUE(HasNode(L"Group5"));
    EXPECT_TRUE(editor->Modified());
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(CodeCombinationTest, FewerGroupsThatNothingRefersToGoWithoutAQuestion) {
    AddItems();
    root.AdvancedFormats().Item(2).OutItems().Clear();
    root.AdvancedFormats().Item(1).OutItems().Clear();
    AddItem(1, model::item_category::kCodeRelated, 1);
    AddItem(1, model::item_category::kGlobal, 3);
    Count().Select(1);
    EXPECT_TRUE(Boxes().empty());
    EXPECT_EQ(root.Codes().Groups().GetExpression(false), L"1") << "the last ones went";
    EXPECT_FALSE(HasNode(L"Group2"));
    EXPECT_EQ(CodesOf(1), L"1 3 ");
    EXPECT_TRUE(editor->Modified());
}

TEST_F(CodeCombinationTest, NoKeepsGroupsItemsAndTheListAsTheyWere) {
    AddItems();
    bench.platform.boxes.answers = {platform::Answer::No};
    Count().Select(2);
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, L"One or more items referring to groups to be removed will also be removed. Proceed?");
    EXPECT_EQ(Boxes()[0].title, L"Warning");
    EXPECT_EQ(Boxes()[0].icon, platform::Icon::Warning);
    EXPECT_EQ(Boxes()[0].buttons, platform::Buttons::YesNo);
    EXPECT_EQ(Boxes()[0].preset, platform::Answer::No);
    EXPECT_EQ(Count().SelectedData(), 3);
    EXPECT_EQ(root.Codes().Groups().Count(), 3);
    EXPECT_EQ(CodesOf(1), L"3 1 3 2 3 3 ");
    EXPECT_FALSE(editor->Modified());
}

TEST_F(CodeCombinationTest, YesTakesTheItemsOfAllFormatsAlong) {
    AddItems();
    bench.platform.boxes.answers = {platform::Answer::Yes, platform::Answer::Yes};
    Count().Select(2);
    EXPECT_EQ(CodesOf(1), L"1 2 3 ") << "the global item's number is no group";
    EXPECT_EQ(CodesOf(2), L"");
    EXPECT_EQ(root.AdvancedFormats().Item(1).OutItems().Item(2).Index(), 2);
    EXPECT_EQ(root.Codes().Groups().Count(), 2);
    Count().Select(0);
    EXPECT_EQ(Boxes().size(), 2u);
    EXPECT_EQ(CodesOf(1), L"3 ");
    EXPECT_EQ(root.Codes().Groups().Count(), 0);
    EXPECT_TRUE(HasNode(L"GroupDef"));
    EXPECT_FALSE(HasNode(L"Group1"));
}

TEST_F(CodeCombinationTest, AReferenceInALaterFormatAloneAsksToo) {
    AddItems();
    root.AdvancedFormats().Item(1).OutItems().Clear();
    bench.platform.boxes.answers = {platform::Answer::No};
    Count().Select(2);
    EXPECT_EQ(Boxes().size(), 1u);
}

TEST_F(CodeCombinationTest, TheTextsAreUsableByBothMessages) {
    struct Case {
        std::int32_t noRead;
        std::int32_t multipleRead;
        bool noReadText;
        bool multipleReadText;
    };
    for (const Case& c : {Case{0, 0, true, true}, Case{1, 1, true, true}, Case{2, 0, false, true},
                          Case{2, 1, false, false}, Case{2, 2, false, true}, Case{0, 1, true, true}}) {
        SCOPED_TRACE(std::to_string(c.noRead) + " and " + std::to_string(c.multipleRead));
        Get<ComboBox>(L"cboNoReadMsg").Select(c.noRead);
        Get<ComboBox>(L"cboMultiReadMsg").Select(c.multipleRead);
        EXPECT_EQ(root.Codes().NoReadMessage(), c.noRead);
        EXPECT_EQ(root.Codes().MultiReadMessage(), c.multipleRead);
        EXPECT_EQ(Box(L"mbeNoReadStr").Enabled(), c.noReadText);
        EXPECT_EQ(Box(L"mbeMultiReadStr").Enabled(), c.multipleReadText);
        EXPECT_EQ(Box(L"mbeNoReadStr").Hint().find(L"not used") == std::wstring::npos, c.noReadText);
        EXPECT_EQ(Box(L"mbeMultiReadStr").Hint().find(L"not used") == std::wstring::npos, c.multipleReadText);
    }
    EXPECT_TRUE(editor->Modified());
}

TEST_F(CodeCombinationTest, TheTextsAreStoredInTheirOwnProperties) {
    EXPECT_EQ(Box(L"mbeNoReadStr").Text(), L"NOREAD<CR>");
    Box(L"mbeNoReadStr").TypeText(L"a");
    Box(L"mbeMultiReadStr").TypeText(L"b");
    Click(L"FormatDef");
    EXPECT_EQ(root.Codes().NoReadString(), L"aNOREAD\r");
    EXPECT_EQ(root.Codes().MultiReadString(), L"bMULTI\x02READ\x03");
}

} // namespace
} // namespace orv::editor
