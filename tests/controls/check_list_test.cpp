#include "controls/check_list.h"

#include "fixture.h"

namespace orv::controls {
namespace {

struct CheckListTest : test::FormFixture {
    CheckList& list = root.Add<CheckList>(L"lvwCodes");
    std::wstring events;
    CheckListTest() {
        list.SetRows({{L"1 - Code 39", 1, true}, {L"2 - EAN", 2}, {L"7 - Codabar", 7, false, true}});
        list.onCheck = [this](int row, bool checked) { events += std::to_wstring(row) + (checked ? L"+ " : L"- "); };
        list.onSelect = [this](int row) { events += L"s" + std::to_wstring(row) + L" "; };
        list.onActivate = [this](int row) { events += L"a" + std::to_wstring(row) + L" "; };
        form.SetFocus(list);
    }
};

TEST_F(CheckListTest, TheUserChecksAndTheHandlerMayRefuse) {
    list.Toggle(1);
    list.Toggle(0);
    EXPECT_EQ(events, L"1+ 0- ");
    EXPECT_EQ(list.CheckedData(), (std::vector<std::int32_t>{2}));
    list.onCheck = [this](int row, bool checked) {
        if (list.CheckedData().empty() || list.Rows()[static_cast<std::size_t>(row)].greyed)
            list.SetChecked(row, !checked);
    };
    list.Toggle(1);
    list.Toggle(2);
    EXPECT_EQ(list.CheckedData(), (std::vector<std::int32_t>{2})) << "what the handler sets stands";
    list.SetChecked(0, true);
    list.Toggle(-1);
    list.Toggle(3);
    list.SetEnabled(false);
    list.Toggle(0);
    list.Select(2);
    EXPECT_EQ(list.CheckedData(), (std::vector<std::int32_t>{1, 2}));
    EXPECT_EQ(events, L"1+ 0- ") << "programmatic sets and gestures that lead nowhere raise nothing";
}

TEST_F(CheckListTest, KeysMoveCheckAndFind) {
    for (Key key : {Key::Down, Key::Down, Key::End, Key::Down, Key::Home, Key::Up, Key::PageDown, Key::Return})
        Press(key);
    EXPECT_EQ(events, L"s0 s1 s2 s0 s2 a2 ");
    events.clear();
    Type(L' ');
    Type(L'2');
    Press(Key::Home);
    Type(L'2');
    Type(L' ');
    Type(L'-');
    EXPECT_EQ(events, L"2+ s1 s0 s1 ") << "a space inside what is typed belongs to it";
    list.SetRows({});
    for (Key key : {Key::Up, Key::Down, Key::Home, Key::End, Key::Return})
        Press(key);
    Type(L'x');
    EXPECT_EQ(list.Selected(), -1);
}

TEST_F(CheckListTest, SelectionStaysWithItsRow) {
    list.SetSelected(2);
    list.SetRows({{L"7 - Codabar", 7}, {L"9 - new", 9}});
    EXPECT_EQ(list.Selected(), 0);
    list.SetRows({{L"9 - new", 9}});
    EXPECT_EQ(list.Selected(), -1);
    list.SetRows({{L"0", 0}});
    EXPECT_EQ(list.Selected(), -1) << "nothing selected is no row with 0";
}

} // namespace
} // namespace orv::controls
