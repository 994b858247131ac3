#include "controls/check_list.h"

#include "fixture.h"

#include <commctrl.h>

#include "controls/simple_widgets.h"

namespace orv::tests {
namespace {

using namespace controls;

struct CheckListTest : Windows {
    CheckList& list = form.Root().Add<CheckList>(L"lvwCodes");
    Button& button = form.Root().Add<Button>(L"cmdGoGrpCode");
    HWND window = nullptr;
    int checks = 0;
    CheckListTest() {
        list.SetBounds({10, 10, 200, 120});
        button.SetBounds({10, 140, 90, 24});
        list.SetRows({{L"1 - Code 39", 1, true}, {L"2 - EAN", 2}, {L"7 - Codabar", 7, false, true}});
        list.onCheck = [this](int, bool) { ++checks; };
        Show();
        window = WindowOf(L"lvwCodes");
    }
    void ClickRow(int row, bool onBox) {
        RECT label{};
        ListView_GetItemRect(window, row, &label, LVIR_LABEL);
        PostClick(window, onBox ? label.left - host->Scale(8) : label.left + 5, (label.top + label.bottom) / 2);
        Drain();
    }
    /// A blank stands for a row without a box.
    std::wstring Checked() const {
        std::wstring marks;
        for (int row = 0; row < ListView_GetItemCount(window); ++row)
            marks += L" .x"[ListView_GetItemState(window, row, LVIS_STATEIMAGEMASK) >> 12];
        return marks;
    }
    int Selected() const { return ListView_GetNextItem(window, -1, LVNI_SELECTED); }
    void Key(WPARAM key, UINT message = WM_KEYDOWN) {
        PostMessageW(window, message, key, 1);
        Drain();
    }
};

TEST_F(CheckListTest, BoxesAndRowsAreGesturesAndAVetoIsShown) {
    EXPECT_EQ(Checked(), L"x..");
    ClickRow(1, true);
    EXPECT_EQ(Checked(), L"xx.");
    EXPECT_EQ(Selected(), 1);
    ClickRow(0, false);
    EXPECT_EQ(Checked(), L"xx.") << "the text selects alone";
    EXPECT_EQ(Selected(), 0);
    list.onCheck = [this](int row, bool checked) {
        ++checks;
        if (list.Rows()[static_cast<std::size_t>(row)].greyed)
            list.SetChecked(row, !checked);
    };
    ClickRow(2, true);
    EXPECT_EQ(Checked(), L"xx.");
    Key(VK_UP);
    Key(L' ', WM_CHAR);
    EXPECT_EQ(Checked(), L"x..");
    EXPECT_EQ(checks, 3);
    list.SetChecked(2, true);
    EXPECT_EQ(Checked(), L"x.x");
    EXPECT_EQ(checks, 3);
}

TEST_F(CheckListTest, AProgramsCheckIsAGestureToo) {
    ListView_SetCheckState(window, 1, TRUE);
    EXPECT_EQ(checks, 1);
    EXPECT_EQ(Checked(), L"xx.");
    ListView_SetItemState(window, 2, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(list.Selected(), 2);
    list.onCheck = [this](int row, bool checked) { list.SetChecked(row, !checked); };
    ListView_SetCheckState(window, 0, FALSE);
    EXPECT_EQ(Checked(), L"xx.");
}

TEST_F(CheckListTest, RowsAndSelectionAreShown) {
    list.SetSelected(1);
    list.SetRows({{L"2 - EAN", 2, true}, {L"9", 9}});
    EXPECT_EQ(Checked(), L"x.");
    EXPECT_EQ(Selected(), 0);
    wchar_t text[32] = {};
    ListView_GetItemText(window, 1, 0, text, 32);
    EXPECT_STREQ(text, L"9");
    list.SetBounds({10, 10, 300, 120});
    RECT client{};
    GetClientRect(window, &client);
    EXPECT_EQ(ListView_GetColumnWidth(window, 0), client.right);
    list.SetSelected(-1);
    EXPECT_EQ(Selected(), -1);
}

TEST_F(CheckListTest, RowsThatGoAndComeBringTheirOwnBoxes) {
    list.SetRows({{L"9", 9}});
    EXPECT_EQ(Checked(), L".");
    list.SetRows({{L"9", 9, true}, {L"2 - EAN", 2, true}, {L"9", 9}});
    EXPECT_EQ(Checked(), L"xx.");
    EXPECT_EQ(ListView_GetItemState(window, 2, LVIS_STATEIMAGEMASK), INDEXTOSTATEIMAGEMASK(1u))
        << "a row without a box";
}

TEST_F(CheckListTest, DrawingTheBoxesLeavesTheListItsOwnFrame) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW);
    const platform::win32::WindowDc dc(container.Get());
    EXPECT_NE(GetPixel(dc.Get(), 10, 60), RGB(0, 0, 0)) << "the frame is no button's";
}

TEST_F(CheckListTest, AFieldThatKeepsTheFocusKeepsTheChecks) {
    button.onValidate = [] { return false; };
    form.SetFocus(button);
    ClickRow(1, true);
    EXPECT_EQ(Checked(), L"x..");
    EXPECT_EQ(checks, 0);
    EXPECT_TRUE(Within([this] { return GetFocus() == WindowOf(L"cmdGoGrpCode"); }));
}

} // namespace
} // namespace orv::tests
