#include "fixture.h"

#include "controls/combo_box.h"

namespace orv::tests {
namespace {

using namespace controls;

struct ComboTest : Windows {
    ComboBox& combo = form.Root().Add<ComboBox>(L"cboCodeID");
    HWND window = nullptr;
    int clicks = 0;
    ComboTest() {
        combo.SetBounds({10, 10, 160, 26});
        combo.SetEntries({{L"Disabled", 0}, {L"Standard", 1}, {L"Custom", 2}});
        combo.SetSelected(1);
        combo.onClick = [this] { ++clicks; };
        Show();
        window = WindowOf(L"cboCodeID");
    }
    LRESULT Shown() const { return SendMessageW(window, CB_GETCURSEL, 0, 0); }
    void Key(WPARAM key) {
        PostMessageW(window, WM_KEYDOWN, key, 1);
        Drain();
    }
};

TEST_F(ComboTest, ShowsEntriesSelectionAndHeight) {
    EXPECT_EQ(SendMessageW(window, CB_GETCOUNT, 0, 0), 3);
    EXPECT_EQ(Shown(), 1);
    RECT closed{};
    GetWindowRect(window, &closed);
    EXPECT_EQ(closed.bottom - closed.top, 26);
    combo.SelectData(9);
    EXPECT_EQ(Shown(), 3);
    EXPECT_EQ(TextOf(window), L"9");
    combo.SelectData(2);
    EXPECT_EQ(SendMessageW(window, CB_GETCOUNT, 0, 0), 3) << "a value that the list lacks goes with its object";
    EXPECT_EQ(Shown(), 2);
    combo.SelectData(9);
    combo.SetSelected(-1);
    EXPECT_EQ(Shown(), CB_ERR);
    EXPECT_EQ(TextOf(window), L"") << "no choice";
    EXPECT_EQ(SendMessageW(window, CB_GETCOUNT, 0, 0), 3);
    combo.SetSelected(1);
    combo.SetEntries({{L"One", 1}});
    EXPECT_EQ(Shown(), CB_ERR);
    EXPECT_EQ(clicks, 0);
}

TEST_F(ComboTest, ArrowKeysChooseWhileClosed) {
    form.SetFocus(combo);
    Key(VK_DOWN);
    EXPECT_EQ(combo.SelectedData(), 2);
    EXPECT_EQ(Shown(), 2);
    EXPECT_EQ(clicks, 1);
}

TEST_F(ComboTest, OpenListChoosesOnReturnAndNothingOnEscape) {
    form.SetFocus(combo);
    Key(VK_F4);
    ASSERT_TRUE(SendMessageW(window, CB_GETDROPPEDSTATE, 0, 0));
    Key(VK_UP);
    EXPECT_EQ(combo.Selected(), 1) << "browsing chooses nothing";
    Key(VK_ESCAPE);
    EXPECT_FALSE(SendMessageW(window, CB_GETDROPPEDSTATE, 0, 0));
    EXPECT_EQ(combo.Selected(), 1);
    EXPECT_EQ(Shown(), 1);
    EXPECT_EQ(clicks, 0);
    Key(VK_F4);
    Key(VK_DOWN);
    Key(VK_RETURN);
    EXPECT_EQ(combo.Selected(), 2);
    EXPECT_EQ(Shown(), 2);
    EXPECT_EQ(clicks, 1);
}

TEST_F(ComboTest, TheOpenListShowsItsLongestEntryWhole) {
    const std::wstring longest(60, L'W');
    combo.SetEntries({{L"Short", 0}, {longest, 1}});
    form.SetFocus(combo);
    Key(VK_F4);
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    ASSERT_TRUE(GetComboBoxInfo(window, &info));
    RECT list{};
    GetWindowRect(info.hwndList, &list);
    EXPECT_GT(list.right - list.left, host->Width(longest));
    Key(VK_ESCAPE);
}

TEST_F(ComboTest, WheelOverAClosedBoxChangesNothing) {
    form.SetFocus(combo);
    PostMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    Drain();
    EXPECT_EQ(combo.Selected(), 1);
    EXPECT_EQ(Shown(), 1);
}

} // namespace
} // namespace orv::tests
