// What a save asks about, and the texts of the tree's nodes.
#include "model/save_concerns.h"

#include <gtest/gtest.h>

#include "model/tree_labels.h"
#include "tests/model/fixture.h"

namespace orv::model {
namespace {

const std::wstring kIdentifierQuestion =
    L"Code Identifier is globally disabled but exists at least one Code Identifier item in some Advanced Format output "
    L"string. Item's data may not appear in output. Save anyway?";
const std::wstring kModeQuestion = L"At least one Mode Reading must be enabled for code ";

class ConcernsTest : public test::ModelTest {
  protected:
    ConcernsTest() {
        root.Reload();
        root.Advanced(true);
        root.CodeID(0);
    }
    std::wstring Question() { return SaveQuestion(SaveConcerns(root)); }
    OutItem& AddIdentifier(std::int32_t format) {
        OutItem& item = Format(format).OutItems().Create(1, L"");
        item.CodeRelType(8);
        return item;
    }
    void NoModes(std::int32_t slot) {
        CodeDef& code = *root.Codes().Code(slot);
        code.CodeType(18);
        for (int mode = 0; mode < 7; ++mode)
            code.MaxicodeEnable(mode, false);
    }
};

TEST_F(ConcernsTest, AnIdentifierItemCountsWhileTheIdentifierIsDisabledAndTheFormatInUse) {
    EXPECT_EQ(Question(), L"");
    OutItem& item = AddIdentifier(2);
    EXPECT_EQ(Question(), kIdentifierQuestion);
    root.CodeID(1);
    EXPECT_EQ(Question(), L"");
    root.CodeID(0);
    root.Advanced(false);
    EXPECT_EQ(Question(), L"");
    root.Advanced(true);
    item.GlobalType(8);
    for (const std::int32_t category : {1, 2}) {
        item.ItemCategory(category);
        EXPECT_EQ(Question(), L"") << category;
    }
    item.ItemCategory(0);
    item.CodeRelType(9);
    EXPECT_EQ(Question(), L"");
}

TEST_F(ConcernsTest, AMaxiCodeSlotNeedsAModeInUseOrNot) {
    NoModes(7); // a slot that is not enabled
    ASSERT_FALSE(root.Codes().Code(7)->Enabled());
    EXPECT_EQ(Question(), kModeQuestion + L"7. Save anyway?");
    for (const int mode : {0, 3, 6}) {
        root.Codes().Code(7)->MaxicodeEnable(mode, true);
        EXPECT_EQ(Question(), L"") << mode;
        root.Codes().Code(7)->MaxicodeEnable(mode, false);
    }
    root.Codes().Code(7)->CodeType(17);
    EXPECT_EQ(Question(), L"");
}

TEST_F(ConcernsTest, TheQuestionIsOneAndNamesTheFirstCode) {
    AddIdentifier(1);
    AddIdentifier(3);
    NoModes(9);
    NoModes(2);
    EXPECT_EQ(Question(), kModeQuestion + L"2. Save anyway?");
    const auto concerns = SaveConcerns(root);
    ASSERT_EQ(concerns.size(), 4U);
    EXPECT_EQ(concerns[1].format, 3);
    EXPECT_EQ(concerns[1].item, 1);
    EXPECT_EQ(concerns[2].code, 2);
    EXPECT_EQ(concerns[3].code, 9);
    root.Advanced(false); // the modes are asked for all the same
    EXPECT_EQ(Question(), kModeQuestion + L"2. Save anyway?");
}

TEST_F(ConcernsTest, NodesCarryTheNumberAndTheTextOfWhatTheyStandFor) {
    EXPECT_EQ(NodeText(*root.Codes().Code(2)), L"2 - Interleaved 2 of 5");
    EXPECT_EQ(NodeText(*root.Codes().Code(5)), L"5 - (None)");
    Groups& groups = root.Codes().Groups();
    EXPECT_EQ(NodeText(groups.Item(1)), L"1 - 1 OR 2");
    EXPECT_EQ(NodeText(groups.Item(2)), L"2 - [3]");
    EXPECT_EQ(NodeText(groups.Add()), L"3 - ");
    EXPECT_EQ(NodeText(Format(1), 1), L"1 - Main serial");
    EXPECT_EQ(NodeText(Format(3), 3), L"3 - Auxiliary serial,FTP client,System socket");
    EXPECT_EQ(NodeText(Format(4), 4), L"4 - (None)");
    EXPECT_TRUE(ShowsFormats(root));
    root.Advanced(false);
    EXPECT_FALSE(ShowsFormats(root));
    EXPECT_TRUE(ShowsGroups(root));
    root.Codes().Combination(1);
    EXPECT_FALSE(ShowsGroups(root));
}

} // namespace
} // namespace orv::model
