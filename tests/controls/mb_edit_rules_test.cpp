// What the edit box lets in, where it stands, and what it goes back to.
#include "controls/mb_edit.h"
#include "fixture.h"

namespace orv::controls {
namespace {

MBEditCore Filled(const Bytes& data, std::size_t maximum) {
    MBEditCore core;
    core.SetMaxLength(maximum);
    core.SetData(data);
    return core;
}

TEST(MBEditRules, InPlaceOfEverythingOneTokenGoesInWhateverItsLength) {
    const auto ways = {
        +[](MBEditCore& core) { core.TypeCharacter(' '); },
        +[](MBEditCore& core) { core.InsertCC(' '); },
        +[](MBEditCore& core) {
            core.Paste({' ', 'x'});
        },
    };
    for (const auto& enter : ways) {
        for (const Bytes& before : {Bytes{}, Bytes{'A'}, Bytes{' '}}) {
            MBEditCore core = Filled(before, 1);
            int refused = 0;
            core.onMaxLengthExceeded = [&refused] { ++refused; };
            core.SelectAll();
            enter(core);
            EXPECT_EQ(core.Data(), Bytes{' '}) << "a filler of one blank can be entered again";
            refused = 0;
            enter(core);
            EXPECT_EQ(core.Data(), Bytes{' '}) << "a second one is beyond the maximum";
            EXPECT_EQ(refused, 1);
        }
        MBEditCore part = Filled({'A', 'B'}, 3);
        part.Select(1, 1);
        enter(part);
        EXPECT_EQ(part.Data(), Bytes{'A'}) << "what is left counts";
    }
}

struct MBEditFocus : test::FormFixture {
    MBEdit& box = root.Add<MBEdit>(L"mbe");
    int changes = 0;
    MBEditFocus() {
        box.onChange = [this] { ++changes; };
        form.SetFocus(box);
    }
};

TEST_F(MBEditFocus, MovesOfUserAndProgramAreEventsButANewContentIsNone) {
    int moves = 0;
    box.onSelChange = [&moves] { ++moves; };
    box.SetData({'A', 13, 'B'});
    EXPECT_EQ(moves, 0);
    box.SetSelStart(2);
    EXPECT_EQ(moves, 1);
    box.SetSelLength(1);
    EXPECT_EQ(moves, 2);
    EXPECT_EQ(box.SelStart(), 1u);
    EXPECT_EQ(box.SelLength(), 4u);
    box.SetSelection(1, 4);
    EXPECT_EQ(moves, 2) << "where it stands already";
    Press(Key::Right);
    box.PointAt(0, false);
    EXPECT_EQ(moves, 4);
    box.SetSelection(1, 2);
    box.SetData({'C'});
    EXPECT_EQ(moves, 5);
}

TEST_F(MBEditFocus, AutoSelectTakesTheWholeContentWhateverBringsTheFocus) {
    auto& other = root.Add<Button>(L"other");
    for (const bool selects : {true, false}) {
        box.SetAutoSelect(selects);
        const std::function<void()> ways[] = {[this] { form.SetFocus(box); }, [this] { form.FocusArrived(box); },
                                              [this] { Press(Key::Tab, true); }};
        for (const auto& bring : ways) {
            box.SetData({'A', 13});
            form.SetFocus(other);
            bring();
            ASSERT_TRUE(box.Focused());
            EXPECT_EQ(box.SelLength(), selects ? 5u : 0u);
        }
    }
}

TEST_F(MBEditFocus, RevertLeadsToWhatWasSetOrMarkedAsStored) {
    int shown = 0;
    box.onShown = [&shown] { ++shown; };
    box.SetData({'A', 13});
    Type(L'B');
    box.MarkStored();
    Type(L'C');
    shown = changes = 0;
    box.Revert();
    EXPECT_EQ(box.Data(), (Bytes{'B', 'A', 13}));
    EXPECT_FALSE(box.Pending());
    EXPECT_FALSE(box.Core().CanUndo() || box.Core().CanRedo()) << "no way forth to what was taken back";
    box.Revert();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(changes, 0);
    Type(L'D');
    box.SetData({'E'});
    Type(L'F');
    box.Revert();
    EXPECT_EQ(box.Data(), (Bytes{'E'}));
}

} // namespace
} // namespace orv::controls
