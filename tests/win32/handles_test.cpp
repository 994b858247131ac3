#include "fixture.h"

#include "controls/check_list.h"
#include "controls/number_box.h"
#include "controls/tab_strip.h"
#include "controls/text_box.h"
#include "controls/toolbar.h"

namespace orv::tests {
namespace {

using namespace controls;

struct HandlesTest : Windows {
    struct Count {
        DWORD drawing = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
        DWORD windows = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    };
};

TEST_F(HandlesTest, WindowsMadeAHundredTimesLeaveNothingBehind) {
    auto& bar = form.Root().Add<Toolbar>(L"tbr");
    bar.SetButtonWidth(90);
    bar.SetButtons({{L"1", L"One", L"None", L"", L""}, {L"2", L"Two", L"Barcode", L"", L"", false}});
    form.Root().Add<CheckList>(L"lvw").SetRows({{L"One", 1, true}, {L"Two", 2}});
    form.Root().Add<TabStrip>(L"tbs").SetTabs({{L"1", L"One"}, {L"2", L"Two"}});
    form.Root().Add<NumberBox>(L"txt").SetValue(3);
    form.Root().Add<TextBox>(L"txtTransports").SetText(L"SerMain");
    int top = 0;
    for (const auto& child : form.Root().Children())
        child->SetBounds({10, top += 60, 200, 50});
    Show();
    for (int i = 0; i < 5; ++i) // what the system keeps for itself is made by now
        host->Remake();
    Drain();
    const Count before;
    for (int i = 0; i < 100; ++i) {
        host->Remake();
        if (i % 10 == 0)
            Drain();
    }
    const Count after;
    EXPECT_LE(after.drawing, before.drawing + 5);
    EXPECT_LE(after.windows, before.windows + 5);
}

} // namespace
} // namespace orv::tests
