#include "controls/tab_strip.h"

#include "fixture.h"

#include <commctrl.h>

#include "controls/number_box.h"

namespace orv::tests {
namespace {

using namespace controls;

struct TabsTest : Windows {
    TabStrip& strip = form.Root().Add<TabStrip>(L"tbs");
    NumberBox& box = form.Root().Add<NumberBox>(L"txt");
    HWND window = nullptr;
    std::vector<int> selected;
    TabsTest() {
        strip.SetBounds({10, 10, 300, 26});
        box.SetBounds({10, 50, 80, 24});
        strip.SetTabs({{L"Group1", L"Group 1"}, {L"Group2", L"Group 2"}, {L"Group3", L"Group 3"}});
        strip.onSelect = [this](int tab) { selected.push_back(tab); };
        Show();
        window = WindowOf(L"tbs");
    }
    void ClickTab(int tab) {
        RECT place{};
        TabCtrl_GetItemRect(window, tab, &place);
        PostClick(window, (place.left + place.right) / 2, (place.top + place.bottom) / 2);
        Drain();
    }
    std::wstring Caption(int tab) const {
        wchar_t text[64] = {};
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        item.cchTextMax = 64;
        TabCtrl_GetItem(window, tab, &item);
        return text;
    }
};

TEST_F(TabsTest, ClicksSelectUnlessAFieldOrThePageRefuses) {
    ClickTab(2);
    EXPECT_EQ(TabCtrl_GetCurSel(window), 2);
    form.SetFocus(box);
    box.Edit(L"rubbish");
    ClickTab(0);
    EXPECT_EQ(TabCtrl_GetCurSel(window), 2);
    EXPECT_TRUE(Within([this] { return GetFocus() == WindowOf(L"txt"); }));
    box.Revert();
    strip.onSelecting = [] { return false; };
    ClickTab(0);
    EXPECT_EQ(TabCtrl_GetCurSel(window), 2);
    strip.onSelecting = nullptr;
    PostMessageW(window, WM_KEYDOWN, VK_LEFT, 1);
    Drain();
    EXPECT_EQ(TabCtrl_GetCurSel(window), 1);
    EXPECT_EQ(selected, (std::vector<int>{2, 1}));
}

TEST_F(TabsTest, TabsAreShownAndManyAreScrolledToTheSelectedOne) {
    strip.SetCaptionOf(L"Group2", L"2 & more");
    EXPECT_EQ(Caption(1), L"2 && more") << "an ampersand is no access key";
    std::vector<TabStrip::Tab> many;
    for (int i = 1; i <= 20; ++i)
        many.push_back({L"Group" + std::to_wstring(i), L"Group " + std::to_wstring(i)});
    strip.SetTabs(many);
    EXPECT_EQ(TabCtrl_GetItemCount(window), 20);
    strip.SetSelected(19);
    RECT place{};
    RECT client{};
    TabCtrl_GetItemRect(window, 19, &place);
    GetClientRect(window, &client);
    EXPECT_GE(place.left, 0);
    EXPECT_LE(place.right, client.right);
    strip.SetTabs({});
    EXPECT_EQ(TabCtrl_GetItemCount(window), 0);
    EXPECT_TRUE(selected.empty());
}

} // namespace
} // namespace orv::tests
