// What a host that opens and closes the component all day is left with.
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <optional>
#include <vector>

#include "host/app/orvhost/control_driver.h"
#include "host/app/orvhost/item_driver.h"
#include "host/app/orvhost/script.h"
#include "host/sim/local_service.h"
#include "platform/win32/activation.h"
#include "tests/com/running.h"
#include "tests/support/usage.h"

namespace orv::tests {
namespace {

constexpr int kFewCycles = 60;
constexpr int kShortestStart = 20;

int Cycles() {
    const char* const wanted = std::getenv("ORV_LIFE_CYCLES");
    return wanted ? std::atoi(wanted) : kFewCycles;
}

const sim::SystemDescription& Tiny() {
    static const sim::SystemDescription read = sim::LoadDescription(ORV_SOURCE_DIR "/samples/tiny.json");
    return read;
}

class LongLife : public testing::Test {
  protected:
    LongLife() : bench(std::make_shared<sim::BenchHost>(Tiny())), classes(bench) {
        const auto device = std::make_shared<sim::SimDevice>(Tiny().devices.front(), sim::FaultPlan{});
        // Answers from inside the request: nothing here is about waiting.
        bench->SetService(
            std::make_shared<sim::LocalMibSapService>(std::vector{device}, sim::LocalMibSapService::Deliver()));
        bench->Windows().commitPanel = [](device::WindowHandle) {};
        bench->Windows().editGotFocus = [](device::WindowHandle) {};
    }

    /// One control from its creation to its end, with pages looked at and a save to the device.
    void Live() {
        Container container;
        Open(container);
        const host::ControlDriver driver(container.ControlWindow());
        for (const wchar_t* page : {L"Codes Definition", L"Codes Definition/1 - *", L"Format Definition"})
            Select(driver, page);
        driver.Enter(L"mbeHeader", host::kNoIndex, L"H" + std::to_wstring(saves_));
        ASSERT_TRUE(Within([&] { return IsWindowEnabled(driver.Find(L"cmdApply", host::kNoIndex)) != FALSE; }));
        driver.Press(L"cmdApply", host::kNoIndex);
        ASSERT_TRUE(Within([&] { return !IsWindowEnabled(driver.Find(L"cmdApply", host::kNoIndex)); }));
        ++saves_;
        CountWindows(container.Window());
        bench->Progress() = {}; // it writes down what was shown
        container.Discard();
        EXPECT_EQ(container.references + container.frame.references + container.extender.references, 3u);
    }

    void Open(Container& container) {
        const ComPtr<IUnknown> control = component->Create();
        const auto application = host::Make<host::ApplicationFace>(bench->Application());
        const auto addOn = Query<IAddOn>(control.Get());
        ASSERT_EQ(addOn->Register(application.Get()), S_OK);
        ASSERT_EQ(addOn->put_CurrentClusterIndex(0), S_OK);
        const auto gui = Query<IAddOnGUI>(control.Get());
        ASSERT_EQ(gui->Enable(), S_OK);
        ASSERT_EQ(container.Embed(control), S_OK);
        ASSERT_EQ(container.Verb(OLEIVERB_SHOW), S_OK);
        ASSERT_EQ(gui->Activate(), S_OK);
    }

    static void Select(const host::ControlDriver& driver, const std::wstring& page) {
        driver.SelectNode(page);
        const std::wstring last = page.substr(page.find(L'/') + 1);
        ASSERT_TRUE(Within([&] { return host::Matches(driver.Value(L"tvw", host::kNoIndex), last); }));
    }

    void CountWindows(HWND parent) {
        windows_ = labels_ = 0;
        EnumChildWindows(
            parent,
            [](HWND window, LPARAM self) -> BOOL {
                wchar_t type[16] = {};
                GetClassNameW(window, type, ARRAYSIZE(type));
                auto& life = *reinterpret_cast<LongLife*>(self);
                ++life.windows_;
                life.labels_ += _wcsicmp(type, L"STATIC") == 0 ? 1 : 0;
                return TRUE;
            },
            reinterpret_cast<LPARAM>(this));
    }

    void ExpectNothingHeld(int cycle) {
        EXPECT_TRUE(Within([this] { return component->CanUnload(); })) << "after cycle " << cycle;
        EXPECT_EQ(host::LiveFaces(), 0) << "after cycle " << cycle;
        EXPECT_EQ(bench->OpenConfigurations(), 0) << "after cycle " << cycle;
    }

    /// As many labels as one control has, `times` over, with the component's looks: not every system takes back what it
    /// keeps for a label that was given a font.
    void BareLabels(int times) const {
        const platform::win32::ActivationContext looks(component->Module());
        for (int i = 0; i < times; ++i) {
            const platform::win32::ActivationScope scope(looks);
            const platform::win32::OwnedWindow parent(CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 900,
                                                                      700, nullptr, nullptr, nullptr, nullptr));
            for (int child = 0; child < labels_; ++child) {
                const HWND label =
                    CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 9, 9, parent.Get(), nullptr, nullptr, nullptr);
                SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
            }
        }
    }

    std::optional<Component> component{std::in_place};
    std::shared_ptr<sim::BenchHost> bench;
    host::ClassObjects classes;
    int saves_ = 0;
    int windows_ = 0;
    int labels_ = 0;
};

TEST_F(LongLife, TheLastCycleFindsWhatAnEarlyOneFound) {
    const int last = Cycles();
    const int first = std::max(kShortestStart, last / 10);
    Usage early;
    for (int cycle = 1; cycle <= last && !HasFailure(); ++cycle) {
        Live();
        ExpectNothingHeld(cycle);
        if (cycle == first)
            early = Look();
    }
    const Usage late = Look();
    const Usage growth = Growth(early, late);
    BareLabels(last - first);
    const Usage bare = Growth(late, Look());
    const auto row = [](const std::string& name, const Usage& usage) {
        std::cout << "life " << std::left << std::setw(28) << name << std::right << usage << std::endl;
    };
    std::cout << "life " << std::string(28, ' ') << kUsageHead << std::endl;
    row("after cycle " + std::to_string(first), early);
    row("after cycle " + std::to_string(last), late);
    row("growth", growth);
    row("of " + std::to_string(labels_) + " bare labels a cycle", bare);
    EXPECT_GT(windows_, 50) << "the pages had no windows";
    EXPECT_EQ(saves_, last);
    EXPECT_EQ(growth.windows, 0);
    EXPECT_EQ(growth.menusAndIcons, 0);
    EXPECT_EQ(growth.drawing, 0);
    EXPECT_EQ(growth.handles, 0);
    EXPECT_LT(static_cast<std::ptrdiff_t>(growth.blocks), static_cast<std::ptrdiff_t>(bare.blocks) + (last - first) / 4)
        << "more than labels leave behind anyway";
}

TEST_F(LongLife, ItsFileGoesWhenAllOfItHasGone) {
    Live();
    ExpectNothingHeld(1);
    const std::wstring path = Component::Path();
    EXPECT_NE(GetModuleHandleW(path.c_str()), nullptr);
    component.reset();
    // The system keeps a file that a test before this one had it load.
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(GetModuleHandleW(path.c_str()), nullptr);
    // And comes back at whatever address there is, with classes of windows to register anew.
    component.emplace();
    Live();
    ExpectNothingHeld(2);
}

} // namespace
} // namespace orv::tests
