#include "mb_edit_fixture.h"

#include <array>

#include "controls/win32/edit_menu.h"

namespace orv::tests {
namespace {

std::wstring ItemText(HMENU menu, UINT item) {
    std::array<wchar_t, 64> text{};
    GetMenuStringW(menu, item, text.data(), static_cast<int>(text.size()), MF_BYPOSITION);
    return text.data();
}

TEST_F(MBEditTest, ContextMenuOffersWhatCanBeDone) {
    const auto enabled = [this] {
        const auto menu = controls::win32::MakeEditMenu(edit);
        std::string result;
        for (int i = 0; i < GetMenuItemCount(menu.Get()); ++i) {
            const UINT state = GetMenuState(menu.Get(), static_cast<UINT>(i), MF_BYPOSITION);
            if ((state & MF_SEPARATOR) == 0 || (state & MF_POPUP) != 0)
                result += (state & MF_GRAYED) != 0 ? '-' : '+';
        }
        return result;
    };
    // Undo, redo, cut, copy, paste, select all, names.
    EXPECT_EQ(enabled(), "----+-+");
    Type(L"ab");
    EXPECT_EQ(enabled(), "+---+++");
    SendMessageW(window, EM_SETSEL, 0, -1);
    EXPECT_EQ(enabled(), "+-+++++");
    edit.Undo();
    EXPECT_EQ(enabled(), "-+--+-+");
    edit.SetLocked(true);
    EXPECT_EQ(enabled(), "-------");
    const auto menu = controls::win32::MakeEditMenu(edit);
    const HMENU below = GetSubMenu(menu.Get(), GetMenuItemCount(menu.Get()) - 1);
    ASSERT_EQ(GetMenuItemCount(below), 33);
    EXPECT_EQ(ItemText(below, 2), L"STX\t02");
    EXPECT_EQ(ItemText(below, 32), L"Space\t20");
    EXPECT_EQ(names.Entries()[2], ItemText(below, 2)) << "one list";
}

TEST_F(MBEditTest, ANameFromTheContextMenuGoesIn) {
    Type(L"a");
    PostMessageW(window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window), -1);
    // Up from nothing is the last item, which opens its list.
    for (WPARAM key : {VK_UP, VK_RIGHT, VK_DOWN, VK_DOWN, VK_RETURN})
        PostMessageW(window, WM_KEYDOWN, key, 1);
    ASSERT_TRUE(Within([this] { return edit.TextLength() > 1; }));
    EXPECT_EQ(TextOf(window), L"a<STX>");
}

TEST_F(MBEditTest, NameMenuInsertsAToken) {
    names.Open();
    // The menu's own loop runs until it has its answer: keys come from its queue.
    for (WPARAM key : {VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN})
        PostMessageW(WindowOf(L"cmdNames"), WM_KEYDOWN, key, 1);
    ASSERT_TRUE(Within([this] { return edit.Core().TextLength() > 0; }));
    EXPECT_EQ(TextOf(window), L"<STX>");
    EXPECT_EQ(form.Focused(), &edit);
}

} // namespace
} // namespace orv::tests
