#include "controls/tab_strip.h"

#include "controls/text_box.h"
#include "fixture.h"

namespace orv::controls {
namespace {

struct TabStripTest : test::FormFixture {
    Button& outside = root.Add<Button>(L"tvw");
    Frame& first = root.Add<Frame>(L"fraCode");
    TabStrip& hidden = first.Add<TabStrip>(L"tbsHidden");
    Frame& page = root.Add<Frame>(L"fraGroupDef");
    TabStrip& strip = page.Add<TabStrip>(L"tbs");
    Frame& body = page.Add<Frame>(L"fraGroup");
    TextBox& field = body.Add<TextBox>(L"field");
    std::vector<int> selected;
    TabStripTest() {
        first.SetVisible(false);
        hidden.SetTabs({{L"A", L"A"}, {L"B", L"B"}});
        strip.SetTabs({{L"Group1", L"Group 1"}, {L"Group2", L"Group 2"}, {L"Group3", L"Group 3"}});
        strip.onSelect = [this](int tab) { selected.push_back(tab); };
    }
};

TEST_F(TabStripTest, ClicksAndKeysSelectUnlessSomethingIsPending) {
    EXPECT_EQ(strip.SelectedKey(), L"Group1");
    strip.SetSelected(2);
    strip.Select(0);
    strip.Select(0);
    strip.Select(9);
    form.SetFocus(strip);
    for (Key key : {Key::Left, Key::Right, Key::End, Key::Right, Key::Home})
        Press(key);
    EXPECT_EQ(selected, (std::vector<int>{0, 1, 2, 0}));
    int asked = 0;
    strip.onSelecting = [&] {
        ++asked;
        return false;
    };
    strip.Select(1);
    Press(Key::End);
    EXPECT_EQ(strip.Selected(), 0);
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(selected.size(), 4u);
}

TEST_F(TabStripTest, CtrlTabGoesRoundFromAnywhereInThePage) {
    for (Widget* from : {static_cast<Widget*>(&field), static_cast<Widget*>(&strip), static_cast<Widget*>(&outside)}) {
        strip.SetSelected(1);
        ASSERT_TRUE(form.SetFocus(*from));
        EXPECT_EQ(Ctrl(Key::Tab), KeyOutcome::Handled);
        EXPECT_EQ(Ctrl(Key::Tab), KeyOutcome::Handled);
        EXPECT_EQ(strip.Selected(), 0) << "round";
        form.RouteKey({.key = Key::Tab, .character = 0, .shift = true, .ctrl = true});
        EXPECT_EQ(strip.Selected(), 2);
        EXPECT_TRUE(from->Focused());
    }
    EXPECT_EQ(hidden.Selected(), 0) << "a page that is not seen";
    form.SetFocus(field);
    page.SetEnabled(false);
    EXPECT_EQ(Ctrl(Key::Tab), KeyOutcome::NotHandled);
}

TEST_F(TabStripTest, TabsThatComeAndGoKeepTheSelectedOne) {
    strip.SetSelected(1);
    strip.SetTabs({{L"Group2", L"Group 2"}});
    EXPECT_EQ(strip.Selected(), 0);
    strip.SetTabs({{L"Group5", L"5"}, {L"Group6", L"6"}});
    EXPECT_EQ(strip.Selected(), 0);
    strip.SetTabs({});
    EXPECT_EQ(strip.Selected(), -1);
    EXPECT_EQ(strip.SelectedKey(), L"");
    strip.Step(1);
    strip.SetSelected(0);
    EXPECT_EQ(strip.Selected(), -1);
    EXPECT_TRUE(selected.empty());
}

TEST_F(TabStripTest, ATextToCopyLeavesEverythingElseToTheForm) {
    form.SetFocus(field);
    EXPECT_EQ(Ctrl(Key::C), KeyOutcome::Native);
    EXPECT_EQ(Press(Key::Left), KeyOutcome::Native);
    EXPECT_EQ(Ctrl(Key::V), KeyOutcome::NotHandled);
    EXPECT_EQ(Type(L'x'), KeyOutcome::NotHandled);
    EXPECT_EQ(Press(Key::Back), KeyOutcome::NotHandled);
}

} // namespace
} // namespace orv::controls
