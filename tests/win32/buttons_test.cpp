#include "fixture.h"

#include "controls/simple_widgets.h"
#include "text/error.h"

namespace orv::tests {
namespace {

using namespace controls;

struct ButtonsTest : Windows {
    Button& button = form.Root().Add<Button>(L"cmdOK");
    CheckBox& check = form.Root().Add<CheckBox>(L"chkOptional");
    Frame& group = form.Root().Add<Frame>(L"fraLength");
    OptionButton& fixed = group.Add<OptionButton>(L"optLength", 0);
    OptionButton& variable = group.Add<OptionButton>(L"optLength", 1);
    Label& label = form.Root().Add<Label>(L"lblPage");
    ButtonsTest() {
        button.SetBounds({10, 10, 90, 26});
        check.SetBounds({10, 40, 200, 20});
        group.SetBounds({10, 70, 300, 100});
        group.SetGroupBox(true);
        group.SetCaption(L"Length");
        fixed.SetBounds({10, 20, 120, 20});
        variable.SetBounds({10, 44, 120, 20});
        button.SetCaption(L"&OK");
    }
};

TEST_F(ButtonsTest, AHeadingHasRoomForItsHeavierLetters) {
    label.SetHeading(true);
    label.SetCaption(L"Code types");
    hooks.layout = [this] { label.SetBounds({10, 200, label.MinimumSize(*host).width, 20}); };
    Show();
    const HWND window = WindowOf(L"lblPage");
    const platform::win32::WindowDc dc(window);
    const auto font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
    const HGDIOBJ before = SelectObject(dc.Get(), font);
    for (const wchar_t* caption : {L"Code types", L"Standard format", L"WWWW", L"iiii"}) {
        label.SetCaption(caption);
        SIZE size{};
        GetTextExtentPoint32W(dc.Get(), caption, lstrlenW(caption), &size);
        EXPECT_GE(label.MinimumSize(*host).width, size.cx);
    }
    SelectObject(dc.Get(), before);
}

TEST_F(ButtonsTest, ALabelOfAnotherWidthIsDrawnWhole) {
    label.SetCaption(L"Interleaved 2 of 5");
    hooks.layout = [this] { label.SetBounds({10, 200, 40, 20}); };
    Show();
    const HWND window = WindowOf(L"lblPage");
    ValidateRect(window, nullptr);
    label.SetBounds({10, 200, 160, 20});
    RECT stale{};
    ASSERT_TRUE(GetUpdateRect(window, &stale, FALSE));
    EXPECT_EQ(stale.left, 0) << "an ellipsis would stay in the middle of the text";
    EXPECT_EQ(stale.right, 160);
}

TEST_F(ButtonsTest, ClickIsAGestureAndStateIsShown) {
    int clicks = 0;
    button.onClick = [&] { ++clicks; };
    check.onClick = [&] { ++clicks; };
    variable.onClick = [&] { ++clicks; };
    Show();
    PostClick(WindowOf(L"cmdOK"), 5, 5);
    PostClick(WindowOf(L"chkOptional"), 5, 5);
    PostClick(WindowOf(L"optLength", 1), 5, 5);
    Drain();
    EXPECT_EQ(clicks, 3);
    EXPECT_TRUE(check.Checked());
    EXPECT_TRUE(variable.Chosen());
    const auto shown = [this](std::wstring_view name, int index = -1) {
        return SendMessageW(WindowOf(name, index), BM_GETCHECK, 0, 0);
    };
    EXPECT_EQ(shown(L"chkOptional"), BST_CHECKED);
    EXPECT_EQ(shown(L"optLength", 1), BST_CHECKED);
    fixed.SetChosen(true);
    check.SetChecked(false);
    EXPECT_EQ(shown(L"optLength", 0), BST_CHECKED);
    EXPECT_EQ(shown(L"optLength", 1), BST_UNCHECKED);
    EXPECT_EQ(shown(L"chkOptional"), BST_UNCHECKED);
    EXPECT_EQ(clicks, 3) << "a programmatic set raises nothing";
}

TEST_F(ButtonsTest, AnUndeterminedCheckIsShownAsOneAndClickedIntoAChecked) {
    int clicks = 0;
    check.onClick = [&] { ++clicks; };
    check.SetUndetermined();
    Show();
    const HWND window = WindowOf(L"chkOptional");
    const auto shown = [window] { return SendMessageW(window, BM_GETCHECK, 0, 0); };
    EXPECT_EQ(shown(), BST_INDETERMINATE) << "from the start";
    for (const LRESULT wanted : {BST_CHECKED, BST_UNCHECKED, BST_CHECKED}) {
        SendMessageW(window, BM_CLICK, 0, 0);
        EXPECT_EQ(shown(), wanted) << "clicks never lead back to it";
    }
    EXPECT_EQ(clicks, 3);
    check.SetUndetermined();
    EXPECT_EQ(shown(), BST_INDETERMINATE);
    check.SetChecked(false);
    EXPECT_EQ(shown(), BST_UNCHECKED);
    EXPECT_EQ(clicks, 3);
}

TEST_F(ButtonsTest, APictureHoldsAnIconForOthers) {
    form.Root().Add<Picture>(L"imgPicture", 101).SetVisible(false);
    form.Root().Add<Picture>(L"imgNone", 9999);
    Show();
    const auto icon = [this](const wchar_t* name) { return SendMessageW(WindowOf(name), STM_GETICON, 0, 0); };
    ICONINFO info{};
    ASSERT_TRUE(GetIconInfo(reinterpret_cast<HICON>(icon(L"imgPicture")), &info));
    BITMAP size{};
    GetObjectW(info.hbmColor, sizeof size, &size);
    EXPECT_EQ(size.bmWidth, host->Scale(Picture::kSide));
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    EXPECT_FALSE(IsWindowVisible(WindowOf(L"imgPicture")));
    EXPECT_EQ(icon(L"imgNone"), 0);
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(ButtonsTest, FocusAloneChoosesNothing) {
    fixed.SetChosen(true);
    Show();
    ::SetFocus(WindowOf(L"optLength", 1));
    Drain();
    EXPECT_EQ(form.Focused(), &variable);
    EXPECT_TRUE(fixed.Chosen());
}

TEST_F(ButtonsTest, CommonStateReachesTheWindow) {
    Show();
    const HWND ok = WindowOf(L"cmdOK");
    button.SetCaption(L"Close");
    button.SetBounds({50, 60, 70, 30});
    group.SetEnabled(false);
    label.SetVisible(false);
    check.SetToolTip(L"Optional: may be missing");
    EXPECT_EQ(TextOf(ok), L"Close");
    RECT place{};
    GetWindowRect(ok, &place);
    MapWindowPoints(nullptr, GetParent(ok), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_EQ(place.left, 50);
    EXPECT_EQ(place.bottom, 90);
    EXPECT_FALSE(IsWindowEnabled(WindowOf(L"optLength", 0))) << "enabled is effective: own and all ancestors'";
    EXPECT_FALSE(IsWindowVisible(WindowOf(L"lblPage")));
    EXPECT_EQ(host->Tips().Text(WindowOf(L"chkOptional")), L"Optional: may be missing");
}

TEST_F(ButtonsTest, HandlerMayTakeAllWindowsAway) {
    button.onClick = [this] { host->Detach(); };
    Show();
    const HWND ok = WindowOf(L"cmdOK");
    PostClick(ok, 5, 5);
    Drain();
    EXPECT_FALSE(IsWindow(ok));
    EXPECT_FALSE(host->Attached());
}

TEST_F(ButtonsTest, FailureStaysInsideTheWindowProcedure) {
    button.onClick = [] { throw Error(error_number::kOverflow); };
    Show();
    PostClick(WindowOf(L"cmdOK"), 5, 5);
    Drain();
    ASSERT_EQ(boxes.shown.size(), 1u);
    EXPECT_NE(boxes.shown[0].find(L"6: Overflow"), std::wstring::npos);
}

TEST_F(ButtonsTest, RefusedFocusComesBackAndNothingIsPressed) {
    int clicks = 0;
    check.onValidate = [] { return false; };
    button.onClick = [&] { ++clicks; };
    Show();
    form.SetFocus(check);
    ASSERT_TRUE(Within([this] { return GetFocus() == WindowOf(L"chkOptional"); }));
    PostMessageW(WindowOf(L"cmdOK"), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    ASSERT_TRUE(Within([this] { return GetFocus() == WindowOf(L"chkOptional"); }));
    PostMessageW(WindowOf(L"cmdOK"), WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    Drain();
    EXPECT_EQ(form.Focused(), &check);
    EXPECT_EQ(clicks, 0);
}

} // namespace
} // namespace orv::tests
