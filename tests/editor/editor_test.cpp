#include "editor/node_key.h"
#include "fixture.h"
#include "text/error.h"

namespace orv::editor {
namespace {

struct EditorTest : test::EditorFixture {};

TEST(NodeKey, RootsWinOverThePatternsOfTheirChildren) {
    EXPECT_EQ(ParseNodeKey(L"CodeDef"), (NodeKey{NodeKind::Codes, 0}));
    EXPECT_EQ(ParseNodeKey(L"Code12"), (NodeKey{NodeKind::Code, 12}));
    EXPECT_EQ(ParseNodeKey(L"GroupDef"), (NodeKey{NodeKind::Groups, 0}));
    EXPECT_EQ(ParseNodeKey(L"Group3"), (NodeKey{NodeKind::Group, 3}));
    EXPECT_EQ(ParseNodeKey(L"FormatDef"), (NodeKey{NodeKind::Formats, 0}));
    EXPECT_EQ(ParseNodeKey(L"Format10"), (NodeKey{NodeKind::Format, 10}));
    EXPECT_EQ(ParseNodeKey(L"codedef").kind, NodeKind::Unknown);
}

TEST_F(EditorTest, StartsUnmodifiedOnTheFirstNode) {
    EXPECT_EQ(Get<controls::Tree>(L"tvw").SelectedKey(), L"CodeDef");
    EXPECT_TRUE(Visible(L"fraCodeDef"));
    EXPECT_FALSE(Visible(L"fraFormatDef"));
    EXPECT_EQ(Caption(L"lblPage"), L"Codes Definition");
    EXPECT_FALSE(Button(L"cmdOK").Enabled() || Button(L"cmdApply").Enabled());
    EXPECT_TRUE(Button(L"cmdCancel").Enabled());
    EXPECT_FALSE(Visible(L"fraDesign"));
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(EditorTest, ANodeShowsItsPageAndClearsBold) {
    auto& tree = Get<controls::Tree>(L"tvw");
    tree.SetBold(L"CodeDef", true);
    Click(L"FormatDef");
    EXPECT_TRUE(Visible(L"fraFormatDef"));
    EXPECT_FALSE(Visible(L"fraCodeDef"));
    EXPECT_EQ(Caption(L"lblPage"), L"Format Definition");
    EXPECT_FALSE(tree.FindNode(L"CodeDef")->bold);
    EXPECT_FALSE(editor->Modified());
}

TEST_F(EditorTest, TheTreeHasGroupsByExpressionAndFormatsInUseOnly) {
    const auto keys = [this] {
        std::wstring all;
        for (const controls::Tree::Node& node : Get<controls::Tree>(L"tvw").Nodes())
            all += node.key + L"<" + node.parentKey + L" ";
        return all;
    };
    root.Codes().Groups().ParseExpression(L"1&[1|2]");
    struct Case {
        std::int32_t combination;
        bool advanced;
        const wchar_t* keys;
    };
    ASSERT_EQ(root.Codes().Count(), 1);
    ASSERT_EQ(root.AdvancedFormats().Count(), 1);
    for (const Case& c :
         {Case{1, false, L"CodeDef< Code1<CodeDef FormatDef< "},
          Case{2, false, L"CodeDef< Code1<CodeDef GroupDef< Group1<GroupDef Group2<GroupDef FormatDef< "},
          Case{3, true, L"CodeDef< Code1<CodeDef FormatDef< Format1<FormatDef "}}) {
        root.Codes().Combination(c.combination);
        root.Advanced(c.advanced);
        editor->BuildTree();
        EXPECT_EQ(keys(), c.keys);
    }
    root.Codes().Combination(2);
    editor->BuildTree();
    auto& tree = Get<controls::Tree>(L"tvw");
    EXPECT_EQ(tree.FindNode(L"Code1")->text, root.Codes().Code(1)->Description());
    EXPECT_EQ(tree.FindNode(L"Group2")->text, L"2 - [1 OR 2]");
    EXPECT_EQ(tree.FindNode(L"Format1")->text, L"1 - " + root.AdvancedFormats().Item(1).GetLabel());
}

TEST_F(EditorTest, RebuildingKeepsTheSelectionAndRaisesNothing) {
    Click(L"FormatDef");
    editor->BuildTree();
    EXPECT_EQ(Get<controls::Tree>(L"tvw").SelectedKey(), L"FormatDef");
    Get<controls::Tree>(L"tvw").AddNode({}, L"Code77", L"gone soon");
    Get<controls::Tree>(L"tvw").SetSelectedKey(L"Code77");
    editor->BuildTree();
    EXPECT_EQ(Get<controls::Tree>(L"tvw").SelectedKey(), L"") << "a key that is gone is no error";
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(EditorTest, ApplyStoresWhatIsBeingTypedHandsThePanelOverAndStaysOpen) {
    std::vector<device::WindowHandle> panels;
    bench.host.Windows().commitPanel = [&panels](device::WindowHandle panel) { panels.push_back(panel); };
    editor->bottomPanelWindow = [] { return device::WindowHandle{77}; };
    Click(L"FormatDef");
    editor->Form().SetFocus(Box(L"mbeHeader"));
    Box(L"mbeHeader").TypeText(L"A");
    EXPECT_EQ(root.StandardFormat().Header(), L"");
    std::wstring saved;
    whileSaving = [&] { saved = root.StandardFormat().Header(); };
    Button(L"cmdApply").Press();
    EXPECT_EQ(saved, L"A");
    EXPECT_EQ(panels, (std::vector<device::WindowHandle>{77}));
    EXPECT_EQ(saves, (std::vector<bool>{true}));
    EXPECT_EQ(closes, 0);
}

TEST_F(EditorTest, OKSavesWithoutTheDeviceAndCloses) {
    editor->SetModified(true);
    Button(L"cmdOK").Press();
    EXPECT_EQ(saves, (std::vector<bool>{false}));
    EXPECT_EQ(closes, 1);
    Button(L"cmdCancel").Press();
    EXPECT_EQ(saves.size(), 1u);
    EXPECT_EQ(closes, 2);
}

TEST_F(EditorTest, OKStaysOpenWhenTheSaveRaises) {
    editor->SetModified(true);
    whileSaving = [] { throw Error(error_number::kOverflow); };
    Button(L"cmdOK").Press();
    EXPECT_EQ(closes, 0);
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, L"AddOnControl.cmdOK_Click\n6: Overflow");
}

TEST_F(EditorTest, AFailingHostCallStopsApplyUnderItsName) {
    editor->SetModified(true);
    bench.host.Gate().FailNamed("SupportObject.CommitPanel", 1, 42, L"panel");
    Button(L"cmdApply").Press();
    EXPECT_TRUE(saves.empty());
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, L"AddOnControl.cmdApply_Click\n42: panel");
}

TEST_F(EditorTest, AValueThatCannotBeStoredIsNotSavedWithoutIt) {
    Click(L"FormatDef");
    Box(L"mbeHeader").TypeText(L"A");
    bench.host.Gate().FailNamed("SupportObject.BytesToText", 1, 42, L"no");
    Button(L"cmdApply").Press();
    EXPECT_TRUE(saves.empty());
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, L"AddOnControl.mbeHeader_Validate\n42: no");
    Button(L"cmdApply").Press();
    EXPECT_EQ(root.StandardFormat().Header(), L"A") << "still pending, so the next try stores it";
    EXPECT_EQ(saves.size(), 1u);
}

TEST_F(EditorTest, NoBoxOpensInsideAChangeOfFocus) {
    Click(L"FormatDef");
    editor->Form().SetFocus(Box(L"mbeHeader"));
    Box(L"mbeHeader").TypeText(L"A");
    bench.host.Gate().FailNamed("SupportObject.BytesToText", 1, 42, L"no");
    editor->Form().FocusArrived(Box(L"mbeSeparator"));
    EXPECT_TRUE(Box(L"mbeSeparator").Focused());
    EXPECT_TRUE(Boxes().empty());
    bench.platform.pump.ProcessPending();
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, L"AddOnControl.mbeHeader_Validate\n42: no");
}

