#include "controls/focus_navigator.h"
#include "controls/mb_edit.h"
#include "controls/tree.h"
#include "fixture.h"

namespace orv::controls {
namespace {

struct FocusTest : test::FormFixture {
    Button& first = root.Add<Button>(L"first");
    Frame& options = root.Add<Frame>(L"options");
    OptionButton& a = options.Add<OptionButton>(L"opt", 0);
    OptionButton& b = options.Add<OptionButton>(L"opt", 1);
    OptionButton& c = options.Add<OptionButton>(L"opt", 2);
    Label& label = root.Add<Label>(L"label");
    MBEdit& edit = root.Add<MBEdit>(L"edit");
    Button& last = root.Add<Button>(L"last");

    std::wstring Focus() const { return form.Focused() ? form.Focused()->Name() : L""; }
};

TEST_F(FocusTest, TabGoesInReadingOrderAndLeavesAtTheEnds) {
    b.SetChosen(true);
    std::vector<std::wstring> order;
    while (Press(Key::Tab) == KeyOutcome::Handled)
        order.push_back(Focus());
    EXPECT_EQ(order, (std::vector<std::wstring>{L"first", L"opt", L"edit", L"last"}));
    EXPECT_EQ(Press(Key::Tab), KeyOutcome::LeaveNext);
    Press(Key::Tab, true);
    Press(Key::Tab, true);
    EXPECT_TRUE(b.Focused()) << "the chosen one stands for its group";
    Press(Key::Tab, true);
    EXPECT_EQ(Press(Key::Tab, true), KeyOutcome::LeaveBack);
}

TEST_F(FocusTest, HiddenAndDisabledWidgetsAreNoStops) {
    options.SetEnabled(false);
    edit.SetVisible(false);
    Press(Key::Tab);
    Press(Key::Tab);
    EXPECT_TRUE(last.Focused());
    last.SetEnabled(false);
    EXPECT_NE(form.Focused(), &last) << "the focus does not stay on what cannot take it";
}

TEST_F(FocusTest, ArrowsMoveAndChooseInsideAGroup) {
    std::vector<int> clicks;
    for (OptionButton* option : {&a, &b, &c})
        option->onClick = [&clicks, option] { clicks.push_back(option->Index()); };
    form.SetFocus(a);
    b.SetEnabled(false);
    Press(Key::Down);
    EXPECT_TRUE(c.Focused() && c.Chosen());
    Press(Key::Right);
    EXPECT_TRUE(a.Focused() && a.Chosen() && !c.Chosen()) << "round the corner";
    EXPECT_EQ(clicks, (std::vector<int>{2, 0}));
    a.SetChosen(false);
    EXPECT_EQ(clicks.size(), 2u);
}

TEST_F(FocusTest, AccessKeysLeadFromLabelsAndPressButtons) {
    int presses = 0;
    label.SetCaption(L"He&ader");
    last.SetCaption(L"Save && &quit");
    last.onClick = [&presses] { ++presses; };
    EXPECT_EQ(Alt(L'a'), KeyOutcome::Handled);
    EXPECT_TRUE(edit.Focused());
    Alt(L'Q');
    EXPECT_TRUE(last.Focused());
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(last.PlainCaption(), L"Save & quit");
    EXPECT_EQ(Alt(L'z'), KeyOutcome::NotHandled);
    last.SetEnabled(false);
    EXPECT_EQ(Alt(L'q'), KeyOutcome::NotHandled);
}

TEST_F(FocusTest, TheSameAccessKeyGoesRound) {
    first.SetCaption(L"&x");
    last.SetCaption(L"&x");
    Alt(L'x');
    EXPECT_TRUE(first.Focused());
    Alt(L'x');
    EXPECT_TRUE(last.Focused());
    Alt(L'x');
    EXPECT_TRUE(first.Focused());
}

TEST_F(FocusTest, AWidgetMayKeepTheFocusButNotAgainstCancel) {
    form.SetFocus(edit);
    int asked = 0;
    edit.onValidate = [&asked] {
        ++asked;
        return false;
    };
    Press(Key::Tab);
    EXPECT_TRUE(edit.Focused());
    form.FocusArrived(first);
    EXPECT_TRUE(edit.Focused());
    EXPECT_EQ(asked, 2);
    last.SetReleases(true);
    form.FocusArrived(last);
    EXPECT_TRUE(last.Focused());
    EXPECT_EQ(asked, 2);
    form.SetFocus(edit);
    form.FocusLeft();
    EXPECT_EQ(form.Focused(), nullptr) << "another window's focus cannot be refused";
    EXPECT_EQ(asked, 3) << "but what was typed is stored";
}

TEST_F(FocusTest, WhatAFocusedWidgetDoesNotWantGoesToTheContainer) {
    form.SetFocus(first);
    EXPECT_EQ(Press(Key::Escape), KeyOutcome::NotHandled);
    EXPECT_EQ(Press(Key::F4), KeyOutcome::NotHandled);
    form.SetFocus(edit);
    EXPECT_EQ(Press(Key::Tab), KeyOutcome::Handled);
    EXPECT_TRUE(edit.Data().empty()) << "Tab is no data";
}

} // namespace
} // namespace orv::controls
