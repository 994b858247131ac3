#include "controls/check_list.h"
#include "controls/tab_strip.h"
#include "controls/text_box.h"
#include "fixture.h"

namespace orv::editor {
namespace {

using controls::CheckList;
using controls::OptionButton;

/// Codes 1 to 4 of ten are enabled; the groups are "1|2&[3]".
struct GroupPageTest : test::EditorFixture {
    GroupPageTest() : EditorFixture(test::Sample("conveyor.json")) {}
    model::Groups& Groups() { return root.Codes().Groups(); }
    controls::TabStrip& Tabs() { return Get<controls::TabStrip>(L"tbs"); }
    CheckList& List() { return Get<CheckList>(L"lvwCodes"); }
    bool Chosen(const wchar_t* name) { return Get<OptionButton>(name).Chosen(); }
    std::wstring Expression() { return Get<controls::TextBox>(L"txtExpression").Text(); }
    std::wstring NodeText(const wchar_t* key) { return Get<controls::Tree>(L"tvw").FindNode(key)->text; }
    std::wstring Selected() { return Get<controls::Tree>(L"tvw").SelectedKey(); }
    /// Group `index` is shown under that label everywhere, and stands in the expression.
    void ExpectShown(int index, const std::wstring& label, const std::wstring& expression) {
        const std::wstring number = std::to_wstring(index);
        EXPECT_EQ(Caption(L"lblPage"), L"Group Definition: " + number + L" - " + label);
        EXPECT_EQ(NodeText((L"Group" + number).c_str()), number + L" - " + label);
        EXPECT_EQ(Expression(), expression);
        EXPECT_EQ(Tabs().SelectedKey(), L"Group" + number);
    }
    void Show(const std::wstring& expression, const wchar_t* key) {
        Groups().ParseExpression(expression);
        editor->BuildTree();
        Click(key);
    }
};

TEST_F(GroupPageTest, TheRootShowsTheFirstGroupOrSaysThatThereIsNone) {
    Click(L"GroupDef");
    ExpectShown(1, L"1 OR 2", L"(1 OR 2) AND ([3])");
    EXPECT_EQ(Tabs().Tabs().size(), 2u);
    EXPECT_EQ(Tabs().Tabs()[1].caption, L"Group 2");
    EXPECT_EQ(Selected(), L"GroupDef");
    Show(L"", L"GroupDef");
    EXPECT_EQ(Caption(L"lblPage"), L"Groups: none defined!");
    EXPECT_FALSE(editor->Root().Find(L"fraGroupDef")->Enabled());
    EXPECT_TRUE(Tabs().Tabs().empty());
    EXPECT_EQ(Expression(), L"");
    EXPECT_FALSE(Chosen(L"optOR") || Chosen(L"optXOR"));
    EXPECT_EQ(Box(L"mbeGroupLocalNoReadStr").Text(), L"");
    Show(L"2", L"GroupDef");
    EXPECT_TRUE(List().EffectivelyEnabled()) << "the page is for use again";
    ExpectShown(1, L"2", L"(2)");
    EXPECT_FALSE(editor->Modified());
}

TEST_F(GroupPageTest, AGroupIsShownAsItStandsInTheModel) {
    Groups().Item(2).NoReadString(L"G2?\r");
    Click(L"Group2");
    ExpectShown(2, L"[3]", L"(1 OR 2) AND ([3])");
    ASSERT_EQ(List().Rows().size(), 4u) << "enabled codes alone";
    EXPECT_EQ(List().Rows()[3].text, root.Codes().Code(4)->Description());
    EXPECT_EQ(List().CheckedData(), (std::vector<std::int32_t>{3}));
    EXPECT_TRUE(Get<controls::CheckBox>(L"chkOptional").Checked());
    EXPECT_EQ(Box(L"mbeGroupLocalNoReadStr").Text(), L"G2?<CR>");
    EXPECT_EQ(Box(L"mbeGroupLocalMultipleReadStr").Text(), L"G2+");
    EXPECT_EQ(Box(L"mbeGroupLocalNoReadStr").MaxLength(), 128u);
    for (const std::int32_t join : {model::kJoinedByOr, model::kJoinedByXor, model::kJoinUndecided}) {
        Groups().Item(1).Multiple(join);
        Click(L"Group1");
        EXPECT_EQ(Chosen(L"optOR"), join == model::kJoinedByOr);
        EXPECT_EQ(Chosen(L"optXOR"), join == model::kJoinedByXor) << "an undecided one presses neither";
    }
    EXPECT_FALSE(editor->Modified());
}

TEST_F(GroupPageTest, EachChangeIsShownInCaptionNodeAndExpression) {
    Click(L"Group1");
    Get<OptionButton>(L"optXOR").Choose();
    ExpectShown(1, L"1 XOR 2", L"(1 XOR 2) AND ([3])");
    EXPECT_EQ(Groups().Item(1).Multiple(), 0);
    EXPECT_TRUE(editor->Modified());
    editor->SetModified(false);
    Get<OptionButton>(L"optOR").Choose();
    ExpectShown(1, L"1 OR 2", L"(1 OR 2) AND ([3])");
    EXPECT_EQ(Groups().Item(1).Multiple(), -1);
    EXPECT_TRUE(editor->Modified());
    editor->SetModified(false);
    Get<controls::CheckBox>(L"chkOptional").Toggle();
    ExpectShown(1, L"[1 OR 2]", L"([1 OR 2]) AND ([3])");
    EXPECT_TRUE(editor->Modified());
    Get<controls::CheckBox>(L"chkOptional").Toggle();
    EXPECT_FALSE(Groups().Item(1).IsOptional());
    List().Toggle(3);
    List().Toggle(0);
    ExpectShown(1, L"2 OR 4", L"(2 OR 4) AND ([3])");
    List().Toggle(0);
    EXPECT_EQ(Groups().Item(1).Text(false), L"1|2|4") << "in the order of the list, whatever was checked last";
}

TEST_F(GroupPageTest, AGroupKeepsAtLeastOneCode) {
    Show(L"2&[3|7]", L"Group1");
    List().Toggle(1);
    EXPECT_EQ(bench.platform.boxes.beeps, 1);
    EXPECT_EQ(List().CheckedData(), (std::vector<std::int32_t>{2}));
    ExpectShown(1, L"2", L"(2) AND ([3 OR 7])");
    EXPECT_TRUE(editor->Modified());
    EXPECT_TRUE(Boxes().empty());
    Click(L"Group2");
    List().Toggle(2);
    EXPECT_EQ(Groups().Item(2).Text(false), L"[3]") << "a code that is not listed does not count";
    List().Toggle(0);
    List().Toggle(2);
    EXPECT_EQ(Groups().Item(2).Text(false), L"[1]");
    EXPECT_EQ(bench.platform.boxes.beeps, 2);
}

TEST_F(GroupPageTest, ReferencesThatAreNotListedStayUntilACheckChanges) {
    struct Case {
        const wchar_t* expression;
        const wchar_t* said;
    };
    for (const Case& c : {
             Case{L"1|2", L""},
             Case{L"1|7", L"Also refers to disabled code 7; changing a check removes it"},
             Case{L"1|03", L"Also refers to unknown code 03; changing a check removes it"},
             Case{L"9|1|Any & all",
                  L"Also refers to disabled code 9, unknown code Any & all; changing a check removes them"},
         }) {
        SCOPED_TRACE(std::string(c.expression, c.expression + std::wcslen(c.expression)));
        const bool splits = std::wstring(c.expression).find(L'&') != std::wstring::npos;
        Show(splits ? L"9|1" : c.expression, L"Group1");
        if (splits) {
            Groups().Item(1).AddCode(L"Any & all");
            Click(L"Group1");
        }
        EXPECT_EQ(Caption(L"lblUnlisted"), c.said);
        EXPECT_EQ(List().Rows()[2].checked, false) << "03 is not 3";
        const std::wstring before = Groups().Item(1).Text(false);
        Get<controls::CheckBox>(L"chkOptional").Toggle();
        EXPECT_EQ(Groups().Item(1).Text(false), L"[" + before + L"]");
        List().Toggle(3);
        EXPECT_EQ(Groups().Item(1).Text(false), std::wcslen(c.said) == 0 ? L"[1|2|4]" : L"[1|4]");
        EXPECT_EQ(Caption(L"lblUnlisted"), L"");
    }
}

TEST_F(GroupPageTest, ATabShowsItsGroupAndTheTreeFollows) {
    Click(L"Group1");
    editor->Form().SetFocus(Box(L"mbeGroupLocalNoReadStr"));
    Box(L"mbeGroupLocalNoReadStr").TypeText(L"x");
    const std::wstring first = Groups().Item(1).NoReadString();
    Tabs().Select(1);
    EXPECT_EQ(Groups().Item(1).NoReadString(), L"x" + first) << "what was being typed belongs to the group left";
    EXPECT_EQ(Groups().Item(2).NoReadString(), L"G2?\r");
    ExpectShown(2, L"[3]", L"(1 OR 2) AND ([3])");
    EXPECT_EQ(Selected(), L"Group2");
    Box(L"mbeGroupLocalMultipleReadStr").TypeText(L"y");
    editor->CommitPending();
    EXPECT_EQ(Groups().Item(2).MultipleReadString(), L"yG2+");
    Box(L"mbeGroupLocalNoReadStr").TypeText(L"z");
    bench.host.Gate().FailNamed("SupportObject.BytesToText", 1, 42, L"no");
    Tabs().Select(0);
    EXPECT_EQ(Tabs().SelectedKey(), L"Group2") << "what cannot be stored keeps its tab";
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, L"AddOnControl.mbeGroupLocalNoReadStr_Validate\n42: no");
    Click(L"GroupDef");
    EXPECT_EQ(Groups().Item(2).NoReadString(), L"zG2?\r");
    Tabs().Select(1);
    EXPECT_EQ(Selected(), L"Group2");
}

TEST_F(GroupPageTest, ACodeIsOneStepAway) {
    Click(L"Group1");
    EXPECT_FALSE(Button(L"cmdGoGrpCode").Enabled());
    List().Select(2);
    Button(L"cmdGoGrpCode").Press();
    EXPECT_EQ(Selected(), L"Code3");
    EXPECT_TRUE(Visible(L"fraCode"));
    EXPECT_TRUE(Get<controls::Tree>(L"tvw").FindNode(L"Group1")->bold);
    root.Codes().Code(1)->Enabled(false);
    Click(L"Group2");
    EXPECT_TRUE(Button(L"cmdGoGrpCode").Enabled()) << "the row stays selected";
    List().Activate(0);
    EXPECT_EQ(Selected(), L"Code2") << "a row is a code, not a position";
    EXPECT_FALSE(editor->Modified());
}

TEST_F(GroupPageTest, AGroupThatIsGoneIsReported) {
    Groups().Remove(2);
    Click(L"Group2");
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text.substr(0, 28), L"AddOnControl.tvw_NodeClick\n5");
}

struct NoGroupStringsTest : test::EditorFixture {
    NoGroupStringsTest() : EditorFixture(test::With(17, {})) {}
};

TEST_F(NoGroupStringsTest, AStringThatTheDeviceLacksSaysSo) {
    root.Codes().Combination(2);
    root.Codes().Groups().ParseExpression(L"1");
    editor->BuildTree();
    Click(L"Group1");
    EXPECT_FALSE(Box(L"mbeGroupLocalNoReadStr").Enabled());
    EXPECT_NE(Box(L"mbeGroupLocalNoReadStr").Hint().find(L"parameter 17: not on this device"), std::wstring::npos);
    EXPECT_TRUE(Box(L"mbeGroupLocalMultipleReadStr").EffectivelyEnabled());
}

} // namespace
} // namespace orv::editor
