#include "controls/mb_edit.h"
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

TEST_F(MBEditTest, AFailingHandlerIsShownUnderTheBoxsOwnName) {
    box.onKeyPress = [](std::uint16_t&) { throw Error(error_number::kOverflow); };
    EXPECT_EQ(Type(L'A'), KeyOutcome::Handled);
    ASSERT_EQ(platform.boxes.shown.size(), 1u);
    EXPECT_EQ(platform.boxes.shown[0].text, L"MBEdit.KeyHandler\n6: Overflow");
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
