// Controls in several apartments at once, and threads that end without looking at their messages again.
#include <cstdlib>
#include <mutex>
#include <optional>
#include <thread>

#include "tests/com/running.h"

namespace orv::tests {
namespace {

using addon::com::Bstr;

constexpr int kThreads = 4;
constexpr int kControls = 15; ///< that are shown, on each
constexpr int kUnseen = 4;    ///< so many times as many are only made

const wchar_t* const kClasses[] = {L"OrvOutFormat.AddOnControl", L"OrvOutFormat.Dialog", L"OrvOutFormat.Frame",
                                   L"OrvOutFormat.Pump"};

/// Runs in an apartment of its own, on a thread that ends.
void InApartment(const std::function<void()>& action) {
    std::thread([&] {
        ASSERT_EQ(OleInitialize(nullptr), S_OK);
        action();
        OleUninitialize();
    }).join();
}

bool Known(HMODULE module, const wchar_t* name) {
    WNDCLASSEXW about{};
    about.cbSize = sizeof about;
    return GetClassInfoExW(module, name, &about) != FALSE;
}

class Threads : public testing::Test {
  protected:
    /// On request: the system under these tests faults now and then when several threads make windows (docs/proof.md).
    void SetUp() override {
        if (std::getenv("ORV_THREADS") == nullptr)
            GTEST_SKIP() << "ORV_THREADS=1 runs it";
    }
    /// One control after the other, so that each end meets beginnings on other threads; some are shown, some have a
    /// host.
    void LeadLives() {
        const auto bench = std::make_shared<sim::BenchHost>(host);
        const host::ClassObjects classes(bench);
        const auto application = host::Make<host::ApplicationFace>(bench->Application());
        for (int i = 0; i < kControls * kUnseen; ++i) {
            Container container;
            ComPtr<IUnknown> control;
            Expect("create", component->Factory()->CreateInstance(nullptr, IID_IUnknown, control.PutVoid()));
            if (!control || i % kUnseen != 0)
                continue;
            if (i % 5 == 0) {
                Expect("register", Query<IAddOn>(control.Get())->Register(application.Get()));
                Expect("enable", Query<IAddOnGUI>(control.Get())->Enable());
            }
            Expect("embed", container.Embed(control));
            Expect("show", container.Verb(OLEIVERB_UIACTIVATE));
        }
    }
    void Expect(const char* step, HRESULT result) {
        ComPtr<IErrorInfo> info;
        Bstr description;
        if (FAILED(result) && GetErrorInfo(0, info.Put()) == S_OK)
            info->GetDescription(description.Put());
        const std::lock_guard guard(lock_);
        EXPECT_EQ(result, S_OK) << step << ": " << testing::PrintToString(description.Text());
    }

    std::optional<Component> component{std::in_place};
    const sim::SystemDescription host = sim::LoadDescription(ORV_SOURCE_DIR "/samples/tiny.json");

  private:
    std::mutex lock_;
};

TEST_F(Threads, ControlsComeAndGoOnAllOfThemAtOnce) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread)
        threads.emplace_back([this] { InApartment([&] { LeadLives(); }); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_TRUE(component->CanUnload());
}

TEST_F(Threads, AControlLetGoOfInACallGoesWithTheCall) {
    for (const char* method : {"CanInPlaceActivate", "OnInPlaceActivate", "ShowObject", "OnUIActivate"}) {
        SCOPED_TRACE(method);
        InApartment([&] {
            Container container;
            container.control = component->Create();
            const auto object = Query<IOleObject>(container.control.Get()).Get();
            object->SetClientSite(&container);
            container.within = [&](const std::string& line) {
                if (line == method)
                    container.control = nullptr;
            };
            object->DoVerb(OLEIVERB_UIACTIVATE, nullptr, nullptr, 0, container.Window(), &container.place);
            EXPECT_FALSE(container.control);
            container.frame.active = nullptr;
            EXPECT_TRUE(component->CanUnload()) << "nothing of it runs any more";
        });
        EXPECT_TRUE(component->CanUnload());
    }
}

struct OnMenu {
    Container container;
    Component* component = nullptr;
    bool kept = false;
};

/// Lets go of the control when the control's windows hand a message on to it.
LRESULT CALLBACK LetGoOnMenu(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message != WM_CONTEXTMENU)
        return DefWindowProcW(window, message, wparam, lparam);
    auto& state = *reinterpret_cast<OnMenu*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    state.container.control = nullptr;
    state.kept = !state.component->CanUnload();
    return 0;
}

TEST_F(Threads, AControlLetGoOfInAMessageOfItsOwnOutlivesTheMessageButNotTheThread) {
    InApartment([&] {
        OnMenu state;
        state.component = &*component;
        ASSERT_EQ(state.container.Embed(component->Create()), S_OK);
        const HWND window = state.container.Window();
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&state));
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&LetGoOnMenu));
        SendMessageW(state.container.ControlWindow(), WM_CONTEXTMENU, 0, -1);
        EXPECT_FALSE(state.container.control);
        EXPECT_TRUE(state.kept) << "its window procedure goes on with nothing below it";
        EXPECT_EQ(GetWindow(window, GW_CHILD), nullptr);
    });
    EXPECT_TRUE(component->CanUnload()) << "its thread has ended, and nobody else looks after it";
}

TEST_F(Threads, TheWindowClassesAreTheFilesOwnAndGoWithIt) {
    // What an earlier load at the same address may have left: the names with somebody else's procedure.
    for (const wchar_t* name : kClasses) {
        WNDCLASSEXW foreign{};
        foreign.cbSize = sizeof foreign;
        foreign.lpfnWndProc = &DefWindowProcW;
        foreign.hInstance = component->Module();
        foreign.lpszClassName = name;
        RegisterClassExW(&foreign); // refused where the component has its own already
    }
    const HMODULE module = component->Module();
    {
        Container container;
        EXPECT_EQ(container.Embed(component->Create()), S_OK);
        EXPECT_NE(container.ControlWindow(), nullptr);
    }
    EXPECT_TRUE(component->CanUnload());
    EXPECT_TRUE(Known(module, L"OrvOutFormat.AddOnControl"));
    UnregisterClassW(L"OrvOutFormat.Dialog", module); // made here; the component opened none
    component.reset();
    CoFreeUnusedLibrariesEx(0, 0);
    ASSERT_EQ(GetModuleHandleW(Component::Path().c_str()), nullptr) << "somebody else keeps the file";
    for (const wchar_t* name : kClasses)
        EXPECT_FALSE(Known(module, name)) << name;
}

} // namespace
} // namespace orv::tests
