#include <gtest/gtest.h>

#include "controls/mb_edit_core.h"

namespace orv::controls {
namespace {

Bytes B(std::string_view text) {
    return {text.begin(), text.end()};
}

MBEditCore Filled(const Bytes& data, std::size_t maximum = 0) {
    MBEditCore core;
    core.SetData(data);
    core.SetMaxLength(maximum);
    core.MoveCaret(core.TextLength(), false);
    return core;
}

TEST(MBEditCore, ShowsEachByteAsItsToken) {
    struct Case {
        Bytes data;
        std::wstring text;
        std::wstring tip;
    };
    const Case cases[] = {
        {{}, L"", L""},
        {{13, 10}, L"<CR><LF>", L"Hex: 0D 0A"},
        {{'A', 32, 'B'}, L"A<Space>B", L"Hex: 41 20 42"},
        {{127, 128, 200, 255}, L"\x7F<$80><$C8><$FF>", L"Hex: 7F 80 C8 FF"},
        {{60, 67, 82, 62}, L"<CR>", L"Hex: 3C 43 52 3E"},
        {{0, 31}, L"<NUL><US>", L"Hex: 00 1F"},
    };
    for (const Case& c : cases) {
        const MBEditCore core = Filled(c.data);
        EXPECT_EQ(core.Text(), c.text);
        EXPECT_EQ(core.Data(), c.data);
        EXPECT_EQ(core.HexTip(), c.tip);
        EXPECT_EQ(core.Cells().size(), core.TextLength());
    }
    EXPECT_EQ(Filled({13}).Cells(), (std::vector<ShadowCell>(4, {13, 4})));
}

TEST(MBEditCore, TypingStoresCharactersAndNamesTheRest) {
    MBEditCore core;
    for (std::uint16_t code : {65, 32, 13, 27, 200, 46})
        EXPECT_TRUE(core.TypeCharacter(code));
    EXPECT_EQ(core.Text(), L"A<Space><CR><ESC><$C8>.");
    EXPECT_EQ(core.Data(), (Bytes{65, 32, 13, 27, 200, 46}));
    EXPECT_FALSE(core.TypeCharacter(8)) << "Backspace is the display's";
    core.SetMaskReturn(true);
    EXPECT_FALSE(core.TypeCharacter(13));
    EXPECT_EQ(core.Data().size(), 6u);
}

TEST(MBEditCore, TheFormMaySwallowOrChangeAKey) {
    MBEditCore core;
    core.onKeyPress = [](std::uint16_t& code) { code = code == 'x' ? 0 : code == 'a' ? 'A' : code; };
    core.TypeCharacter('x');
    core.TypeCharacter('a');
    core.TypeCharacter('b');
    EXPECT_EQ(core.Data(), B("Ab"));
}

TEST(MBEditCore, RefusesWhatPassesTheMaximum) {
    struct Case {
        std::uint16_t code;
        int events;
        std::wstring text;
    };
    // Four characters of a maximum of four, and of five.
    for (const Case& c : {Case{'x', 1, L"<CR>"}, Case{' ', 1, L"<CR>"}, Case{8, 0, L"<CR>"}, Case{27, 0, L"<CR>"},
                          Case{'.', 0, L"<CR>"}, Case{13, 1, L"<CR>"}}) {
        MBEditCore core = Filled({13}, 4);
        int events = 0;
        core.onMaxLengthExceeded = [&events] { ++events; };
        core.TypeCharacter(c.code);
        EXPECT_EQ(core.Text(), c.text) << c.code;
        EXPECT_EQ(events, c.events) << c.code;
    }
    MBEditCore core = Filled({13}, 5);
    int events = 0;
    core.onMaxLengthExceeded = [&events] { ++events; };
    core.TypeCharacter('x');
    EXPECT_EQ(core.Text(), L"<CR>x");
    EXPECT_EQ(events, 0) << "the key that fills the last place is no refusal";
    core.Select(4, 1);
    core.TypeCharacter('y');
    EXPECT_EQ(core.Text(), L"<CR>y") << "a selection makes room";
    EXPECT_EQ(events, 0);
}

TEST(MBEditCore, ALongValueIsShownWholeAndCanOnlyShrink) {
    MBEditCore core = Filled(B("abcdef"), 3);
    EXPECT_EQ(core.Data(), B("abcdef"));
    core.TypeCharacter('x');
    EXPECT_FALSE(core.InsertCC(13));
    EXPECT_EQ(core.Data(), B("abcdef"));
    EXPECT_TRUE(core.Backspace());
    core.Select(0, 4);
    EXPECT_TRUE(core.Delete());
    EXPECT_EQ(core.Data(), B("e"));
    core.TypeCharacter('x');
    EXPECT_EQ(core.Data(), B("xe"));
}

TEST(MBEditCore, CaretAndSelectionKeepToWholeTokens) {
    MBEditCore core = Filled({13, 13, 'A'}); // <CR><CR>A
    core.Select(1, 1);
    EXPECT_EQ(core.SelStart(), 0u);
    EXPECT_EQ(core.SelLength(), 4u);
    core.Select(3, 2);
    EXPECT_EQ(core.SelLength(), 8u) << "both tokens are touched";
    core.MoveCaret(6, false);
    EXPECT_EQ(core.Caret(), 8u);
    core.MoveCaret(5, false);
    EXPECT_EQ(core.Caret(), 4u);
    core.StepRight(false);
    EXPECT_EQ(core.Caret(), 8u);
    core.StepLeft(true);
    core.StepLeft(true);
    EXPECT_EQ(core.SelectedText(), L"<CR><CR>");
    EXPECT_EQ(core.SelectedData(), (Bytes{13, 13}));
    core.StepRight(false);
    EXPECT_EQ(core.Caret(), 8u) << "a step collapses the selection to its end";
    core.Select(100, 100);
    EXPECT_EQ(core.SelStart(), 9u);
}

TEST(MBEditCore, DeletionRemovesWholeTokens) {
    MBEditCore core = Filled({2, 'A', 3});
    EXPECT_TRUE(core.Backspace());
    EXPECT_EQ(core.Text(), L"<STX>A");
    core.MoveCaret(0, false);
    EXPECT_FALSE(core.Backspace());
    EXPECT_TRUE(core.Delete());
    EXPECT_EQ(core.Data(), B("A"));
    core.MoveCaret(1, false);
    EXPECT_FALSE(core.Delete());
}

TEST(MBEditCore, PasteCutsBehindTheLastWholeToken) {
    MBEditCore core = Filled({}, 10);
    int events = 0;
    core.onMaxLengthExceeded = [&events] { ++events; };
    EXPECT_TRUE(core.Paste({'A', 13, 10, 'B'}));
    EXPECT_EQ(core.Text(), L"A<CR><LF>B");
    EXPECT_EQ(events, 0);
    core.SelectAll();
    EXPECT_TRUE(core.Paste({13, 10, 7, 'B'}));
    EXPECT_EQ(core.Text(), L"<CR><LF>")
        << "the byte that does not fit ends the paste, also for a shorter one behind it";
    EXPECT_EQ(events, 1);
}

TEST(MBEditCore, ParsesTheNamesThatItShows) {
    EXPECT_EQ(MBEditCore::Parse(L"<STX>A<Space>B<$C8><$7F><cr><>\r\n"),
              (Bytes{2, 'A', 32, 'B', 200, '<', '$', '7', 'F', '>', '<', 'c', 'r', '>', '<', '>', 13, 10}));
    EXPECT_EQ(MBEditCore::Parse(L"\x20AC\x4E00"), (Bytes{0x80, '?'}));
}

TEST(MBEditCore, UndoAndRedoWalkThroughTheEdits) {
    MBEditCore core = Filled(B("ab"));
    EXPECT_FALSE(core.Undo());
    core.TypeCharacter(13);
    core.SelectAll();
    core.DeleteSelection();
    EXPECT_TRUE(core.Undo());
    EXPECT_EQ(core.Text(), L"ab<CR>");
    EXPECT_TRUE(core.Undo());
    EXPECT_EQ(core.Text(), L"ab");
    EXPECT_TRUE(core.Redo());
    EXPECT_EQ(core.Text(), L"ab<CR>");
    core.TypeCharacter('x');
    EXPECT_FALSE(core.Redo()) << "an edit forgets what was undone";
}

TEST(MBEditCore, ARunOfOneKindIsOneStepBack) {
    MBEditCore core;
    std::vector<std::wstring> steps;
    const auto step = [&](auto&& action) {
        steps.push_back(core.Text());
        action();
    };
    const auto type = [&core](std::string_view keys) {
        for (char key : keys)
            core.TypeCharacter(static_cast<std::uint8_t>(key));
    };
    step([&] { type("ab \r"); });
    step([&] {
        core.MoveCaret(1, false);
        type("xy");
    });
    step([&] {
        core.Backspace();
        core.Backspace();
    });
    step([&] { type("z"); });
    step([&] { core.InsertCC(2); });
    step([&] { core.InsertCC(3); });
    step([&] {
        core.Delete();
        core.Delete();
    });
    step([&] {
        core.SelectAll();
        type("new");
    });
    step([&] {
        core.EndStep();
        type("er");
    });
    const std::wstring last = core.Text();
    EXPECT_EQ(last, L"newer");
    for (std::size_t i = steps.size(); i-- > 0;) {
        ASSERT_TRUE(core.Undo());
        EXPECT_EQ(core.Text(), steps[i]) << i;
    }
    EXPECT_FALSE(core.CanUndo());
    for (std::size_t i = 1; i <= steps.size(); ++i) {
        ASSERT_TRUE(core.Redo());
        EXPECT_EQ(core.Text(), i < steps.size() ? steps[i] : last) << i;
    }
    EXPECT_FALSE(core.CanRedo());
    EXPECT_TRUE(core.Undo() && core.Undo());
    EXPECT_EQ(core.SelectedText(), core.Text()) << "what was typed over is selected again";
}

TEST(MBEditCore, AMaskedReturnBreaksALineOnlyWhereThereAreLines) {
    MBEditCore core = Filled(B("ab"), 4);
    core.SetMaskReturn(true);
    int refused = 0;
    core.onMaxLengthExceeded = [&refused] { ++refused; };
    EXPECT_FALSE(core.TypeCharacter(13));
    EXPECT_EQ(core.Text(), L"ab");
    core.SetMultiline(true);
    EXPECT_TRUE(core.TypeCharacter(13));
    core.TypeCharacter('c');
    EXPECT_EQ(core.Text(), L"ab\rc");
    EXPECT_EQ(core.Data(), (Bytes{'a', 'b', 13, 'c'}));
    EXPECT_EQ(core.Cells()[2], (ShadowCell{13, 1}));
    core.TypeCharacter(13);
    EXPECT_EQ(refused, 1);
    core.SetMultiline(false);
    EXPECT_EQ(core.Text(), L"ab\rc") << "what it is shown as changes, not the value";
    core.SetMaskReturn(false);
    core.SelectAll();
    core.TypeCharacter(13);
    EXPECT_EQ(core.Text(), L"<CR>");
}

TEST(MBEditCore, OnlyARealMoveIsToldAsOne) {
    MBEditCore core = Filled({13, 'A'});
    int moves = 0;
    core.onSelChange = [&moves] { ++moves; };
    core.MoveCaret(5, false);
    core.Select(5, 0);
    EXPECT_EQ(moves, 0);
    core.MoveCaret(3, false);
    EXPECT_EQ(moves, 1);
    core.StepLeft(false);
    core.StepLeft(false);
    EXPECT_EQ(moves, 2) << "nowhere to go";
}

TEST(MBEditCore, LockedTakesNoEditAndRaisesNothing) {
    MBEditCore core = Filled(B("ab"), 2);
    core.SetLocked(true);
    core.onChange = core.onMaxLengthExceeded = [] { ADD_FAILURE(); };
    core.TypeCharacter('x');
    core.SelectAll();
    EXPECT_FALSE(core.Backspace() || core.Paste({'x'}) || core.InsertCC(1));
    EXPECT_EQ(core.Data(), B("ab"));
}

} // namespace
} // namespace orv::controls
