#include "controls/picture_list.h"

#include <algorithm>
#include <numeric>
#include <random>

#include "fixture.h"

namespace orv::controls {
namespace {

using State = PictureListCore::State;

constexpr int kNone = PictureListCore::kNone;

std::vector<PictureList::Row> RowsOf(const std::vector<int>& items) {
    std::vector<PictureList::Row> rows;
    for (std::size_t i = 0; i < items.size(); ++i)
        rows.push_back({std::to_wstring(i + 1), L"Code", L"Item " + std::to_wstring(items[i]), L"", false});
    return rows;
}

std::vector<int> Numbers(int count) {
    std::vector<int> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

/// What a page does with a move: both count from 1, and places behind the item shift when it is taken away.
void Reorder(std::vector<int>& items, int item, int to) {
    const int moved = items.at(static_cast<std::size_t>(item - 1));
    items.erase(items.begin() + item - 1);
    items.insert(items.begin() + (to > item ? to - 1 : to) - 1, moved);
}

/// A page that keeps a list of numbers, and a peer that knows what it has been told and nothing else.
struct ListTest : test::FormFixture {
    struct Told {
        std::size_t rows = 0;
        int selected = kNone, top = 0, gap = kNone;
        bool dragging = false;
        bool operator==(const Told&) const = default;
    };
    struct NotingPeer : Peer {
        NotingPeer(PictureList& list, Told& told) : list_(list), told_(told) {}
        void Mirror(Aspect aspect) override {
            switch (aspect) {
            case Aspect::Items:
                told_.rows = list_.Rows().size();
                break;
            case Aspect::Selection:
                told_.selected = list_.Selected();
                break;
            case Aspect::Scroll:
                told_.top = list_.Core().Top();
                break;
            case Aspect::Mark:
                told_.gap = list_.Core().Gap();
                told_.dragging = list_.Core().Dragging();
                break;
            default:
                break;
            }
        }
        void TakeFocus() override {}
        PictureList& list_;
        Told& told_;
    };
    struct Mute : Peer {
        void Mirror(Aspect) override {}
        void TakeFocus() override {}
    };
    struct Factory : PeerFactory {
        explicit Factory(ListTest& owner) : owner_(owner) {}
        std::unique_ptr<Peer> Make(Widget& widget) override {
            if (&widget == &owner_.list)
                return std::make_unique<NotingPeer>(owner_.list, owner_.told);
            return std::make_unique<Mute>();
        }
        ListTest& owner_;
    };

    Told told;
    PictureList& list = root.Add<PictureList>(L"pls");
    Button& palette = root.Add<Button>(L"tbrCodeRel");
    DragBroker drag{palette};
    Factory factory{*this};
    std::vector<int> items;
    int made = 1000;
    std::vector<std::wstring> events;

    ListTest() {
        root.SetBounds({0, 0, 400, 200});
        list.SetBounds({20, 10, 154, 104});
        list.SetGeometry({{2, 2, 150, 100}, 20, 4});
        form.AttachPeers(factory);
        list.onSelect = [this] { events.push_back(L"select " + std::to_wstring(list.Selected())); };
        list.onActivate = [this](int item) { events.push_back(L"activate " + std::to_wstring(item)); };
        list.onMove = [this](int item, int to) {
            events.push_back(L"move " + std::to_wstring(item) + L" " + std::to_wstring(to));
            Reorder(items, item, to);
            Fill(items);
        };
        list.onDelete = [this](int item) {
            events.push_back(L"delete " + std::to_wstring(item));
            items.erase(items.begin() + item - 1);
            Fill(items);
        };
        list.onDrop = [this](const std::wstring& key, int gap) {
            events.push_back(L"drop " + key + L" " + std::to_wstring(gap));
            items.insert(items.begin() + gap, ++made);
            Fill(items);
            list.SetSelected(gap);
        };
        form.SetFocus(list);
    }
    ~ListTest() override { form.DetachPeers(); }

    void Fill(std::vector<int> numbers) {
        items = std::move(numbers);
        list.SetRows(RowsOf(items));
    }
    /// In the middle of a row that is in view.
    static Point In(int row) { return {60, 2 + row * 20 + 10}; }
    /// At the line between two rows.
    static Point At(int gap) { return {60, 2 + gap * 20}; }
    void DragRow(int from, Point to) {
        list.Press(In(from));
        list.PointTo(to);
        list.Release(to);
    }
    Told Now() const {
        const PictureListCore& core = list.Core();
        return {list.Rows().size(), core.Selected(), core.Top(), core.Gap(), core.Dragging()};
    }
    KeyOutcome AltArrow(Key key) { return form.RouteKey({.key = key, .alt = true}); }
};

TEST_F(ListTest, AMoveEndsBeforeTheRowThatStoodAtTheGap) {
    for (int row = 0; row < 4; ++row) {
        for (int gap = 0; gap <= 4; ++gap) {
            Fill(Numbers(4));
            std::vector<int> expected = Numbers(4);
            expected[static_cast<std::size_t>(row)] = -1;
            expected.insert(expected.begin() + gap, row);
            std::erase(expected, -1);
            events.clear();
            DragRow(row, At(gap));
            EXPECT_EQ(items, expected) << row << " to gap " << gap;
            const bool stays = gap == row || gap == row + 1;
            EXPECT_EQ(std::count_if(events.begin(), events.end(), [](auto& e) { return e.starts_with(L"move"); }),
                      stays ? 0 : 1);
        }
    }
}

TEST_F(ListTest, AltArrowsMoveByOneWhereThereIsRoom) {
    Fill(Numbers(3));
    list.SetSelected(0);
    EXPECT_EQ(AltArrow(Key::Down), KeyOutcome::Handled);
    EXPECT_EQ(items, (std::vector<int>{1, 0, 2}));
    list.SetSelected(2);
    AltArrow(Key::Up);
    EXPECT_EQ(items, (std::vector<int>{1, 2, 0}));
    AltArrow(Key::Down); // the row selected now is the middle one's former place
    list.SetSelected(2);
    EXPECT_EQ(AltArrow(Key::Down), KeyOutcome::Handled) << "no beep at the end";
    list.SetSelected(0);
    AltArrow(Key::Up);
    EXPECT_EQ(events, (std::vector<std::wstring>{L"move 1 3", L"move 3 2"}));
}

TEST_F(ListTest, KeysSelectScrollAndAct) {
    Fill(Numbers(30));
    struct Case {
        Key key;
        int selected, top;
    };
    for (const Case& c : {Case{Key::Down, 0, 0}, Case{Key::Down, 1, 0}, Case{Key::PageDown, 5, 1},
                          Case{Key::End, 29, 25}, Case{Key::Down, 29, 25}, Case{Key::PageUp, 25, 25},
                          Case{Key::Up, 24, 24}, Case{Key::Home, 0, 0}, Case{Key::Up, 0, 0}}) {
        EXPECT_EQ(Press(c.key), KeyOutcome::Handled);
        EXPECT_EQ(list.Selected(), c.selected) << static_cast<int>(c.key);
        EXPECT_EQ(list.Core().Top(), c.top) << static_cast<int>(c.key);
    }
    events.clear();
    Press(Key::Up);
    EXPECT_TRUE(events.empty()) << "nothing is selected anew";
    Press(Key::Return);
    Press(Key::Delete);
    EXPECT_EQ(events, (std::vector<std::wstring>{L"activate 1", L"delete 1"}));
    EXPECT_EQ(Press(Key::Escape), KeyOutcome::NotHandled) << "the container's";
    list.SetEnabled(false);
    for (const Key key : {Key::Down, Key::Delete, Key::Return})
        list.HandleKey({.key = key});
    list.Press(In(2));
    EXPECT_EQ(events.size(), 2u);
    EXPECT_EQ(list.Core().GetState(), State::Idle);
}

TEST_F(ListTest, TypingFindsCaptions) {
    std::vector<PictureList::Row> rows;
    for (const wchar_t* caption : {L"Code", L"Length", L"Code ID", L"code position", L"Time"})
        rows.push_back({caption, L"", caption, L"", false});
    list.SetRows(rows);
    const auto typed = [this](const wchar_t* text) {
        for (; *text != 0; ++text)
            Type(*text);
        return list.Selected();
    };
    EXPECT_EQ(typed(L"c"), 0);
    EXPECT_EQ(typed(L"C"), 2) << "one letter again goes on";
    list.SetRows(rows);
    EXPECT_EQ(typed(L"CODE P"), 3);
    list.SetRows(rows);
    EXPECT_EQ(Type(L' '), KeyOutcome::NotHandled) << "a space begins nothing";
    EXPECT_EQ(typed(L"x"), 3);

    TypeAhead ahead;
    const auto caption = [&](int row) -> const std::wstring& { return rows[static_cast<std::size_t>(row)].caption; };
    const auto start = TypeAhead::Clock::now();
    EXPECT_EQ(ahead.Find(L'c', 4, 5, caption, start), 0);
    EXPECT_EQ(ahead.Find(L't', 0, 5, caption, start + std::chrono::seconds(5)), 4) << "a pause ends the beginning";
}

TEST_F(ListTest, ASelectionStaysAtItsPositionWhileThatExists) {
    Fill(Numbers(6));
    list.SetSelected(3);
    Fill(Numbers(4));
    EXPECT_EQ(list.Selected(), 3);
    Fill(Numbers(3));
    EXPECT_EQ(list.Selected(), kNone);
    list.SetSelected(7);
    EXPECT_EQ(list.Selected(), kNone);
    EXPECT_TRUE(events.empty()) << "programs raise nothing";
    Fill(Numbers(50));
    list.SetSelected(40);
    EXPECT_EQ(list.Core().Top(), 36) << "what is selected is seen";
    Fill(Numbers(6));
    EXPECT_EQ(list.Core().Top(), 1);
}

TEST_F(ListTest, EscapePutsEverythingBackInEachState) {
    Fill(Numbers(30));
    const std::vector<int> before = items;
    list.Press(In(1));
    EXPECT_EQ(Press(Key::Escape), KeyOutcome::Handled);
    list.PointTo(At(4));
    EXPECT_EQ(list.Core().GetState(), State::Idle) << "a drag begins with a press";
    list.Press(In(1));
    list.PointTo({60, 110});
    for (int i = 0; i < 20; ++i)
        list.Tick(50);
    EXPECT_GT(list.Core().Top(), 0);
    EXPECT_EQ(Press(Key::Delete), KeyOutcome::Handled) << "a row in hand is not deleted";
    EXPECT_EQ(Press(Key::Escape), KeyOutcome::Handled);
    EXPECT_EQ(list.Core().Top(), 0);
    list.Release(At(4));
    EXPECT_EQ(told, Now());

    drag.Begin(L"Length", L"Length");
    drag.Move(InForm(list, At(2)));
    EXPECT_TRUE(drag.OverTarget());
    EXPECT_EQ(told.gap, 2);
    drag.Cancel();
    EXPECT_EQ(told.gap, kNone);
    EXPECT_FALSE(told.dragging);
    EXPECT_FALSE(drag.Drop(InForm(list, At(2))));
    EXPECT_EQ(items, before);
    EXPECT_EQ(events, std::vector<std::wstring>{L"select 1"});
}

TEST_F(ListTest, TakesWhatIsDraggedInFromOutside) {
    Fill(Numbers(3));
    drag.Begin(L"Length", L"Length");
    drag.Move({5, 5});
    EXPECT_FALSE(drag.OverTarget());
    EXPECT_EQ(told.gap, kNone);
    drag.Move(InForm(list, {60, 90}));
    EXPECT_EQ(told.gap, 3);
    drag.Move({300, 20});
    EXPECT_EQ(told.gap, kNone) << "left again";
    EXPECT_TRUE(drag.Drop(InForm(list, At(1))));
    EXPECT_EQ(events, std::vector<std::wstring>{L"drop Length 1"});
    EXPECT_EQ(list.Selected(), 1);
    EXPECT_FALSE(drag.Active());
    drag.Begin(L"Length", L"Length");
    EXPECT_FALSE(drag.Drop({300, 20}));

    drag.Begin(L"Length", L"Length");
    drag.Move(InForm(list, At(1)));
    list.SetEnabled(false);
    drag.Move(InForm(list, At(2)));
    EXPECT_FALSE(drag.OverTarget());
    EXPECT_EQ(told.gap, kNone);
    list.SetEnabled(true);
    list.SetVisible(false);
    EXPECT_FALSE(drag.Drop(InForm(list, At(2))));
    EXPECT_EQ(items.size(), 4u);
}

TEST_F(ListTest, ActivatesOnTheSecondClickUnlessThatDrags) {
    Fill(Numbers(4));
    const auto click = [this](Point at, bool twice) {
        list.Press(at, twice);
        list.Release(at);
    };
    click(In(2), false);
    click(In(2), true);
    click(In(2), false);
    list.Press(In(2), true);
    list.PointTo(At(0));
    list.PointTo(In(2));
    list.Release(In(2));
    EXPECT_EQ(events, (std::vector<std::wstring>{L"select 2", L"activate 3"}));
}

TEST_F(ListTest, OtherRowsEndTheDragOfOne) {
    Fill(Numbers(4));
    list.Press(In(0));
    list.PointTo(At(3));
    Fill(Numbers(4));
    EXPECT_EQ(list.Core().Gap(), 3) << "the same rows drawn anew do not";
    Fill(Numbers(3));
    EXPECT_EQ(list.Core().GetState(), State::Idle);
    EXPECT_EQ(told, Now());
}

TEST_F(ListTest, TipsTellWhatIsNotSeen) {
    list.SetRows({{L"1", L"", L"Short", L"", false}, {L"2", L"", L"Caption", L"More", true}});
    EXPECT_EQ(list.TipOf(0, false), L"");
    EXPECT_EQ(list.TipOf(0, true), L"Short");
    EXPECT_EQ(list.TipOf(1, false), L"More");
    EXPECT_EQ(list.TipOf(1, true), L"Caption\r\nMore");
    EXPECT_EQ(list.TipOf(2, true), L"");
}

TEST_F(ListTest, RandomGesturesKeepListPageAndPeerInStep) {
    std::mt19937 random(20240611);
    const auto upTo = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most + 1)); };
    const auto anywhere = [&] { return Point{upTo(260) - 50, upTo(240) - 70}; };
    const Key keys[] = {Key::Up,       Key::Down,   Key::Home,   Key::End,   Key::PageUp,
                        Key::PageDown, Key::Delete, Key::Escape, Key::Return};
    Fill(Numbers(6));
    std::vector<int> carried;
    for (int step = 0; step < 20000; ++step) {
        const std::vector<int> before = items;
        events.clear();
        switch (upTo(12)) {
        case 0:
        case 1:
            list.Press(anywhere(), upTo(4) == 0);
            break;
        case 2:
        case 3:
            list.PointTo(anywhere());
            break;
        case 4:
            list.Release(anywhere());
            break;
        case 5:
            list.Tick(upTo(400));
            break;
        case 6:
            Press(keys[static_cast<std::size_t>(upTo(8))]);
            break;
        case 7:
            AltArrow(upTo(1) == 0 ? Key::Up : Key::Down);
            break;
        case 8:
            drag.Begin(L"Key", L"Key");
            break;
        case 9:
            drag.Move(anywhere());
            break;
        case 10:
            drag.Drop(anywhere());
            break;
        case 11:
            upTo(3) == 0 ? drag.Cancel() : list.ScrollTo(upTo(30) - 5);
            break;
        default:
            if (upTo(20) == 0)
                Fill(Numbers(upTo(40)));
            else
                list.SetGeometry({{2, 2, 150, 10 + upTo(120)}, 20, 4});
        }
        const PictureListCore& core = list.Core();
        ASSERT_EQ(told, Now()) << "step " << step;
        ASSERT_EQ(core.Count(), static_cast<int>(items.size()));
        ASSERT_TRUE(core.Selected() >= kNone && core.Selected() < core.Count());
        ASSERT_TRUE(core.Top() >= 0 && core.Top() <= std::max(core.Count() - core.FullRows(), 0));
        const bool held = core.GetState() == State::Pressed || core.GetState() == State::Carrying;
        ASSERT_EQ(held, core.Grabbed() >= 0 && core.Grabbed() < core.Count()) << "step " << step;
        if (core.Gap() != kNone) {
            ASSERT_TRUE(core.Dragging());
            ASSERT_TRUE(core.Gap() >= core.Top() && core.Gap() <= std::min(core.Top() + core.FullRows(), core.Count()));
            ASSERT_TRUE(!held || core.Gap() < core.Grabbed() || core.Gap() > core.Grabbed() + 1);
        }
        const bool moved = std::any_of(events.begin(), events.end(), [](auto& e) { return e.starts_with(L"move"); });
        if (moved) {
            ASSERT_NE(items, before) << "a move that moves nothing";
            ASSERT_TRUE(std::is_permutation(items.begin(), items.end(), before.begin(), before.end()));
        }
    }
}

} // namespace
} // namespace orv::controls