TEST_F(EditorTest, TheHostIsToldOfAnEditBoxsFocusUnlessTheEditorIsGone) {
    std::vector<device::WindowHandle> told;
    bench.host.Windows().editGotFocus = [&told](device::WindowHandle edit) { told.push_back(edit); };
    editor->windowOf = [](const controls::Widget& widget) {
        return widget.Name() == L"mbeHeader" ? device::WindowHandle{55} : device::WindowHandle{0};
    };
    Click(L"FormatDef");
    editor->Form().SetFocus(Box(L"mbeHeader"));
    bench.platform.pump.ProcessPending();
    editor->Form().SetFocus(Box(L"mbeSeparator"));
    bench.platform.pump.ProcessPending();
    EXPECT_EQ(told, (std::vector<device::WindowHandle>{55})) << "a box without a window is not the host's business";
    editor->Form().SetFocus(Box(L"mbeHeader"));
    editor.reset();
    bench.platform.pump.ProcessPending();
    EXPECT_EQ(told.size(), 1u);
}

TEST_F(EditorTest, AFailedSaveIsReportedInTheHintLineUntilTheNextChange) {
    editor->SetModified(true);
    editor->SetSaveReport({false, L"/X[3]", 37, 212});
    editor->Form().SetFocus(Button(L"cmdCancel"));
    EXPECT_EQ(Caption(L"lblHint"), L"Stopped at /X[3], 37 of 212 written. Apply sends everything again.");
    editor->SetModified(true);
    EXPECT_EQ(Caption(L"lblHint"), Button(L"cmdCancel").Hint());
    editor->SetSaveReport({false, {}, 0, 9});
    editor->SetSaveReport({true, {}, 9, 9, 310, L"the strings of group 3"});
    EXPECT_EQ(Caption(L"lblHint"), L"The device accepted all parameters, but did not end the session (code 310): check what it holds. "
                                   L"Saved, but the device has no place for the strings of group 3");
    editor->SetSaveReport({true, {}, 9, 9});
    EXPECT_EQ(Caption(L"lblHint"), Button(L"cmdCancel").Hint());
}

