#include "controls/picture_list.h"
#include "fixture.h"

namespace orv::editor {
namespace {

struct FormatDefPageTest : test::EditorFixture {
    FormatDefPageTest() { Click(L"FormatDef"); }
    explicit FormatDefPageTest(const sim::SystemDescription& system) : EditorFixture(system) { Click(L"FormatDef"); }
    std::wstring Output() { return Get<controls::OutputStrip>(L"stdOutput").Line(); }
};

TEST_F(FormatDefPageTest, ShowsWhatWasRead) {
    EXPECT_EQ(Box(L"mbeTerminator").Text(), L"<CR><LF>");
    EXPECT_EQ(Box(L"mbeSeparator").Text(), L"<GS>");
    EXPECT_EQ(Box(L"mbeTerminator").MaxLength(), 128u);
    EXPECT_EQ(Box(L"mbeSeparator").MaxLength(), 64u);
    EXPECT_TRUE(Get<controls::OptionButton>(L"optStdFormat").Chosen());
    EXPECT_EQ(Output(), L"Output: [code] <GS> [code] <CR><LF>");
    EXPECT_EQ(Caption(L"mbeTerminatorCount"), L"8 of 128");
    EXPECT_FALSE(editor->Modified());
}

TEST_F(FormatDefPageTest, TypingMarksAsModifiedAndLeavingStores) {
    controls::MBEdit& header = Box(L"mbeHeader");
    editor->Form().SetFocus(header);
    EXPECT_EQ(Caption(L"lblHint"), L"Header, sent before the code data, parameter 6, up to 128 characters");
    header.InsertCC(2);
    EXPECT_TRUE(Button(L"cmdOK").Enabled() && Button(L"cmdApply").Enabled());
    EXPECT_EQ(Output(), L"Output: <STX> [code] <GS> [code] <CR><LF>");
    EXPECT_EQ(root.StandardFormat().Header(), L"");
    editor->Form().RouteKey({.key = controls::Key::Tab});
    EXPECT_EQ(root.StandardFormat().Header(), L"\x02");
    EXPECT_TRUE(Box(L"mbeSeparator").Focused());
    root.StandardFormat().Header(L"set elsewhere");
    editor->CommitPending();
    EXPECT_EQ(root.StandardFormat().Header(), L"set elsewhere") << "what is stored is not stored again";
    Box(L"mbeTerminator").TypeText(L"\x20AC");
    Click(L"CodeDef");
    EXPECT_EQ(root.StandardFormat().Terminator(), L"\x20AC\r\n") << "the page that goes has its values stored";
    Click(L"FormatDef");
    EXPECT_EQ(Box(L"mbeTerminator").Text(), L"<$80><CR><LF>");
}

TEST_F(FormatDefPageTest, LookingIsNoChangeAndStoresNothing) {
    root.StandardFormat().Header(L"\x4E00");
    Click(L"FormatDef");
    editor->Form().SetFocus(Box(L"mbeHeader"));
    editor->Form().RouteKey({.key = controls::Key::End});
    Click(L"CodeDef");
    EXPECT_EQ(root.StandardFormat().Header(), L"\x4E00") << "a text that the code page lacks stays until it is edited";
    EXPECT_FALSE(editor->Modified());
}

TEST_F(FormatDefPageTest, TheFormatKindIsStoredOnceItIsChosen) {
    Get<controls::OptionButton>(L"optStdFormat").Choose();
    EXPECT_FALSE(editor->Modified());
    Get<controls::OptionButton>(L"optAdvFormat").Choose();
    EXPECT_TRUE(root.Advanced());
    EXPECT_TRUE(editor->Modified());
    EXPECT_EQ(Get<controls::Tree>(L"tvw").SelectedKey(), L"FormatDef");
    Get<controls::OptionButton>(L"optStdFormat").Choose();
    EXPECT_FALSE(root.Advanced());
}

struct OverviewTest : FormatDefPageTest {
    OverviewTest() : FormatDefPageTest(test::Sample("conveyor.json")) {}
    controls::PictureList& List() { return Get<controls::PictureList>(L"plsFormats"); }
    std::wstring Text(std::size_t row) { return List().Rows()[row].caption; }
    std::wstring Selected() { return Get<controls::Tree>(L"tvw").SelectedKey(); }
};

TEST_F(OverviewTest, ListsEachFormatWithWhereItGoesAndHowMuchItHolds) {
    auto& formats = root.AdvancedFormats();
    ASSERT_EQ(List().Rows().size(), static_cast<std::size_t>(formats.Count()));
    formats.Item(1).Transports(5);
    formats.Item(2).Transports(0);
    while (formats.Item(1).OutItems().Count() > 1)
        formats.Item(1).OutItems().Remove(1);
    while (formats.Item(2).OutItems().Count() > 0)
        formats.Item(2).OutItems().Remove(1);
    Click(L"FormatDef");
    EXPECT_EQ(Text(0), formats.Item(1).GetLabel() + L"   1 item");
    EXPECT_NE(Text(0).find(L","), std::wstring::npos) << "two transports";
    EXPECT_EQ(Text(1), L"(None)   0 items, not sent anywhere");
    formats.Item(2).Transports(static_cast<std::int32_t>(0x80000000U));
    Click(L"FormatDef");
    EXPECT_EQ(Text(1).find(L"not sent"), std::wstring::npos);
}

TEST_F(OverviewTest, OpensAFormatWhileFormatsAreInUse) {
    EXPECT_FALSE(List().Rows()[0].greyed);
    editor->Form().SetFocus(List());
    editor->Form().RouteKey({.key = controls::Key::End});
    editor->Form().RouteKey({.key = controls::Key::Home});
    editor->Form().RouteKey({.key = controls::Key::Down});
    editor->Form().RouteKey({.key = controls::Key::Return});
    EXPECT_EQ(Selected(), L"Format2");
    EXPECT_TRUE(Visible(L"fraAdvFormat"));
    Click(L"FormatDef");
    Get<controls::OptionButton>(L"optStdFormat").Choose();
    EXPECT_TRUE(List().Rows()[0].greyed);
    EXPECT_EQ(List().Selected(), 1);
    editor->Form().SetFocus(List());
    editor->Form().RouteKey({.key = controls::Key::Return});
    EXPECT_EQ(Selected(), L"FormatDef") << "there is no node to go to";
    EXPECT_TRUE(Boxes().empty());
    Get<controls::OptionButton>(L"optAdvFormat").Choose();
    EXPECT_FALSE(List().Rows()[0].greyed);
}

struct LongHeaderTest : FormatDefPageTest {
    LongHeaderTest()
        : FormatDefPageTest(test::With(6, [](sim::ParameterDescription& p) {
              p.details.maximumStringLength = 4;
              p.values = {Bytes{'A', 13, 'B'}};
          })) {}
};

TEST_F(LongHeaderTest, AValueBeyondTheMaximumIsShownWholeAndStoredWhole) {
    controls::MBEdit& header = Box(L"mbeHeader");
    EXPECT_EQ(header.Text(), L"A<CR>B");
    header.TypeText(L"x");
    EXPECT_EQ(header.Text(), L"A<CR>B");
    EXPECT_FALSE(editor->Modified()) << "a refused key changes nothing";
    EXPECT_EQ(bench.platform.boxes.beeps, 1);
    editor->Form().SetFocus(header);
    editor->Form().RouteKey({.key = controls::Key::Delete});
    editor->CommitPending();
    EXPECT_EQ(root.StandardFormat().Header(), L"\rB") << "what is left is over the maximum still, and kept";
}

struct NoSeparatorTest : FormatDefPageTest {
    NoSeparatorTest() : FormatDefPageTest(test::With(82, {})) {}
};

TEST_F(NoSeparatorTest, AFieldThatTheDeviceLacksSaysSo) {
    EXPECT_FALSE(Box(L"mbeSeparator").Enabled());
    EXPECT_NE(Box(L"mbeSeparator").ToolTip().find(L"not on this device"), std::wstring::npos);
    EXPECT_FALSE(Get<controls::DropButton>(L"mbeSeparatorNames").Enabled());
    EXPECT_TRUE(Box(L"mbeHeader").Enabled());
    EXPECT_TRUE(Boxes().empty());
}

} // namespace
} // namespace orv::editor
