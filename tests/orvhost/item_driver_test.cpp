#include "host/app/orvhost/item_driver.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "host/app/orvhost/host_pump.h"

namespace orv::host {
namespace {

/// A list with check boxes, a strip and a toolbar, as the system makes them.
struct ItemDriverTest : testing::Test {
    HostPump pump;
    OwnedWindow window{CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 400, 400, nullptr, nullptr,
                                       Program(), nullptr)};
    HWND list = Add(WC_LISTVIEWW, LVS_REPORT | LVS_NOCOLUMNHEADER, 0);
    HWND tabs = Add(WC_TABCONTROLW, 0, 130);
    HWND bar = Add(TOOLBARCLASSNAMEW, TBSTYLE_LIST | CCS_NORESIZE | CCS_NOPARENTALIGN, 260);

    HWND Add(const wchar_t* type, DWORD style, int top) const {
        return CreateWindowExW(0, type, L"", WS_CHILD | WS_VISIBLE | style, 0, top, 390, 120, window.Get(), nullptr,
                               Program(), nullptr);
    }
    ItemDriverTest() {
        ListView_SetExtendedListViewStyle(list, LVS_EX_CHECKBOXES);
        LVCOLUMNW column{};
        column.mask = LVCF_WIDTH;
        column.cx = 300;
        ListView_InsertColumn(list, 0, &column);
        for (int row = 0; row < 3; ++row)
            AddRow(row);
        SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
        for (int button = 0; button < 2; ++button)
            AddButton(button);
        for (int tab = 0; tab < 2; ++tab)
            AddTab(tab);
    }
    std::wstring Text(const wchar_t* kind, int at) const { return kind + std::to_wstring(at + 1); }
    void AddRow(int row) const {
        std::wstring text = Text(L"Row ", row);
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = text.data();
        ListView_InsertItem(list, &item);
    }
    void AddTab(int tab) const {
        std::wstring text = Text(L"Group ", tab);
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = text.data();
        TabCtrl_InsertItem(tabs, tab, &item);
    }
    void AddButton(int at) const {
        const std::wstring text = Text(L"Code ", at);
        TBBUTTON button{};
        button.iBitmap = I_IMAGENONE;
        button.idCommand = at + 5;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = BTNS_CHECKGROUP;
        button.iString = reinterpret_cast<INT_PTR>(text.c_str());
        SendMessageW(bar, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
    bool Shows(HWND control, const std::wstring& wanted) {
        return pump.PumpFor(2000, [&] { return ItemsShown(control) == wanted; });
    }
};

TEST_F(ItemDriverTest, NamesAndFindsWhatIsThere) {
    EXPECT_EQ(ItemTexts(list), (std::vector<std::wstring>{L"Row 1", L"Row 2", L"Row 3"}));
    EXPECT_EQ(ItemTexts(tabs), (std::vector<std::wstring>{L"Group 1", L"Group 2"}));
    EXPECT_EQ(ItemTexts(bar), (std::vector<std::wstring>{L"Code 1", L"Code 2"}));
    EXPECT_TRUE(ItemTexts(window.Get()).empty());
    EXPECT_EQ(FindItem(list, L"Row 3"), 2);
    EXPECT_EQ(FindItem(list, L"Row*"), 0);
    EXPECT_THROW(FindItem(list, L"Row"), std::runtime_error) << "a part of a text needs its star";
    EXPECT_THROW(FindItem(bar, L"row*"), std::runtime_error);
}

TEST_F(ItemDriverTest, ClicksWhereTheItemIs) {
    ClickItem(tabs, 1, false);
    EXPECT_TRUE(Shows(tabs, L"Group 2"));
    ClickItem(bar, 1, false);
    EXPECT_TRUE(Shows(bar, L"Code 2"));
    CheckItem(list, 1, true);
    EXPECT_TRUE(Shows(list, L"[ ] Row 1 | [x] Row 2 | [ ] Row 3"));
    CheckItem(list, 1, true); // shows it already
    CheckItem(list, 2, true);
    EXPECT_TRUE(Shows(list, L"[ ] Row 1 | [x] Row 2 | [x] Row 3"));
    CheckItem(list, 1, false);
    EXPECT_TRUE(Shows(list, L"[ ] Row 1 | [ ] Row 2 | [x] Row 3"));
    ListView_SetExtendedListViewStyle(list, 0);
    EXPECT_EQ(ItemsShown(list), L"Row 1 | Row 2 | Row 3");
    EXPECT_THROW(CheckItem(list, 0, true), std::runtime_error);
}

TEST_F(ItemDriverTest, DragsToTheGap) {
    RECT last{LVIR_BOUNDS, 0, 0, 0};
    SendMessageW(list, LVM_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&last));
    std::vector<std::pair<int, bool>> gaps; // where the pointer is let go, and whether it came there in steps
    int moves = 0;
    pump.SetFilter([&](MSG& message) {
        moves += message.hwnd == bar && message.message == WM_MOUSEMOVE && (message.wParam & MK_LBUTTON) != 0;
        if (message.hwnd != bar || message.message != WM_LBUTTONUP)
            return message.hwnd == bar;
        POINT at{static_cast<short>(LOWORD(message.lParam)), static_cast<short>(HIWORD(message.lParam))};
        MapWindowPoints(bar, list, &at, 1);
        gaps.emplace_back(static_cast<int>(at.y), moves >= 2);
        return true;
    });
    for (const int gap : {0, 2, 3}) {
        moves = 0;
        DragItem(bar, 1, list, gap);
        pump.ProcessPending();
    }
    const int height = static_cast<int>(last.bottom - last.top);
    const int bottom = static_cast<int>(last.bottom);
    EXPECT_EQ(gaps, (std::vector<std::pair<int, bool>>{
                        {bottom - 3 * height + 1, true}, {bottom - height + 1, true}, {bottom - 1, true}}));
    EXPECT_THROW(DragItem(bar, 0, list, 4), std::runtime_error);
    EXPECT_THROW(DragItem(list, 0, bar, 0), std::runtime_error);
}

} // namespace
} // namespace orv::host