TEST_F(EditorTest, NoInteractiveIsNoChangeOfTheFormat) {
    EXPECT_FALSE(editor->NoInteractive());
    Get<controls::CheckBox>(L"chkNoInteractive").Toggle();
    EXPECT_TRUE(editor->NoInteractive());
    EXPECT_FALSE(editor->Modified());
}

struct TunnelTest : test::EditorFixture {
    TunnelTest() : EditorFixture(test::Sample("tunnel.json")) {}
};

TEST_F(TunnelTest, TheDeviceLineNamesTheDeviceAndWarnsWhenItChanges) {
    EXPECT_EQ(Caption(L"lblDevice"), L"Tunnel A / 0 / level 3");
    EXPECT_EQ(Caption(L"lblTarget"), L"");
    bench.state.current.device = 2;
    editor->RefreshDeviceLine();
    EXPECT_EQ(Caption(L"lblDevice"), L"Tunnel A / 2 Slave right / level 3");
    EXPECT_EQ(Caption(L"lblTarget"), L"Read from device 0; saving writes to device 2");
    bench.host.Gate().FailNamed("DeviceRecords.Record", 1, 42, L"no", 100);
    editor->RefreshDeviceLine();
    EXPECT_EQ(Caption(L"lblDevice"), L"1 / 2 / level 3") << "numbers when the host has no names";
}

} // namespace
} // namespace orv::editor
