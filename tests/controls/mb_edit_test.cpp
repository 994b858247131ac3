#include "controls/mb_edit.h"
#include "controls/mb_edit_rtf.h"
#include "fixture.h"
#include "text/error.h"

namespace orv::controls {
namespace {

struct MBEditTest : test::FormFixture {
    MBEdit& box = root.Add<MBEdit>(L"mbe");
    DropButton& names = root.Add<DropButton>(L"mbeNames");
    Label& count = root.Add<Label>(L"mbeCount");
    int changes = 0;

    MBEditTest() {
        box.Attach(&names, &count);
        box.SetMaxLength(128);
        box.onChange = [this] { ++changes; };
        form.FocusFirst();
    }
};

TEST_F(MBEditTest, KeysBecomeBytesAndTheCountFollows) {
    Type(L'A');
    Type(L' ');
    EXPECT_EQ(Press(Key::Return), KeyOutcome::Handled);
    EXPECT_EQ(Press(Key::Escape), KeyOutcome::Handled) << "Escape is data here, never Cancel";
    form.RouteKey({.key = Key::None, .character = 2, .ctrl = true});
    Type(L'\x20AC');
    EXPECT_EQ(box.Data(), (Bytes{'A', 32, 13, 27, 2, 0x80}));
    EXPECT_EQ(count.Caption(), L"27 of 128");
    EXPECT_EQ(box.ToolTip(), L"Hex: 41 20 0D 1B 02 80");
    EXPECT_EQ(changes, 6);
    EXPECT_TRUE(box.Pending());
    Type(L'\x4E00');
    EXPECT_EQ(changes, 6);
    EXPECT_EQ(platform.boxes.beeps, 1) << "a character that is no byte is refused";
}

TEST_F(MBEditTest, TheProgramsOwnChangesRaiseNothing) {
    int shown = 0;
    box.onShown = [&shown] { ++shown; };
    box.SetData({1, 2});
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(changes, 0);
    EXPECT_FALSE(box.Pending());
    EXPECT_EQ(count.Caption(), L"10 of 128");
}

TEST_F(MBEditTest, TheCountHasRoomWithoutALimit) {
    box.SetMaxLength(0);
    box.SetData(Bytes(4000, 13));
    EXPECT_EQ(count.Caption(), L"16000");
    const test::FixedFont font;
    EXPECT_GE(count.MinimumSize(font).width, font.Width(count.Caption()));
    EXPECT_GE(count.MinimumSize(font).width, font.Width(L"99999")) << "and does not move what stands beside it";
}

TEST_F(MBEditTest, ANameFromTheListGoesInAtTheCaretAndTypingGoesOn) {
    ASSERT_EQ(names.Entries().size(), 33u);
    EXPECT_EQ(names.Entries()[32], L"Space\t20");
    Type(L'A');
    Type(L'B');
    Press(Key::Left);
    form.FocusLeft();
    names.Choose(13);
    EXPECT_TRUE(box.Focused());
    Type(L'C');
    EXPECT_EQ(box.Text(), L"A<CR>CB");
}

TEST_F(MBEditTest, ClipboardCarriesBytesAndReadsNames) {
    box.SetData({60, 67, 82, 62, 13});
    Ctrl(Key::A);
    Ctrl(Key::C);
    EXPECT_EQ(form.TheClipboard().Get().text, L"<CR><CR>");
    Ctrl(Key::X);
    EXPECT_TRUE(box.Data().empty());
    Ctrl(Key::V);
    EXPECT_EQ(box.Data(), (Bytes{60, 67, 82, 62, 13})) << "the bytes, not what they look like";
    form.TheClipboard().Put({L"<LF>x", {}});
    Ctrl(Key::V);
    EXPECT_EQ(box.Data(), (Bytes{60, 67, 82, 62, 13, 10, 'x'}));
    Ctrl(Key::Z);
    EXPECT_EQ(box.Data().size(), 5u);
}

TEST_F(MBEditTest, WhatTheClipboardDoesNotTakeIsNotCutOut) {
    struct Unwilling : Clipboard {
        bool fails = false;
        bool Put(const ClipboardContent&) override {
            if (fails)
                throw Error(error_number::kOutOfMemory);
            return false;
        }
        ClipboardContent Get() override { return {}; }
    } clipboard;
    form.SetClipboard(&clipboard);
    box.SetData({'A', 13});
    for (const bool fails : {false, true}) {
        clipboard.fails = fails;
        Ctrl(Key::A);
        Ctrl(Key::X);
        EXPECT_EQ(box.Data(), (Bytes{'A', 13}));
        EXPECT_EQ(box.SelLength(), 5u);
    }
    EXPECT_EQ(platform.boxes.beeps, 1);
    ASSERT_EQ(platform.boxes.shown.size(), 1u);
    EXPECT_EQ(platform.boxes.shown[0].text, L"MBEdit.KeyHandler\n7: Out of memory");
    form.SetClipboard(nullptr);
}

TEST_F(MBEditTest, AFailingHandlerIsShownUnderTheBoxsOwnName) {
    box.onKeyPress = [](std::uint16_t&) { throw Error(error_number::kOverflow); };
    EXPECT_EQ(Type(L'A'), KeyOutcome::Handled);
    ASSERT_EQ(platform.boxes.shown.size(), 1u);
    EXPECT_EQ(platform.boxes.shown[0].text, L"MBEdit.KeyHandler\n6: Overflow");
}

TEST_F(MBEditTest, TextFromElsewhereIsPastedWhereItDiffers) {
    struct Case {
        std::wstring after;
        Bytes data;
    };
    const Bytes start = {'A', 13, 13, 'B'}; // A<CR><CR>B
    for (const Case& c : {Case{L"A<CR><CR>B", start}, Case{L"", {}}, Case{L"A<CR><CR>xB", {'A', 13, 13, 'x', 'B'}},
                          Case{L"A<CR><CR>B<ETX>", {'A', 13, 13, 'B', 3}}, Case{L"A<CR>B", {'A', 13, 'B'}},
                          Case{L"A<C><CR>B", {'A', 13, 'B'}}, Case{L"A<CR><CAN>B", {'A', 13, 24, 'B'}},
                          Case{L"say x\x20AC", {'s', 'a', 'y', 32, 'x', 0x80}}}) {
        box.SetData(start);
        box.TakeText(L"A<CR><CR>B", c.after);
        EXPECT_EQ(box.Data(), c.data) << std::string(c.after.begin(), c.after.end());
        EXPECT_EQ(box.Pending(), c.data != start);
        box.Undo();
        EXPECT_EQ(box.Data(), start);
    }
    box.SetLocked(true);
    box.TakeText(L"A<CR><CR>B", L"x");
    EXPECT_EQ(box.Data(), start);
}

TEST_F(MBEditTest, SpellsItsValueOut) {
    EXPECT_EQ(box.SpokenValue(), L"");
    box.SetData({2, 'A', ' ', 200, '<', 13});
    EXPECT_EQ(box.SpokenValue(), L"STX, A, Space, $C8, <, CR");
}

TEST_F(MBEditTest, KeptPropertiesMakeAnEqualBox) {
    const MBEdit::PropertyList untouched = box.Properties();
    box.SetMaxLength(40);
    box.SetMultiline(true);
    box.SetAutoSelect(true);
    box.SetMaskReturn(true);
    box.SetTooltips(false);
    box.SetEnabled(false);
    box.SetLocked(true);
    box.SetLook({.textColor = 0x123456,
                 .specialColor = 0x80000008,
                 .backColor = 0,
                 .borderStyle = 0,
                 .mousePointer = 99,
                 .mouseIcon = L"hand.cur",
                 .font = FontChoice{L"Some Face", 14, true, true}});
    box.SetData({'<', 'C', 'R', '>', 13, 0});
    const MBEdit::PropertyList kept = box.Properties();
    for (std::size_t i = 0; i < kept.size(); ++i)
        EXPECT_NE(kept[i].second, untouched[i].second) << "property " << i << " did not follow";
    MBEdit& other = root.Add<MBEdit>(L"other");
    other.SetProperties({kept.rbegin(), kept.rend()});
    EXPECT_EQ(other.Properties(), kept);
    EXPECT_EQ(other.Look(), box.Look());
    EXPECT_EQ(other.Data(), box.Data());
    other.SetProperties(untouched);
    EXPECT_EQ(other.Look(), MBEditLook{});
    other.SetProperties({{L"Text", L"a<STX>"}, {L"Unheard", L"of"}});
    EXPECT_EQ(other.Data(), (Bytes{'a', 2}));
    for (const auto& wrong : MBEdit::PropertyList{{L"MaxLength", L"many"},
                                                  {L"Locked", L"1"},
                                                  {L"TextColor", L"red"},
                                                  {L"Font", L"Face"},
                                                  {L"Font", L"Face;big"},
                                                  {L"Font", L"Face;0"},
                                                  {L"Font", L"Face;999999999"},
                                                  {L"MaxLength", L"\x0131\x0130"},
                                                  {L"BorderStyle", L"1 "}})
        EXPECT_THROW(other.SetProperties({wrong}), Error) << std::string(wrong.first.begin(), wrong.first.end());
}

/// Lines of ten characters, each five wide.
struct TenALine : LineLayout {
    explicit TenALine(const MBEditCore& of) : core(of) {}
    LinePlace PlaceOf(std::size_t position) const override {
        const int at = static_cast<int>(position);
        return {at / 10, at % 10 * 5};
    }
    std::size_t PositionAt(const LinePlace& place) const override {
        const auto column = static_cast<std::size_t>((std::min(place.x, 50) + 2) / 5);
        return std::min(static_cast<std::size_t>(place.line) * 10 + column, core.TextLength());
    }
    int LineCount() const override { return static_cast<int>(core.TextLength() / 10) + 1; }
    int VisibleLines() const override { return 3; }
    const MBEditCore& core;
};

TEST_F(MBEditTest, CaretMovesByDisplayedLines) {
    const TenALine lines(box.Core());
    box.SetLayout(&lines);
    box.SetMaxLength(0);
    // 0123456789 abcd<CR>ef ghijk<Space> xyz: the last name wraps, two characters on the third line.
    const std::string_view text = "0123456789abcd\refghijkl Mxyz";
    box.SetData({text.begin(), text.end()});
    ASSERT_EQ(box.Text(), L"0123456789abcd<CR>efghijkl<Space>Mxyz");
    box.SetSelStart(7);
    EXPECT_EQ(Press(Key::Down), KeyOutcome::NotHandled) << "one line";
    box.SetMultiline(true);
    struct Case {
        Key key;
        bool shift;
        std::size_t caret;
        std::size_t selected;
    };
    for (const Case& c :
         {Case{Key::Down, false, 18, 0}, Case{Key::Down, false, 26, 0}, Case{Key::Down, false, 37, 0},
          Case{Key::Down, false, 37, 0}, Case{Key::Up, true, 26, 11}, Case{Key::Up, false, 18, 0},
          Case{Key::Home, false, 10, 0}, Case{Key::End, false, 19, 0}, Case{Key::PageDown, false, 37, 0},
          Case{Key::Home, false, 33, 0}, Case{Key::PageUp, false, 13, 0}, Case{Key::Up, false, 3, 0}}) {
        EXPECT_EQ(Press(c.key, c.shift), KeyOutcome::Handled);
        EXPECT_EQ(box.Core().Caret(), c.caret) << "key " << static_cast<int>(c.key);
        EXPECT_EQ(box.SelLength(), c.selected);
    }
    Ctrl(Key::End);
    EXPECT_EQ(box.Core().Caret(), box.TextLength());
    Ctrl(Key::Home);
    EXPECT_EQ(box.Core().Caret(), 0u);
    box.SetLayout(nullptr);
}

TEST_F(MBEditTest, SwitchingTheNumberOfLinesKeepsContentCaretAndSteps) {
    Type(L'a');
    Type(L'b');
    box.PointAt(1, false);
    const Size one = box.MinimumSize(test::FixedFont());
    box.SetMultiline(true);
    EXPECT_GT(box.MinimumSize(test::FixedFont()).height, one.height);
    EXPECT_EQ(box.Core().Caret(), 1u);
    box.SetMaskReturn(true);
    EXPECT_EQ(Press(Key::Return), KeyOutcome::Handled);
    EXPECT_EQ(box.Text(), L"a\rb");
    Ctrl(Key::A);
    Ctrl(Key::C);
    EXPECT_EQ(form.TheClipboard().Get().text, L"a\r\nb");
    box.SetMultiline(false);
    Ctrl(Key::Z);
    Ctrl(Key::Z);
    EXPECT_EQ(box.Text(), L"");
    EXPECT_EQ(Press(Key::Return), KeyOutcome::Native) << "left to the display, which has one line";
}

TEST(MBEditRichText, WritesRunsAndEscapes) {
    MBEditCore core;
    core.SetMultiline(true);
    core.SetMaskReturn(true);
    core.Paste({'a', '\\', '{', '}', 127, 2, 3, 'b'});
    core.TypeCharacter(13);
    EXPECT_EQ(RichText(core.Text(), core.Cells(),
                       {.face = L"F\x20AC;c", .halfPoints = 19, .bold = true, .text = 0x010203, .token = 0xFF0000}),
              "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1{\\fonttbl{\\f0\\fnil\\fcharset0 F\\u8364?c;}}"
              "{\\colortbl;\\red3\\green2\\blue1;\\red0\\green0\\blue255;}\\f0\\fs19\\b"
              "\\cf1 a\\\\\\{\\}\\'7f\\cf2 <STX><ETX>\\cf1 b\\par }");
}

TEST_F(MBEditTest, DisabledTakesNoGesture) {
    box.SetEnabled(false);
    box.TypeText(L"A");
    box.InsertCC(13);
    box.Paste();
    EXPECT_TRUE(box.Data().empty());
}

} // namespace
} // namespace orv::controls
