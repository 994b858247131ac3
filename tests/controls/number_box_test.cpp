#include "controls/number_box.h"

#include "fixture.h"

namespace orv::controls {
namespace {

using Number = NumberBox::Number;

struct NumberBoxTest : test::FormFixture {
    NumberBox& box = root.Add<NumberBox>(L"txtLength");
    Button& next = root.Add<Button>(L"next");
    Button& cancel = root.Add<Button>(L"cmdCancel");
    std::vector<Number> changes;
    NumberBoxTest() {
        box.SetRange(1, 50);
        box.SetValue(12);
        box.onChange = [this](Number number) { changes.push_back(number); };
        cancel.SetReleases(true);
        form.SetFocus(box);
    }
};

TEST_F(NumberBoxTest, TextIsANumberThatMayStandHereOrWrong) {
    struct Case {
        const wchar_t* text;
        Number one, other;
        bool right;
        Number value;
    };
    for (const Case& c : {
             Case{L"1", 1, 50, true, 1},
             Case{L"50", 1, 50, true, 50},
             Case{L"0", 1, 50, false, 12},
             Case{L"51", 1, 50, false, 12},
             Case{L"-3", 1, 50, false, 12},
             Case{L"-3", -3, 3, true, -3},
             Case{L"+3", -3, 3, true, 3},
             Case{L" 7\r\n", 50, 1, true, 7},
             Case{L"007", 1, 50, true, 7},
             Case{L"", -5, 5, false, 12},
             Case{L"-", -5, 5, false, 12},
             Case{L"--1", -5, 5, false, 12},
             Case{L"1 2", 1, 50, false, 12},
             Case{L"0x1F", 1, 50, false, 12},
             Case{L"4294967295", 0, 4294967295, true, 4294967295},
             Case{L"99999999999999999999", 0, 4294967295, false, 12},
         }) {
        box.SetValue(12);
        box.SetRange(c.one, c.other);
        box.Edit(c.text);
        EXPECT_EQ(box.Valid(), c.right) << c.text;
        EXPECT_EQ(box.Value(), c.value) << c.text;
        EXPECT_EQ(box.Commit(), c.right) << c.text;
        EXPECT_EQ(box.Text(), c.right ? std::to_wstring(c.value) : c.text);
    }
}

TEST_F(NumberBoxTest, WrongTextKeepsTheFocusButNotAgainstCancel) {
    box.Edit(L"99");
    EXPECT_FALSE(form.SetFocus(next));
    EXPECT_EQ(Press(Key::Tab), KeyOutcome::Handled);
    EXPECT_TRUE(box.Focused());
    EXPECT_EQ(box.Text(), L"99") << "as typed";
    EXPECT_EQ(platform.boxes.beeps, 2);
    Press(Key::Escape);
    EXPECT_EQ(box.Text(), L"12");
    EXPECT_EQ(Press(Key::Escape), KeyOutcome::NotHandled) << "nothing to take back";
    box.Edit(L"");
    EXPECT_TRUE(form.SetFocus(cancel));
    EXPECT_EQ(platform.boxes.beeps, 2);
    EXPECT_TRUE(changes.empty());
}

TEST_F(NumberBoxTest, ThePagesRuleIsAskedOnceForWhatTheUserChanged) {
    std::vector<Number> asked;
    bool accepts = false;
    box.onAccept = [&](Number number) {
        asked.push_back(number);
        return accepts;
    };
    EXPECT_TRUE(box.Commit());
    EXPECT_TRUE(asked.empty()) << "nothing was changed";
    box.Edit(L"4");
    box.Edit(L"40");
    EXPECT_EQ(changes, (std::vector<Number>{4, 40}));
    EXPECT_FALSE(form.SetFocus(next));
    EXPECT_TRUE(box.Pending());
    accepts = true;
    EXPECT_TRUE(form.SetFocus(next));
    EXPECT_EQ(asked, (std::vector<Number>{40, 40}));
    EXPECT_FALSE(box.Pending());
    EXPECT_TRUE(box.Commit());
    EXPECT_EQ(asked.size(), 2u);
    box.onAccept = [this](Number) {
        box.SetValue(20);
        return true;
    };
    box.Edit(L"8");
    EXPECT_TRUE(box.Commit());
    EXPECT_EQ(box.Value(), 20) << "a number set by the rule stands";
}

TEST_F(NumberBoxTest, StepsStayInsideTheLimits) {
    struct Case {
        Number from;
        int by;
        Number to;
    };
    for (const Case& c : {Case{12, 1, 13},
                          {12, -1, 11},
                          {50, 1, 50},
                          {1, -1, 1},
                          {45, 10, 50},
                          {3, -10, 1},
                          {99, 1, 50},
                          {99, -1, 50},
                          {-7, 1, 1},
                          {-7, -10, 1}}) {
        box.SetValue(c.from);
        box.Step(c.by);
        EXPECT_EQ(box.Value(), c.to) << c.from << " " << c.by;
    }
    box.SetAllowed({16, 2, 8, 4});
    for (const Case& c : {Case{2, 1, 4},
                          {4, -1, 2},
                          {2, -1, 2},
                          {16, 1, 16},
                          {5, 1, 8},
                          {5, -1, 4},
                          {2, 10, 16},
                          {16, -2, 4},
                          {99, -1, 16},
                          {99, 1, 16},
                          {0, -1, 2},
                          {0, 1, 2}}) {
        box.SetValue(c.from);
        box.Step(c.by);
        EXPECT_EQ(box.Value(), c.to) << "listed " << c.from << " " << c.by;
    }
    box.Edit(L"3");
    EXPECT_FALSE(box.Valid()) << "between the listed ones";
    box.SetAllowed({});
    EXPECT_TRUE(box.Valid());
}

TEST_F(NumberBoxTest, KeysStepAndFilterWhatIsTyped) {
    box.Edit(L"rubbish");
    Press(Key::Up);
    EXPECT_EQ(box.Text(), L"13") << "a step goes on from the last number";
    Press(Key::PageDown);
    Press(Key::PageDown);
    Press(Key::PageUp);
    Press(Key::Down);
    EXPECT_EQ(changes, (std::vector<Number>{13, 3, 1, 11, 10}));
    EXPECT_EQ(Type(L'7'), KeyOutcome::Native);
    EXPECT_EQ(Type(L'x'), KeyOutcome::Handled);
    EXPECT_EQ(Type(L'-'), KeyOutcome::Handled);
    EXPECT_EQ(platform.boxes.beeps, 2);
    box.SetRange(-1, 1);
    EXPECT_EQ(Type(L'-'), KeyOutcome::Native);
    EXPECT_EQ(Press(Key::Back), KeyOutcome::Native);
    EXPECT_EQ(Ctrl(Key::V), KeyOutcome::Native);
    EXPECT_EQ(Alt(L'x'), KeyOutcome::NotHandled);
}

TEST_F(NumberBoxTest, AStoredNumberOutsideTheLimitsStandsUntilItIsEdited) {
    box.SetValue(99);
    box.onAccept = [](Number) { return false; };
    EXPECT_TRUE(box.Valid());
    EXPECT_TRUE(form.SetFocus(next));
    EXPECT_EQ(box.Text(), L"99");
    box.Edit(L"98");
    EXPECT_FALSE(box.Valid());
    box.SetEnabled(false);
    box.Edit(L"5");
    box.Step(1);
    EXPECT_EQ(box.Text(), L"98") << "a disabled box takes no gestures";
    EXPECT_TRUE(changes.empty());
}

TEST_F(NumberBoxTest, AnUnknownNumberStandsUntilAnyNumberIsEntered) {
    std::vector<Number> asked;
    box.onAccept = [&asked](Number number) {
        asked.push_back(number);
        return true;
    };
    box.SetRange(0, 50);
    box.SetUnknown();
    EXPECT_EQ(box.Text(), L"");
    EXPECT_FALSE(box.Known() || box.Pending());
    EXPECT_EQ(box.Value(), 0) << "not the number of another object";
    EXPECT_TRUE(form.SetFocus(next) && box.Commit());
    EXPECT_EQ(platform.boxes.beeps, 0);
    form.SetFocus(box);
    for (const wchar_t* same : {L"0", L"12"}) {
        box.SetUnknown();
        box.Edit(same);
        EXPECT_TRUE(box.Known() && box.Pending());
        EXPECT_TRUE(box.Commit());
        EXPECT_FALSE(box.Pending());
    }
    EXPECT_EQ(changes, (std::vector<Number>{0, 12}));
    EXPECT_EQ(asked, (std::vector<Number>{0, 12}));
    box.SetUnknown();
    box.Edit(L"99");
    EXPECT_FALSE(box.Commit()) << "wrong is wrong in place of none, too";
    EXPECT_EQ(platform.boxes.beeps, 1);
    box.SetValue(7);
    EXPECT_TRUE(box.Known());
    EXPECT_EQ(box.Text(), L"7");
}

TEST_F(NumberBoxTest, WhatIsEnteredForAnUnknownNumberCanBeTakenBack) {
    const auto expectUnknown = [this](const wchar_t* after) {
        EXPECT_EQ(box.Text(), L"") << after;
        EXPECT_FALSE(box.Known() || box.Pending()) << after;
        EXPECT_EQ(box.Value(), 0) << after;
    };
    box.SetUnknown();
    EXPECT_EQ(Press(Key::Escape), KeyOutcome::NotHandled) << "nothing to take back";
    for (const wchar_t* entered : {L"5", L"99", L"x"}) {
        box.Edit(L"4");
        box.Edit(entered);
        EXPECT_EQ(Press(Key::Escape), KeyOutcome::Handled);
        expectUnknown(entered);
    }
    box.Edit(L"5");
    box.Edit(L"");
    expectUnknown(L"emptied");
    box.Edit(L"5");
    box.Revert();
    expectUnknown(L"reverted");
}

TEST_F(NumberBoxTest, AStepLeadsFromAnUnknownNumberToOneThatMayStand) {
    int stored = 0;
    box.onStep = [&] { stored += box.Commit() ? 1 : 0; };
    const auto stepped = [this](int by) {
        box.SetUnknown();
        box.Step(by);
        return box.Value();
    };
    EXPECT_EQ(stepped(1), 1);
    EXPECT_EQ(stepped(-10), 1);
    box.SetRange(-3, 3);
    EXPECT_EQ(stepped(-1), 0);
    box.SetRange(-9, -5);
    EXPECT_EQ(stepped(1), -5);
    box.SetRange(1, 50);
    box.SetAllowed({8, 2, 4});
    EXPECT_EQ(stepped(-1), 2);
    EXPECT_EQ(changes, (std::vector<Number>{1, 1, 0, -5, 2}));
    EXPECT_EQ(stored, 5);
}

} // namespace
} // namespace orv::controls
