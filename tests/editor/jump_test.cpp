// Leaving a page: for a code or a group that a field refers to, and with what cannot be stored.
#include <gmock/gmock.h>

#include "controls/number_box.h"
#include "controls/picture_list.h"
#include "fixture.h"
#include "tests/model/fixture.h"

namespace orv::editor {
namespace {

using controls::ComboBox;
using controls::NumberBox;
using testing::HasSubstr;

struct JumpTest : test::EditorFixture {
    JumpTest() : EditorFixture(test::Sample("conveyor.json")) {
        root.Advanced(true);
        editor->BuildTree();
    }
    model::OutItem& Item() { return root.AdvancedFormats().Item(1).OutItems().Item(1); }
    void OpenWithCode(std::uint8_t code) {
        Item().ItemCategory(0);
        Item().CodeRelType(1);
        Item().CodeNumber(code);
        Click(L"Format1");
    }
    /// A wrong number in the width of the format, left for another window of the host.
    NumberBox& TypeWrongWidth() {
        Click(L"Format1");
        Get<ComboBox>(L"cboAlign").Select(1);
        auto& width = Get<NumberBox>(L"txtAlignLength");
        editor->Form().SetFocus(width);
        width.Edit(L"99999");
        editor->Form().FocusLeft();
        return width;
    }
    std::string Hint() { return testing::PrintToString(Caption(L"lblHint")); }
};

TEST_F(JumpTest, ToAGroupOrACodeThatIsNotThereIsRefusedAndThePageStays) {
    root.Codes().Combination(2);
    editor->BuildTree();
    OpenWithCode(99);
    EXPECT_TRUE(Button(L"cmdGoItemCode").EffectivelyEnabled());
    Button(L"cmdGoItemCode").Press();
    EXPECT_THAT(Hint(), HasSubstr("There is no group 99"));
    root.Codes().Combination(1);
    Button(L"cmdGoItemCode").Press();
    EXPECT_THAT(Hint(), HasSubstr("There is no code 99"));
    EXPECT_TRUE(Visible(L"fraAdvFormat"));
    EXPECT_EQ(Get<controls::Tree>(L"tvw").SelectedKey(), L"Format1");
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(JumpTest, AWrongNumberKeepsItsPage) {
    OpenWithCode(1);
    NumberBox& width = TypeWrongWidth();
    Button(L"cmdGoItemCode").Press();
    EXPECT_TRUE(Visible(L"fraAdvFormat"));
    EXPECT_TRUE(width.Focused());
    EXPECT_EQ(width.Text(), L"99999");
    EXPECT_THAT(Hint(), HasSubstr("must be"));
}

TEST_F(JumpTest, ASaveThatMeetsAWrongNumberShowsItsField) {
    NumberBox& width = TypeWrongWidth();
    // As when the host shows the control again.
    editor->ShowFirstPage();
    EXPECT_FALSE(width.EffectivelyVisible());
    editor->SetModified(true);
    for (const wchar_t* name : {L"cmdApply", L"cmdOK"}) {
        Button(name).Press();
        EXPECT_TRUE(Boxes().empty());
        EXPECT_TRUE(width.EffectivelyVisible());
        EXPECT_TRUE(width.Focused());
        EXPECT_THAT(Hint(), HasSubstr("must be"));
        EXPECT_EQ(Get<controls::Tree>(L"tvw").SelectedKey(), L"Format1");
    }
    EXPECT_TRUE(saves.empty());
    EXPECT_EQ(closes, 0);
}

TEST_F(JumpTest, AWrongNumberWhoseFieldIsHiddenByAChoiceKeepsNothingFromBeingSaved) {
    Click(L"Format1");
    Get<ComboBox>(L"cboItemAlign").Select(1);
    auto& width = Get<NumberBox>(L"txtItemAlignLength");
    ASSERT_TRUE(width.EffectivelyVisible());
    const std::wstring before = width.Text();
    editor->Form().SetFocus(width);
    width.Edit(L"99999");
    editor->Form().FocusLeft();
    Get<ComboBox>(L"cboItemAlign").Select(0);
    EXPECT_FALSE(width.EffectivelyVisible());
    EXPECT_EQ(width.Text(), before);
    Button(L"cmdApply").Press();
    EXPECT_EQ(saves.size(), 1U);
}

} // namespace
} // namespace orv::editor
