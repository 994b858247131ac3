// Host and component go in either order, and a host dies without a word.
#include <optional>
#include <thread>

#include "host/app/orvhost/control_driver.h"
#include "host/app/orvhost/script.h"
#include "host/sim/local_service.h"
#include "tests/com/running.h"

namespace orv::tests {
namespace {

constexpr auto kForEver = std::int64_t{1} << 40;

const sim::SystemDescription& Tiny() {
    static const sim::SystemDescription read = sim::LoadDescription(ORV_SOURCE_DIR "/samples/tiny.json");
    return read;
}

/// Acts once from a timer, as soon as something waits.
class Meanwhile {
  public:
    explicit Meanwhile(std::function<void()> act)
        : act_(std::move(act)), timer_(SetTimer(nullptr, 0, 100, &Meanwhile::Tick)) {
        current_ = this;
    }
    ~Meanwhile() {
        KillTimer(nullptr, timer_);
        current_ = nullptr;
    }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;
    bool Done() const { return !act_; }

  private:
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
        if (const auto act = current_ ? std::exchange(current_->act_, nullptr) : nullptr)
            act();
    }
    static inline thread_local Meanwhile* current_ = nullptr;
    std::function<void()> act_;
    UINT_PTR timer_;
};

class Teardown : public testing::Test {
  protected:
    ~Teardown() override {
        container.reset();
        EXPECT_TRUE(Within([this] { return component.CanUnload(); })) << "objects of the component are left";
        EXPECT_EQ(host::LiveFaces(), 0) << "objects of the host are held";
    }

    void MakeHost() {
        bench = std::make_shared<sim::BenchHost>(Tiny());
        bench->Windows().commitPanel = [](device::WindowHandle) {};
        bench->Windows().editGotFocus = [](device::WindowHandle) {};
        // A device that never answers: nothing is delivered.
        bench->SetService(std::make_shared<sim::LocalMibSapService>(
            std::vector{std::make_shared<sim::SimDevice>(Tiny().devices.front(), sim::FaultPlan{})},
            [](const std::function<void()>&) {}));
        classes.emplace(bench);
        container = std::make_unique<Container>();
    }

    ComPtr<IUnknown> Create() {
        ComPtr<IUnknown> control = component.Create();
        const auto application = host::Make<host::ApplicationFace>(bench->Application());
        EXPECT_EQ(Query<IAddOn>(control.Get())->Register(application.Get()), S_OK);
        EXPECT_EQ(Query<IAddOn>(control.Get())->put_CurrentClusterIndex(0), S_OK);
        EXPECT_EQ(Query<IAddOnGUI>(control.Get())->Enable(), S_OK);
        return control;
    }
    void Embed() { ASSERT_EQ(container->Embed(Create()), S_OK); }
    void Show() { ASSERT_EQ(container->Verb(OLEIVERB_SHOW), S_OK); }
    HRESULT Activate() { return Query<IAddOnGUI>(container->control.Get())->Activate(); }
    void OpenAll() {
        MakeHost();
        Embed();
        Show();
        ASSERT_EQ(Activate(), S_OK);
    }

    /// Every call from now on is answered as a process that has ended answers.
    void HostDies() { bench->Gate().FailNamed({}, 1, static_cast<std::int32_t>(RPC_E_DISCONNECTED), {}, kForEver); }
    void HostGoes() {
        classes.reset();
        bench.reset();
    }
    void ContainerHoldsNothing() {
        EXPECT_EQ(container->references, 1u);
        EXPECT_EQ(container->frame.references, 1u);
        EXPECT_EQ(container->extender.references, 1u);
    }

    /// Presses Apply on a changed value; `act` comes while the component waits for the device.
    void SaveAnd(const std::function<void()>& act) {
        const host::ControlDriver driver(container->ControlWindow());
        driver.SelectNode(L"Format Definition");
        ASSERT_TRUE(Within([&] { return driver.Value(L"tvw", host::kNoIndex) == L"Format Definition"; }));
        driver.Enter(L"mbeHeader", host::kNoIndex, L"H");
        ASSERT_TRUE(Within([&] { return IsWindowEnabled(driver.Find(L"cmdApply", host::kNoIndex)) != FALSE; }));
        Meanwhile meanwhile([&] {
            EXPECT_FALSE(IsWindowEnabled(container->ControlWindow())) << "no save runs";
            act();
        });
        driver.Press(L"cmdApply", host::kNoIndex);
        EXPECT_TRUE(Within([&] { return meanwhile.Done(); }));
    }

    Component component;
    std::shared_ptr<sim::BenchHost> bench;
    std::optional<host::ClassObjects> classes;
    std::unique_ptr<Container> container;
};

TEST_F(Teardown, TheComponentGoesFirstHoweverItsContainerLetsGo) {
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"as containers should", [this] { container->Discard(); }},
        {"closed only",
         [this] {
             Query<IOleObject>(container->control.Get())->Close(OLECLOSE_NOSAVE);
             container->control = nullptr;
         }},
        {"its site taken away only",
         [this] {
             Query<IOleObject>(container->control.Get())->SetClientSite(nullptr);
             container->control = nullptr;
         }},
        {"released only", [this] { container->control = nullptr; }},
        {"its window's parent destroyed before",
         [this] {
             DestroyWindow(container->Window());
             container->control = nullptr;
         }},
        {"unregistered before",
         [this] {
             EXPECT_EQ(Query<IAddOn>(container->control.Get())->Unregister(), S_OK);
             container->control = nullptr;
         }},
    };
    for (const auto& [what, letGo] : ways) {
        SCOPED_TRACE(what);
        OpenAll();
        container->frame.active = nullptr;
        letGo();
        EXPECT_TRUE(Within([this] { return component.CanUnload(); }));
        EXPECT_EQ(host::LiveFaces(), 0);
        EXPECT_EQ(bench->OpenConfigurations(), 0);
        ContainerHoldsNothing();
        container.reset();
        classes.reset();
    }
}

