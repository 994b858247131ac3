#include "fixture.h"

#include "controls/check_list.h"
#include "controls/simple_widgets.h"
#include "controls/win32/dialog_window.h"

namespace orv::tests {
namespace {

using namespace controls;
using controls::win32::DialogWindow;

std::wstring TitleOf(HWND window) {
    std::wstring text(128, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), 128)));
    return text;
}

RECT PlaceOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

struct DialogWindowTest : Windows {
    CheckBox& field = form.Root().Add<CheckBox>(L"chkOptional");
    Dialog dialog{boxes, pump};
    CheckList& list = dialog.Form().Root().Add<CheckList>(L"lvw");
    Button& ok = dialog.Form().Root().Add<Button>(L"cmdOK");
    Button& cancel = dialog.Form().Root().Add<Button>(L"cmdCancel");
    std::vector<std::wstring> events;
    platform::win32::ModalHooks modal{[this] { return owner; },
                                      [this](bool open) { events.push_back(open ? L"modal" : L"modeless"); }};
    HWND owner = container.Get();

    DialogWindowTest() {
        field.SetBounds({10, 10, 100, 24});
        dialog.SetTitle(L"Transports of format 2");
        list.SetRows({{L"SerMain", 1}, {L"SerAux", 2}});
        for (Button* button : {&ok, &cancel})
            button->onClick = [this, button] {
                events.push_back(button->Name());
                dialog.Close();
            };
        dialog.SetDefaultButton(&ok);
        dialog.SetCancelButton(&cancel);
        dialog.SetContent(Column(Boxed(Cell(list, Grow::Both), Row(Boxed(Cell(ok), Cell(cancel))))));
        Show();
        form.SetFocus(field);
    }
    /// Runs the dialog; `act` is what the user does while it is open.
    void Run(std::function<void(HWND)> act) {
        DialogWindow window(dialog, context, modal, pump);
        pump.Post([&window, act = std::move(act)] { act(window.Handle()); });
        window.Run();
        EXPECT_EQ(window.Handle(), nullptr);
    }
    static void Key(WPARAM key) { PostMessageW(GetFocus(), WM_KEYDOWN, key, 1); }
};

TEST_F(DialogWindowTest, OpensOverItsOwnerAndGivesEverythingBack) {
    Run([this](HWND window) {
        EXPECT_EQ(TitleOf(window), L"Transports of format 2");
        EXPECT_EQ(GetWindow(window, GW_OWNER), owner);
        EXPECT_FALSE(IsWindowEnabled(owner));
        EXPECT_TRUE(IsWindowVisible(window));
        EXPECT_EQ(GetActiveWindow(), window);
        EXPECT_TRUE(list.Focused());
        EXPECT_EQ(GetParent(GetParent(GetFocus())), window) << "the list stands in the form's root";
        const RECT over = PlaceOf(owner);
        const RECT place = PlaceOf(window);
        EXPECT_NEAR((place.left + place.right) / 2, (over.left + over.right) / 2, 1);
        EXPECT_NEAR((place.top + place.bottom) / 2, (over.top + over.bottom) / 2, 1);
        SetWindowPos(window, nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER);
        EXPECT_GE(list.Bounds().width, 100) << "no smaller than what is in it";
        Key(VK_RETURN);
    });
    EXPECT_EQ(events, (std::vector<std::wstring>{L"modal", L"cmdOK", L"modeless"}));
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(GetFocus(), WindowOf(L"chkOptional"));
    EXPECT_TRUE(field.Focused());
}

TEST_F(DialogWindowTest, KeysAndTheCloseButton) {
    struct Case {
        const char* what;
        std::function<void(HWND)> act;
        std::vector<std::wstring> pressed;
    };
    for (const Case& c : {
             Case{"Escape cancels", [](HWND) { Key(VK_ESCAPE); }, {L"cmdCancel"}},
             Case{"so does the close button",
                  [](HWND window) { PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0); },
                  {L"cmdCancel"}},
             Case{"Tab goes round",
                  [this](HWND) {
                      for (int i = 0; i < 3; ++i)
                          Key(VK_TAB);
                      pump.Post([this] {
                          EXPECT_TRUE(list.Focused());
                          Key(VK_TAB);
                          Key(VK_TAB);
                          Key(VK_RETURN);
                      });
                  },
                  {L"cmdCancel"}},
         }) {
        SCOPED_TRACE(c.what);
        events.clear();
        dialog.Form().SetFocus(list);
        Run(c.act);
        EXPECT_EQ(std::vector(events.begin() + 1, events.end() - 1), c.pressed);
    }
}

TEST_F(DialogWindowTest, StaysOnTheScreen) {
    for (const POINT& at : {POINT{-700, -500}, POINT{GetSystemMetrics(SM_CXSCREEN) - 60, 900}}) {
        SetWindowPos(owner, nullptr, at.x, at.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        Run([](HWND window) {
            RECT work{};
            SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
            const RECT place = PlaceOf(window);
            EXPECT_TRUE(place.left >= work.left && place.top >= work.top && place.right <= work.right &&
                        place.bottom <= work.bottom)
                << place.left << ' ' << place.top;
            Key(VK_ESCAPE);
        });
    }
}

TEST_F(DialogWindowTest, ClosingTheComponentAbandonsTheWait) {
    HWND shown = nullptr;
    EXPECT_THROW(Run([&](HWND window) {
                     shown = window;
                     pump.Close();
                 }),
                 platform::WaitAbandoned);
    EXPECT_FALSE(IsWindow(shown));
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(events, (std::vector<std::wstring>{L"modal", L"modeless"})) << "nobody pressed anything";
    events.clear();
    EXPECT_THROW(Run([](HWND) { FAIL() << "opened after the end"; }), platform::WaitAbandoned);
    EXPECT_EQ(events, std::vector<std::wstring>{});
}

TEST_F(DialogWindowTest, GoesWithItsOwner) {
    const platform::win32::OwnedWindow other(CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                                             300, 200, nullptr, nullptr, nullptr, nullptr));
    owner = other.Get();
    Run([this](HWND) { DestroyWindow(owner); });
    EXPECT_TRUE(dialog.Closed());
    EXPECT_EQ(events, (std::vector<std::wstring>{L"modal", L"modeless"}));
}

TEST_F(DialogWindowTest, OpenedManyTimesItLeavesNothingBehind) {
    const auto count = [](DWORD kind) { return GetGuiResources(GetCurrentProcess(), kind); };
    const auto once = [this] { Run([](HWND) { Key(VK_ESCAPE); }); };
    for (int i = 0; i < 5; ++i)
        once();
    const DWORD drawing = count(GR_GDIOBJECTS);
    const DWORD windows = count(GR_USEROBJECTS);
    for (int i = 0; i < 30; ++i)
        once();
    EXPECT_LE(count(GR_GDIOBJECTS), drawing + 3);
    EXPECT_LE(count(GR_USEROBJECTS), windows + 3);
}

} // namespace
} // namespace orv::tests
