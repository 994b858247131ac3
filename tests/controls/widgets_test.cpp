#include "controls/combo_box.h"
#include "controls/mb_edit.h"
#include "controls/number_box.h"
#include "controls/output_strip.h"
#include "controls/tree.h"
#include "fixture.h"
#include "text/error.h"

namespace orv::controls {
namespace {

struct WidgetsTest : test::FormFixture {
    Tree& Grown() {
        Tree& tree = root.Add<Tree>(L"tvw");
        tree.AddNode({}, L"CodeDef", L"Codes");
        tree.AddNode({}, L"FormatDef", L"Formats");
        tree.AddNode(L"CodeDef", L"Code1", L"1");
        tree.AddNode(L"CodeDef", L"Code2", L"2");
        tree.AddNode(L"FormatDef", L"Format1", L"1");
        form.SetFocus(tree);
        return tree;
    }
};

TEST_F(WidgetsTest, TreeKeepsChildrenBehindTheirParent) {
    Tree& tree = Grown();
    std::wstring order;
    for (const Tree::Node& node : tree.Nodes())
        order += node.key + L" ";
    EXPECT_EQ(order, L"CodeDef Code1 Code2 FormatDef Format1 ");
    EXPECT_THROW(tree.AddNode({}, L"Code1", L""), Error);
    EXPECT_THROW(tree.AddNode(L"None", L"New", L""), Error);
    EXPECT_THROW(tree.SetSelectedKey(L"None"), Error);
}

TEST_F(WidgetsTest, TreeIsDrivenByKeys) {
    Tree& tree = Grown();
    std::wstring clicks;
    tree.onNodeClick = [&clicks](const Tree::Node& node) { clicks += node.key + L" "; };
    tree.SetSelectedKey(L"CodeDef");
    EXPECT_TRUE(clicks.empty());
    for (Key key : {Key::Up, Key::Down, Key::End, Key::Left, Key::Left, Key::Down, Key::Right, Key::Right, Key::Home})
        Press(key);
    EXPECT_EQ(clicks, L"Code1 Format1 FormatDef Format1 CodeDef ");
    EXPECT_EQ(tree.SelectedKey(), L"CodeDef");
}

TEST_F(WidgetsTest, CollapsingTakesAHiddenSelectionAlong) {
    Tree& tree = Grown();
    std::wstring clicks;
    tree.onNodeClick = [&clicks](const Tree::Node& node) { clicks += node.key; };
    int collapses = 0;
    tree.onCollapse = [&collapses](const Tree::Node&) { ++collapses; };
    tree.SetSelectedKey(L"Code2");
    tree.Collapse(L"FormatDef");
    EXPECT_TRUE(clicks.empty());
    tree.Collapse(L"CodeDef");
    EXPECT_EQ(clicks, L"CodeDef");
    EXPECT_EQ(collapses, 2);
    EXPECT_EQ(tree.Shown().size(), 2u);
    tree.Reveal(L"Code1");
    EXPECT_EQ(tree.Shown().size(), 4u);
}

TEST_F(WidgetsTest, AHandlerMayRebuildTheTreeItIsToldOf) {
    Tree& tree = Grown();
    tree.onNodeClick = [&tree](const Tree::Node& node) {
        tree.Clear();
        tree.AddNode({}, node.key, L"again");
    };
    tree.Click(L"Code2");
    EXPECT_EQ(tree.Nodes().size(), 1u);
    EXPECT_EQ(tree.Nodes()[0].key, L"Code2");
}

TEST_F(WidgetsTest, ComboRaisesForTheUserAlone) {
    auto& box = root.Add<ComboBox>(L"cbo");
    int clicks = 0;
    box.onClick = [&clicks] { ++clicks; };
    box.SetEntries({{L"None", 0}, {L"First", 5}, {L"Fourth", 7}});
    form.SetFocus(box);
    box.SelectData(5);
    EXPECT_EQ(box.Selected(), 1);
    EXPECT_EQ(clicks, 0);
    Type(L'f');
    EXPECT_EQ(box.SelectedData(), 7);
    Press(Key::Down);
    Press(Key::Home);
    box.Select(0);
    box.Select(99);
    EXPECT_EQ(box.SelectedData(), 0);
    EXPECT_EQ(clicks, 2) << "choosing the chosen one, or none, is no click";
    box.SelectData(42);
    EXPECT_EQ(box.Entries().back(), (ComboBox::Entry{L"42", 42})) << "a value without an entry is shown as it is";
    box.SetDropped(true);
    EXPECT_EQ(Press(Key::Down), KeyOutcome::Native);
    EXPECT_EQ(Press(Key::Return), KeyOutcome::Native);
}

TEST_F(WidgetsTest, AComboOffersAValueItLacksOnlyWhileItIsShown) {
    auto& box = root.Add<ComboBox>(L"cbo");
    const auto texts = [&box] {
        std::wstring all;
        for (const ComboBox::Entry& entry : box.Entries())
            all += entry.text + L" ";
        return all;
    };
    box.SetEntries({{L"None", 0}, {L"First", 5}});
    box.SelectData(42);
    box.SelectData(42);
    EXPECT_EQ(texts(), L"None First 42 ");
    box.Select(1);
    EXPECT_EQ(texts(), L"None First 42 ") << "the user may go back to it";
    EXPECT_EQ(box.SelectedData(), 5);
    box.SelectData(5);
    EXPECT_EQ(texts(), L"None First ");
    EXPECT_EQ(box.SelectedData(), 5);
    box.SelectData(42);
    box.SelectData(43);
    EXPECT_EQ(texts(), L"None First 43 ");
    EXPECT_EQ(box.SelectedData(), 43);
    box.SetSelected(-1);
    EXPECT_EQ(texts(), L"None First ");
    EXPECT_EQ(box.Selected(), -1) << "no choice";
    box.SelectData(42);
    box.SetEntries({{L"None", 0}, {L"Other", 6}});
    box.SetSelected(0);
    EXPECT_EQ(texts(), L"None Other ") << "the list's own entries stay";
}

TEST_F(WidgetsTest, AnEmptyComboStandsEveryKey) {
    auto& box = root.Add<ComboBox>(L"cbo");
    form.SetFocus(box);
    for (Key key : {Key::Up, Key::Down, Key::Home, Key::End})
        Press(key);
    Type(L'x');
    EXPECT_EQ(box.Selected(), -1);
    EXPECT_EQ(box.SelectedData(), 0);
}

TEST_F(WidgetsTest, EnabledAndVisibleAreTheAncestorsToo) {
    auto& frame = root.Add<Frame>(L"fra");
    auto& check = frame.Add<CheckBox>(L"chk", 3);
    int clicks = 0;
    check.onClick = [&clicks] { ++clicks; };
    frame.SetEnabled(false);
    check.Toggle();
    frame.SetEnabled(true);
    frame.SetVisible(false);
    check.Toggle();
    EXPECT_FALSE(check.Checked());
    frame.SetVisible(true);
    check.Toggle();
    EXPECT_TRUE(check.Checked());
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(root.Find(L"chk", 3), &check);
    EXPECT_EQ(root.Find(L"chk"), nullptr);
}

TEST_F(WidgetsTest, AnUndeterminedCheckIsCheckedByTheFirstClick) {
    auto& check = root.Add<CheckBox>(L"chk");
    int clicks = 0;
    check.onClick = [&clicks] { ++clicks; };
    for (const bool before : {true, false}) {
        check.SetChecked(before);
        check.SetUndetermined();
        EXPECT_TRUE(check.Undetermined() && !check.Checked());
        check.Toggle();
        EXPECT_TRUE(!check.Undetermined() && check.Checked());
    }
    EXPECT_EQ(clicks, 2) << "only the clicks";
    for (const bool known : {true, false}) {
        check.SetUndetermined();
        check.SetChecked(known);
        EXPECT_FALSE(check.Undetermined());
        EXPECT_EQ(check.Checked(), known);
    }
}

/// A page with a frame in which something is typed that is not stored.
struct PendingTest : test::FormFixture {
    Frame& page = root.Add<Frame>(L"fraCode");
    Frame& frame = page.Add<Frame>(L"fraOption");
    NumberBox& number = frame.Add<NumberBox>(L"txtNumber");
    NumberBox& unknown = frame.Add<NumberBox>(L"txtUnknown");
    MBEdit& bytes = frame.Add<MBEdit>(L"mbe");
    PendingTest() {
        page.SetCaption(kPageMark);
        number.SetRange(1, 50);
        number.SetValue(12);
        unknown.SetUnknown();
        bytes.SetData({'A'});
    }
    void Type(const wchar_t* text) {
        number.Edit(text);
        unknown.Edit(text);
        bytes.TypeText(L"B");
        form.SetFocus(unknown);
        for (NumberBox* box : {&number, &unknown})
            box->onChange = [](NumberBox::Number) { ADD_FAILURE(); };
        bytes.onChange = [] { ADD_FAILURE(); };
    }
    bool Pending() const { return number.Pending() && unknown.Pending() && bytes.Pending(); }
};

TEST_F(PendingTest, WhatIsHiddenTakesItsStoredValueBack) {
    for (const wchar_t* text : {L"99", L"13"}) {
        number.onChange = unknown.onChange = nullptr;
        bytes.onChange = nullptr;
        Type(text);
        ASSERT_TRUE(Pending());
        frame.SetVisible(false);
        EXPECT_EQ(number.Text(), L"12");
        EXPECT_EQ(number.Value(), 12);
        EXPECT_FALSE(unknown.Known());
        EXPECT_EQ(bytes.Data(), Bytes{'A'});
        EXPECT_FALSE(number.Pending() || unknown.Pending() || bytes.Pending());
        EXPECT_TRUE(number.Commit() && unknown.Commit());
        frame.SetVisible(true);
    }
    number.onChange = nullptr;
    number.Edit(L"99");
    number.SetVisible(false);
    EXPECT_FALSE(number.Pending()) << "itself, too";
    EXPECT_EQ(platform.boxes.beeps, 0);
}

TEST_F(PendingTest, APageThatIsLeftDropsNothing) {
    Type(L"13");
    page.SetVisible(false);
    EXPECT_TRUE(Pending());
    page.SetVisible(true);
    root.SetVisible(false);
    EXPECT_TRUE(Pending()) << "nor with all around it";
}

TEST_F(WidgetsTest, OutputLineSetsChipsApart) {
    auto& strip = root.Add<OutputStrip>(L"strip");
    strip.SetCaption(L"Output:");
    using K = OutputStrip::SegmentKind;
    strip.SetSegments(
        {{K::Token, L"<STX>"}, {K::Plain, L"A"}, {K::Chip, L"code"}, {K::Token, L"<CR>"}, {K::Token, L"<LF>"}});
    EXPECT_EQ(strip.Line(), L"Output: <STX>A [code] <CR><LF>");
}

} // namespace
} // namespace orv::controls
