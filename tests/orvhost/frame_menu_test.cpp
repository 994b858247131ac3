#include "host/app/orvhost/frame_menu.h"

#include <gtest/gtest.h>

#include "host/app/orvhost/commands.h"

namespace orv::host {
namespace {

FrameState OpenFileState() {
    FrameState state;
    state.hasFile = true;
    state.clusters = {{0, L"Belt"}, {2, L"Tunnel"}};
    state.devices = {{0, L"Left"}, {5, L""}};
    state.cluster = 2;
    state.level = 3;
    return state;
}

TEST(FrameMenu, FindsCommandsByTheirPlainCaptions) {
    FrameState state = OpenFileState();
    state.hasAddOn = true;
    const OwnedMenu menu = MakeMenu(state);
    EXPECT_EQ(FindCommand(menu.Get(), L"Save As"), kSaveAs);
    EXPECT_EQ(FindCommand(menu.Get(), L"Drop Connection"), kDropConnection);
    EXPECT_EQ(FindCommand(menu.Get(), L"2  Tunnel"), kClusterFirst + 2);
    EXPECT_EQ(FindCommand(menu.Get(), L"5"), kDeviceFirst + 5);
    EXPECT_EQ(FindCommand(menu.Get(), L"Level 1"), kLevelFirst + 1);
    EXPECT_EQ(FindCommand(menu.Get(), L"Nonsense"), 0);
}

TEST(FrameMenu, GreysWhatCannotBeDoneNow) {
    const OwnedMenu empty = MakeMenu({});
    EXPECT_EQ(FindCommand(empty.Get(), L"Save"), 0) << "nothing is open";
    EXPECT_EQ(FindCommand(empty.Get(), L"Open"), kOpen);
    const OwnedMenu closed = MakeMenu(OpenFileState());
    EXPECT_EQ(FindCommand(closed.Get(), L"Activate"), 0) << "there is no add-on";
    FrameState state = OpenFileState();
    state.hasAddOn = true;
    state.modeless = false;
    const OwnedMenu modal = MakeMenu(state);
    for (const wchar_t* caption : {L"Open", L"Show", L"Hide", L"Close", L"Exit", L"Level 1", L"5"})
        EXPECT_EQ(FindCommand(modal.Get(), caption), 0) << "the add-on shows something modal";
    EXPECT_EQ(FindCommand(modal.Get(), L"Drop Connection"), kDropConnection) << "a line breaks whenever it likes";
}

TEST(FrameMenu, MarksThePresentTarget) {
    const OwnedMenu menu = MakeMenu(OpenFileState());
    const auto marked = [&menu](int id) {
        return (GetMenuState(menu.Get(), static_cast<UINT>(id), MF_BYCOMMAND) & MF_CHECKED) != 0;
    };
    EXPECT_TRUE(marked(kClusterFirst + 2));
    EXPECT_FALSE(marked(kClusterFirst));
    EXPECT_TRUE(marked(kDeviceFirst));
    EXPECT_TRUE(marked(kLevelFirst + 3));
    EXPECT_FALSE(marked(kLevelFirst));
}

} // namespace
} // namespace orv::host
