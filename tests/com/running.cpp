#include "tests/com/running.h"

namespace orv::tests {
namespace {

BoxAnswers* current = nullptr;

BOOL CALLBACK FindBox(HWND window, LPARAM found) {
    wchar_t name[16] = {};
    GetClassNameW(window, name, ARRAYSIZE(name));
    if (wcscmp(name, L"#32770") != 0 || !IsWindowVisible(window))
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

/// A master and its slaves; read once, which takes longer than most tests.
const sim::SystemDescription& Cluster() {
    static const sim::SystemDescription read = sim::LoadDescription(ORV_SOURCE_DIR "/samples/tunnel.json");
    return read;
}

} // namespace

BoxAnswers::BoxAnswers(int command) : command_(command), timer_(SetTimer(nullptr, 0, 20, &BoxAnswers::Tick)) {
    current = this;
}

BoxAnswers::~BoxAnswers() {
    KillTimer(nullptr, timer_);
    current = nullptr;
}

void CALLBACK BoxAnswers::Tick(HWND, UINT, UINT_PTR, DWORD) {
    if (current)
        current->Look();
}

void BoxAnswers::Look() {
    HWND box = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &FindBox, reinterpret_cast<LPARAM>(&box));
    if (!box || box == seen_)
        return;
    seen_ = box;
    wchar_t text[512] = {};
    GetDlgItemTextW(box, 0xFFFF, text, ARRAYSIZE(text));
    texts.push_back(text);
    if (const auto run = std::exchange(meanwhile, nullptr))
        run();
    if (!onlyWatch)
        PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(command_), 0);
}

bool Within(const std::function<bool()>& done, DWORD milliseconds) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (!done()) {
        if (GetTickCount64() > end)
            return false;
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        MsgWaitForMultipleObjectsEx(0, nullptr, 20, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
    return true;
}

Running::Running() : bench(std::make_shared<sim::BenchHost>(Cluster())), classes(bench) {}

Running::~Running() {
    const BoxAnswers answers(IDOK);
    container.reset();
    EXPECT_TRUE(Within([this] { return component.CanUnload(); })) << "objects of the component are left";
}

void Running::Start(Manners manners, std::int16_t device) {
    container = std::make_unique<Container>(manners);
    const ComPtr<IUnknown> control = component.Create();
    const auto addOn = Query<IAddOn>(control.Get());
    const auto application = host::Make<host::ApplicationFace>(bench->Application());
    ASSERT_EQ(addOn->Register(application.Get()), S_OK);
    ASSERT_EQ(addOn->put_CurrentClusterIndex(bench->Contents().devices.front().cluster), S_OK);
    ASSERT_EQ(addOn->put_CurrentDeviceIndex(device), S_OK);
    ASSERT_EQ(Query<IAddOnGUI>(control.Get())->Enable(), S_OK);
    ASSERT_EQ(container->Embed(control), S_OK);
    ASSERT_EQ(container->Verb(OLEIVERB_SHOW), S_OK);
}

int Running::Result() const {
    SHORT result = 0;
    EXPECT_EQ(AddOn()->get_GetResult(&result), S_OK);
    return result;
}

} // namespace orv::tests
