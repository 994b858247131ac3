#include "fixture.h"

#include "controls/check_list.h"
#include "controls/number_box.h"
#include "controls/tab_strip.h"
#include "controls/text_box.h"
#include "controls/toolbar.h"
#include "tests/support/usage.h"

namespace orv::tests {
namespace {

using namespace controls;

struct HandlesTest : Windows {};

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
    const Usage before = Look();
    for (int i = 0; i < 100; ++i) {
        host->Remake();
        if (i % 10 == 0)
            Drain();
    }
    Drain();
    const Usage growth = Growth(before, Look());
    EXPECT_GT(before.windows, 5) << "nothing is counted";
    EXPECT_GT(before.drawing, 5) << "nothing is counted";
    EXPECT_EQ(growth.windows, 0) << growth;
    EXPECT_EQ(growth.menusAndIcons, 0) << growth;
    EXPECT_EQ(growth.drawing, 0) << growth;
    EXPECT_EQ(growth.handles, 0) << growth;
}

} // namespace
} // namespace orv::tests