TEST_F(Teardown, TheHostsObjectsGoFirst) {
    OpenAll();
    HostGoes();
    const BoxAnswers answers(IDOK);
    EXPECT_EQ(Activate(), S_OK);
    EXPECT_EQ(container->Verb(OLEIVERB_HIDE), S_OK);
    EXPECT_EQ(container->Verb(OLEIVERB_SHOW), S_OK) << "the manager that it has lives as long as it wants";
    container->Discard();
    ContainerHoldsNothing();
}

TEST_F(Teardown, ADeadHostIsReportedAndLetGoOf) {
    struct Case {
        const char* what;
        std::function<void()> before;
        std::function<void()> after; ///< with a box a step
        std::size_t boxes;
    };
    const Case cases[] = {
        {"dead before it is shown", [] {},
         [this] {
             Embed();
             Show();
         },
         1},
        {"dead when it is activated",
         [this] {
             Embed();
             Show();
         },
         [this] { EXPECT_EQ(Activate(), S_OK); }, 1},
        {"dead when it is shown again",
         [this] {
             Embed();
             Show();
             EXPECT_EQ(Activate(), S_OK);
         },
         [this] {
             container->Verb(OLEIVERB_HIDE);
             Show();
         },
         1},
        {"dead when the user leaves",
         [this] {
             Embed();
             Show();
             EXPECT_EQ(Activate(), S_OK);
         },
         [this] {
             PostMessageW(container->Find(L"cmdCancel"), BM_CLICK, 0, 0);
             EXPECT_TRUE(Within([this] { return bench->Gate().Count("HostApplication.CloseAddOn") > 0; }));
             Within([] { return false; }, 100);
         },
         1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        MakeHost();
        bench->Gate().KeepLog(true);
        c.before();
        BoxAnswers answers(IDOK);
        HostDies();
        c.after();
        EXPECT_EQ(answers.texts.size(), c.boxes) << testing::PrintToString(answers.texts);
        for (const std::wstring& text : answers.texts)
            EXPECT_NE(text.find(std::to_wstring(static_cast<std::int32_t>(RPC_E_DISCONNECTED))), std::wstring::npos)
                << testing::PrintToString(text);
        answers.texts.clear();
        container->Discard();
        EXPECT_TRUE(answers.texts.empty()) << "whoever is let go of says nothing";
        EXPECT_TRUE(Within([this] { return component.CanUnload(); }));
        EXPECT_EQ(host::LiveFaces(), 0);
        ContainerHoldsNothing();
        container.reset();
        classes.reset();
    }
}

TEST_F(Teardown, TheHostGoesWhileASaveWaits) {
    const std::pair<const char*, std::function<void()>> ends[] = {
        {"lets go in order", [this] { container->Discard(); }},
        {"releases its objects and then the component",
         [this] {
             HostGoes();
             container->Discard();
         }},
        {"dies and lets go",
         [this] {
             HostDies();
             container->Discard();
         }},
        {"unregisters itself and lets go without closing",
         [this] {
             EXPECT_EQ(Query<IAddOn>(container->control.Get())->Unregister(), S_OK);
             container->frame.active = nullptr;
             container->control = nullptr;
         }},
    };
    for (const auto& [what, end] : ends) {
        SCOPED_TRACE(what);
        OpenAll();
        if (HasFatalFailure())
            return;
        BoxAnswers answers(IDOK);
        bool kept = false;
        SaveAnd([&] {
            end();
            kept = !component.CanUnload(); // the save is still on the stack
        });
        EXPECT_TRUE(kept);
        EXPECT_TRUE(Within([this] { return component.CanUnload(); }));
        EXPECT_TRUE(answers.texts.empty()) << testing::PrintToString(answers.texts);
        EXPECT_EQ(host::LiveFaces(), 0);
        ContainerHoldsNothing();
        container.reset();
        classes.reset();
    }
}

/// What a host must not do; the component has to live through it.
TEST_F(Teardown, TheThreadLeavesComBeforeTheLastRelease) {
    for (const bool shown : {false, true}) {
        SCOPED_TRACE(shown ? "shown and loaded" : "created only");
        std::thread([&] {
            ASSERT_EQ(OleInitialize(nullptr), S_OK);
            MakeHost();
            ComPtr<IUnknown> control = Create();
            if (shown) {
                EXPECT_EQ(container->Embed(control), S_OK);
                Show();
                EXPECT_EQ(Activate(), S_OK);
            }
            const BoxAnswers answers(IDOK);
            OleUninitialize();
            control = nullptr;
            container.reset();
            EXPECT_TRUE(Within([this] { return component.CanUnload(); }));
            EXPECT_TRUE(answers.texts.empty());
            classes.reset();
            bench.reset();
        }).join();
        EXPECT_EQ(host::LiveFaces(), 0);
    }
}

} // namespace
} // namespace orv::tests
