#include "host/app/orvhost/progress_window.h"

#include <gtest/gtest.h>

#include "tests/orvhost/fake_container.h"

namespace orv::host {
namespace {

TEST(ProgressWindow, ExistsOnlyWhileShownAndBelongsToTheEditorsWindow) {
    FakeContainer host;
    ProgressWindow window;
    sim::ProgressLog progress;
    progress.owner = reinterpret_cast<device::WindowHandle>(host.Area());
    window.Follow(progress);
    EXPECT_EQ(window.Window(), nullptr);
    progress.shown = true;
    progress.title = L"Saving";
    progress.text = L"Entry 3";
    progress.percent = 41.6F;
    window.Follow(progress);
    ASSERT_NE(window.Window(), nullptr);
    EXPECT_EQ(WindowText(window.Window()), L"Saving");
    EXPECT_EQ(GetWindow(window.Window(), GW_OWNER), host.Frame());
    const HWND bar = FindWindowExW(window.Window(), nullptr, PROGRESS_CLASSW, nullptr);
    EXPECT_EQ(SendMessageW(bar, PBM_GETPOS, 0, 0), 4160);
    progress.percent = 250;
    window.Follow(progress);
    EXPECT_EQ(SendMessageW(bar, PBM_GETPOS, 0, 0), 10000) << "never past the end";
    const HWND shown = window.Window();
    progress.shown = false;
    window.Follow(progress);
    EXPECT_FALSE(IsWindow(shown));
    EXPECT_EQ(window.Window(), nullptr);
}

TEST(ProgressWindow, SurvivesTheEndOfItsOwner) {
    ProgressWindow window;
    sim::ProgressLog progress;
    progress.shown = true;
    {
        FakeContainer host;
        progress.owner = reinterpret_cast<device::WindowHandle>(host.Area());
        window.Follow(progress);
        ASSERT_NE(window.Window(), nullptr);
    }
    EXPECT_EQ(window.Window(), nullptr) << "it went with its owner";
    window.Follow(progress); // an owner that is gone is none
    EXPECT_NE(window.Window(), nullptr);
}

} // namespace
} // namespace orv::host
