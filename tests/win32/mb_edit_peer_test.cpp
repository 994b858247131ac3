#include "mb_edit_fixture.h"

#include "controls/win32/colours.h"

namespace orv::tests {
namespace {

TEST_F(MBEditTest, TypedCharactersPassThroughTheCore) {
    for (const bool careful : {true, false}) {
        translates = careful; // a careless container leaves the keys to the windows
        edit.SetData({});
        Type(L"A \rB\x02");
        EXPECT_EQ(TextOf(window), L"A<Space><CR>B<STX>");
        EXPECT_EQ(edit.Data(), (Bytes{'A', ' ', 13, 'B', 2}));
        PostMessageW(window, WM_KEYDOWN, VK_BACK, 1);
        Drain();
        EXPECT_EQ(TextOf(window), L"A<Space><CR>B") << "one key, one step";
        PostMessageW(window, WM_KEYDOWN, VK_RETURN, 1);
        Drain();
        EXPECT_EQ(TextOf(window), L"A<Space><CR>B<CR>") << "the character behind the key is not a second one";
    }
}

TEST_F(MBEditTest, TokensHaveTheirOwnSystemColour) {
    edit.SetData({'A', 13, 'B'});
    const COLORREF token = controls::win32::TokenColour(GetSysColor(COLOR_WINDOW));
    EXPECT_NE(token, GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(ColourAt(0), GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(ColourAt(1), token);
    EXPECT_EQ(ColourAt(4), token);
    EXPECT_EQ(ColourAt(5), GetSysColor(COLOR_WINDOWTEXT));
    Type(L"<CR>"); // four bytes that look like one token are none
    EXPECT_EQ(TextOf(window), L"<CR>A<CR>B");
    EXPECT_EQ(ColourAt(1), GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(ColourAt(5), token);
}

TEST_F(MBEditTest, ColoursFollowTheSystem) {
    edit.SetData({'A', 13});
    const INT elements[] = {COLOR_WINDOW, COLOR_WINDOWTEXT, COLOR_HOTLIGHT};
    COLORREF former[3] = {};
    for (int i = 0; i < 3; ++i)
        former[i] = GetSysColor(elements[i]);
    const COLORREF contrast[] = {RGB(0, 0, 0), RGB(255, 255, 0), RGB(0, 255, 0)};
    const COLORREF token = ColourAt(2);
    ASSERT_TRUE(SetSysColors(3, elements, contrast));
    SendMessageW(container.Get(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(ColourAt(0), contrast[1]);
    EXPECT_EQ(ColourAt(2), contrast[2]);
    // A colour that nobody could read gives way.
    const INT followed[] = {COLOR_HOTLIGHT};
    const COLORREF hidden[] = {RGB(10, 10, 10)};
    SetSysColors(1, followed, hidden);
    SendMessageW(container.Get(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(ColourAt(2), contrast[1]);
    SetSysColors(3, elements, former);
    SendMessageW(container.Get(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(ColourAt(2), token);
    edit.SetEnabled(false);
    EXPECT_EQ(ColourAt(2), GetSysColor(COLOR_GRAYTEXT));
}

TEST_F(MBEditTest, PointerSelectsWholeTokens) {
    edit.SetData({'A', 13, 10, 'B'}); // A<CR><LF>B
    Mouse(WM_LBUTTONDOWN, MK_LBUTTON, PointOf(1));
    ExpectSelection(1, 1);
    Mouse(WM_MOUSEMOVE, MK_LBUTTON, PointOf(4)); // near the end of <CR>
    ExpectSelection(1, 5);
    Mouse(WM_MOUSEMOVE, MK_LBUTTON, PointOf(8));
    Mouse(WM_LBUTTONUP, 0, PointOf(8));
    ExpectSelection(1, 9);
    EXPECT_EQ(edit.Core().SelLength(), 8u);
    EXPECT_NE(GetCapture(), window);
    PostMessageW(window, WM_KEYDOWN, VK_DELETE, 1);
    Drain();
    EXPECT_EQ(TextOf(window), L"AB");
    EXPECT_EQ(edit.Data(), (Bytes{'A', 'B'}));
}

TEST_F(MBEditTest, TheClickThatBringsTheFocusSelectsAll) {
    Button& other = form.Root().Add<Button>(L"cmdApply");
    other.SetBounds({10, 60, 90, 24});
    edit.SetData({'A', 13, 'B'});
    const auto click = [this](int position) {
        Mouse(WM_LBUTTONDOWN, MK_LBUTTON, PointOf(position));
        Mouse(WM_LBUTTONUP, 0, PointOf(position));
    };
    for (const bool selects : {true, false}) {
        edit.SetAutoSelect(selects);
        form.SetFocus(other);
        click(5);
        EXPECT_EQ(GetFocus(), window);
        selects ? ExpectSelection(0, 6) : ExpectSelection(5, 5);
        click(1);
        ExpectSelection(1, 1);
    }
    edit.SetAutoSelect(true);
    form.SetFocus(other);
    ::SetFocus(window); // as another program does
    ExpectSelection(0, 6);
}

TEST_F(MBEditTest, DoubleClickAndForeignSelectionSnap) {
    edit.SetData({'A', 13, 'B'});
    Mouse(WM_LBUTTONDBLCLK, MK_LBUTTON, PointOf(3));
    ExpectSelection(1, 5);
    SendMessageW(window, EM_SETSEL, 0, 2); // as a screen reader does
    Drain();
    const CHARRANGE range = Selection();
    EXPECT_EQ(range.cpMin, 0);
    EXPECT_TRUE(range.cpMax == 1 || range.cpMax == 5) << range.cpMax;
}

} // namespace
} // namespace orv::tests
