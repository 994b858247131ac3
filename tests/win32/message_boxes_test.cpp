#include "platform/win32/message_boxes.h"

#include <thread>

#include <gtest/gtest.h>

#include "fixture.h"
#include "platform/win32/module.h"
#include "platform/win32/system_services.h"

namespace orv::tests {
namespace {

using namespace platform;
using platform::win32::ActivationContext;
using platform::win32::ModalHooks;
using platform::win32::SystemMessageBoxes;

BOOL CALLBACK KeepDialog(HWND window, LPARAM found) {
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    if (std::wstring_view(name) == L"#32770" && IsWindowVisible(window))
        reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
    return TRUE;
}

std::vector<HWND> Dialogs(DWORD thread) {
    std::vector<HWND> found;
    EnumThreadWindows(thread, &KeepDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

/// Does something from another thread once so many boxes are open.
class OnceOpen {
  public:
    OnceOpen(std::size_t count, std::function<void(const std::vector<HWND>&)> action)
        : thread_([ui = GetCurrentThreadId(), count, action = std::move(action)] {
              for (int i = 0; i < 500; ++i) {
                  if (const auto open = Dialogs(ui); open.size() >= count) {
                      Sleep(50);
                      action(open);
                      return;
                  }
                  Sleep(10);
              }
          }) {}
    ~OnceOpen() { thread_.join(); }

  private:
    std::thread thread_;
};

struct BoxesTest : testing::Test {
    ActivationContext context{platform::win32::OwnModule()};
    ModalHooks hooks;
    SystemMessageBoxes boxes{context, hooks};
    MessageBox question{L"Save anyway?", L"Warning", Icon::Warning, Buttons::YesNo, Answer::No};
    MessageBox notice{L"Done", L"Output", Icon::Information, Buttons::Ok, Answer::Ok};
};

TEST_F(BoxesTest, AnswersAndText) {
    std::wstring text(64, L'\0');
    {
        const OnceOpen yes(1, [&](const auto& open) {
            text.resize(static_cast<std::size_t>(GetDlgItemTextW(open[0], 0xFFFF, text.data(), 64)));
            PostMessageW(open[0], WM_COMMAND, IDYES, 0);
        });
        EXPECT_EQ(boxes.Show(question), Answer::Yes);
    }
    EXPECT_EQ(text, L"Save anyway?");
    {
        const OnceOpen no(1, [](const auto& open) { PostMessageW(open[0], WM_COMMAND, IDNO, 0); });
        EXPECT_EQ(boxes.Show(question), Answer::No);
    }
    const OnceOpen ok(1, [](const auto& open) { PostMessageW(open[0], WM_COMMAND, IDOK, 0); });
    EXPECT_EQ(boxes.Show(notice), Answer::Ok);
    EXPECT_EQ(boxes.OpenCount(), 0u);
}

TEST_F(BoxesTest, BracketsTheFrame) {
    std::vector<bool> calls;
    hooks.modal = [&](bool open) { calls.push_back(open); };
    const OnceOpen ok(1, [](const auto& open) { PostMessageW(open[0], WM_COMMAND, IDOK, 0); });
    boxes.Show(notice);
    EXPECT_EQ(calls, (std::vector{true, false}));
}

TEST_F(BoxesTest, CloseAnswersEveryOpenBox) {
    // The second box opens inside the first one's message loop, as out of a host's event.
    platform::win32::SystemPump pump;
    Answer inner = Answer::Yes;
    pump.Post([&] { inner = boxes.Show(notice); });
    const OnceOpen close(2, [&](const auto&) { pump.Post([&] { boxes.Close(); }); });
    EXPECT_EQ(boxes.Show(question), Answer::No);
    EXPECT_EQ(inner, Answer::Ok);
    EXPECT_EQ(boxes.Show(question), Answer::No) << "no box opens any more";
}

TEST_F(BoxesTest, OwnerThatGoesEndsItsBox) {
    win32::OwnedWindow owner(CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 100, 100,
                                             nullptr, nullptr, nullptr, nullptr));
    hooks.owner = [&] { return owner.Get(); };
    platform::win32::SystemPump pump;
    const OnceOpen gone(1, [&](const auto&) { pump.Post([&] { owner.Reset(); }); });
    EXPECT_EQ(boxes.Show(question), Answer::No);
}

TEST(SystemServices, CloseEndsWaitsAndBoxes) {
    win32::SystemServices services({});
    Services view = services.View();
    Answer answer = Answer::Yes;
    view.pump.Post([&] { answer = view.boxes.Show({L"?", L"?", Icon::None, Buttons::YesNo, Answer::Yes}); });
    const OnceOpen close(1, [&](const auto&) { view.pump.Post([&] { services.Close(); }); });
    EXPECT_EQ(view.pump.PumpUntil([] { return false; }), Wait::Closing);
    EXPECT_EQ(answer, Answer::No);
}

} // namespace
} // namespace orv::tests
