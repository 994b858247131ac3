// Keys of the small widgets: what a key does, and that it does nothing for a key that is somebody else's.
#include "controls/check_list.h"
#include "controls/tree.h"
#include "fixture.h"

namespace orv::controls {
namespace {

struct WidgetKeysTest : test::FormFixture {
    struct Case {
        KeyEvent key;
        KeyOutcome outcome;
        std::wstring events; ///< raised by this key
    };
    std::wstring events;

    void Check(const std::vector<Case>& cases) {
        for (const Case& c : cases) {
            events.clear();
            SCOPED_TRACE(static_cast<int>(&c - cases.data()));
            EXPECT_EQ(form.RouteKey(c.key), c.outcome);
            EXPECT_EQ(events, c.events);
        }
    }
};

constexpr auto kHandled = KeyOutcome::Handled;
constexpr auto kNot = KeyOutcome::NotHandled;

TEST_F(WidgetKeysTest, ACheckBoxTogglesWithSpaceAndItsLetter) {
    auto& box = root.Add<CheckBox>(L"chk");
    box.SetCaption(L"&Advanced");
    auto& other = root.Add<CheckBox>(L"other");
    box.onClick = [&] { events += box.Checked() ? L"on" : L"off"; };
    form.SetFocus(box);
    Check({{{.character = L' '}, kHandled, L"on"},
           {{.key = Key::Space}, kHandled, L"off"},
           {{.key = Key::Space, .ctrl = true}, kNot, L""},
           {{.key = Key::Return}, kNot, L""},
           {{.character = L'a', .alt = true}, kHandled, L"on"}});
    form.SetFocus(other);
    Check({{{.character = L'A', .alt = true}, kHandled, L"off"}});
    EXPECT_EQ(form.Focused(), &box);
    box.SetEnabled(false);
    Check({{{.character = L'a', .alt = true}, kNot, L""}});
}

TEST_F(WidgetKeysTest, OptionsGoRoundAndASpaceChooses) {
    std::vector<OptionButton*> options;
    for (const wchar_t* caption : {L"&None", L"&Left", L"&Right"}) {
        auto& option = root.Add<OptionButton>(L"opt", static_cast<int>(options.size()));
        option.SetCaption(caption);
        option.onClick = [this, index = option.Index()] { events += std::to_wstring(index); };
        options.push_back(&option);
    }
    form.SetFocus(*options[0]);
    Check({{{.character = L' '}, kHandled, L"0"},
           {{.character = L' '}, kHandled, L""},
           {{.key = Key::Up}, kHandled, L"2"},
           {{.key = Key::Right}, kHandled, L"0"},
           {{.key = Key::Down, .ctrl = true}, kNot, L""},
           {{.key = Key::Home}, kNot, L""},
           {{.character = L'l', .alt = true}, kHandled, L"1"}});
    options[2]->SetEnabled(false);
    Check({{{.key = Key::Down}, kHandled, L"0"}});
    EXPECT_TRUE(options[0]->Chosen());
    EXPECT_FALSE(options[1]->Chosen());
}

TEST_F(WidgetKeysTest, ATreePagesByTen) {
    auto& tree = root.Add<Tree>(L"tvw");
    for (int i = 0; i < 25; ++i)
        tree.AddNode({}, std::to_wstring(i), L"node");
    tree.onNodeClick = [this](const Tree::Node& node) { events += node.key; };
    tree.SetSelectedKey(L"3");
    form.SetFocus(tree);
    Check({{{.key = Key::PageDown}, kHandled, L"13"},
           {{.key = Key::PageDown}, kHandled, L"23"},
           {{.key = Key::PageDown}, kHandled, L"24"},
           {{.key = Key::PageUp}, kHandled, L"14"},
           {{.key = Key::PageUp, .ctrl = true}, kNot, L""},
           {{.key = Key::Delete}, kNot, L""}});
}

TEST_F(WidgetKeysTest, AListPagesByTenAndASpaceChecks) {
    auto& list = root.Add<CheckList>(L"lvw");
    std::vector<CheckList::Row> rows;
    for (int i = 0; i < 15; ++i)
        rows.push_back({L"row " + std::to_wstring(i), i});
    list.SetRows(rows);
    list.onSelect = [this](int row) { events += std::to_wstring(row); };
    list.onCheck = [this](int row, bool checked) { events += std::to_wstring(row) + (checked ? L"+" : L"-"); };
    list.SetSelected(12);
    form.SetFocus(list);
    Check({{{.key = Key::PageUp}, kHandled, L"2"},
           {{.key = Key::PageUp}, kHandled, L"0"},
           {{.key = Key::Space}, kHandled, L"0+"},
           {{.key = Key::Space}, kHandled, L"0-"},
           {{.character = 2, .ctrl = true}, kNot, L""},
           {{.key = Key::Delete}, kNot, L""},
           {{.key = Key::Return}, kNot, L""}});
    rows[1].text = L"another";
    list.SetRows(rows);
    Check({{{.character = L'a'}, kHandled, L"1"}});
}

} // namespace
} // namespace orv::controls
