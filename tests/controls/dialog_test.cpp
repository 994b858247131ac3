#include "controls/dialog.h"
#include "fixture.h"

namespace orv::controls {
namespace {

struct DialogTest : testing::Test {
    sim::PortablePlatform platform;
    Dialog dialog{platform.boxes, platform.pump};
    CheckBox& check = dialog.Form().Root().Add<CheckBox>(L"chk");
    Button& ok = dialog.Form().Root().Add<Button>(L"cmdOK");
    Button& cancel = dialog.Form().Root().Add<Button>(L"cmdCancel");
    int oks = 0;
    int cancels = 0;

    DialogTest() {
        ok.onClick = [this] { ++oks; };
        cancel.onClick = [this] {
            ++cancels;
            dialog.Close();
        };
        dialog.SetDefaultButton(&ok);
        dialog.SetCancelButton(&cancel);
        dialog.SetContent(Row(Boxed(Cell(check), Cell(ok), Cell(cancel))));
        dialog.Open();
        dialog.Form().FocusFirst();
    }
    KeyOutcome Press(Key key, bool shift = false) { return dialog.RouteKey({.key = key, .shift = shift}); }
};

TEST_F(DialogTest, ReturnAndEscapePressTheirButtonsAndTabGoesRound) {
    Press(Key::Return);
    EXPECT_EQ(oks, 1);
    Press(Key::Tab, true);
    EXPECT_TRUE(cancel.Focused());
    Press(Key::Return);
    EXPECT_EQ(oks, 1) << "the button with the focus takes it first";
    EXPECT_EQ(cancels, 1);
    Press(Key::Tab);
    EXPECT_TRUE(check.Focused());
    Press(Key::Escape);
    EXPECT_EQ(cancels, 2);
    ok.SetEnabled(false);
    Press(Key::Return);
    EXPECT_EQ(oks, 1);
}

TEST_F(DialogTest, ClosingIsToldOnceAndDismissingIsCancelling) {
    int told = 0;
    dialog.onClosed = [&] { ++told; };
    dialog.Dismiss();
    EXPECT_EQ(cancels, 1);
    dialog.Close();
    EXPECT_EQ(told, 1);
    EXPECT_TRUE(dialog.Closed());
    dialog.SetCancelButton(nullptr);
    dialog.Open();
    dialog.Dismiss();
    EXPECT_EQ(told, 2);
}

TEST_F(DialogTest, NothingIsCutAtItsSmallestSize) {
    const test::FixedFont font(150);
    const Size least = dialog.MinimumSize(font);
    dialog.Layout(least, font);
    EXPECT_GT(check.Bounds().x, 0);
    EXPECT_LE(cancel.Bounds().Right(), least.width);
    EXPECT_GE(cancel.Bounds().width, cancel.MinimumSize(font).width);
}

} // namespace
} // namespace orv::controls
