#include "host/app/orvhost/player.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <commdlg.h>
#include <stdexcept>

#include "host/app/orvhost/commands.h"
#include "tests/orvhost/fake_container.h"

namespace orv::host {
namespace {

using testing::ElementsAre;

/// A host whose frame is a bare window; commands that are posted to it are noted.
class FakeHost final : public PlayerHost {
  public:
    void Say(const std::wstring& line) override { said.push_back(line); }
    HWND FrameWindow() override { return windows.Frame(); }
    HWND ControlWindow() override { return nullptr; }
    HostPump& Pump() override { return pump; }
    std::wstring HostValue(std::int32_t number, std::int32_t element) override {
        if (number == 0)
            throw std::runtime_error("no such parameter");
        return std::to_wstring(number) + L"/" + std::to_wstring(element);
    }
    std::wstring DeviceValue(std::int32_t, std::int32_t) override { return L"device"; }
    std::int16_t Result() override { return 2; }
    void SaveTo(const std::filesystem::path& file) override { saved = file; }
    void Terminate() override { ++terminated; }
    void Alive() override { ++alive; }

    HostPump pump;
    FakeContainer windows;
    std::vector<std::wstring> said;
    std::filesystem::path saved;
    int terminated = 0;
    int alive = 0;
};

struct PlayerTest : testing::Test {
    FakeHost host;
    bool closed = false;
    std::vector<int> commands;
    std::unique_ptr<Player> player;

    void SetUp() override {
        host.pump.SetFilter([this](MSG& message) {
            closed |= message.message == WM_CLOSE && message.hwnd == host.FrameWindow();
            if (message.message == WM_COMMAND)
                commands.push_back(LOWORD(message.wParam));
            return message.message == WM_CLOSE || message.message == WM_COMMAND;
        });
    }
    /// As the host's own loop does it, until the script ends or the time is over.
    void Play(std::string_view script, int limit = 5) {
        player = std::make_unique<Player>(ParseScript(script), host, std::filesystem::path(), limit);
        EXPECT_TRUE(host.pump.PumpFor(10000, [this] {
            host.pump.ProcessPending();
            player->Handled();
            player->Idle();
            return closed;
        }));
    }
};

TEST_F(PlayerTest, PrintsEveryCommandAndItsOutcome) {
    Play("show\nprint host 6:1\nsave x.json\nterminate\n");
    EXPECT_THAT(host.said, ElementsAre(L"> show", L"ok", L"> print host 6:1", L"= 6/1", L"ok", L"> save x.json", L"ok",
                                       L"> terminate", L"ok"));
    EXPECT_THAT(commands, ElementsAre(kShow));
    EXPECT_EQ(host.saved, L"x.json");
    EXPECT_EQ(host.terminated, 1);
    EXPECT_EQ(player->Status(), 0);
}

TEST_F(PlayerTest, StopsAtTheFirstFailure) {
    Play("print host 0\nterminate\n");
    EXPECT_THAT(host.said, ElementsAre(L"> print host 0", L"failed: no such parameter"));
    EXPECT_EQ(host.terminated, 0);
    EXPECT_EQ(player->Status(), 1);
}

TEST_F(PlayerTest, WhatIsExpectedOtherwiseIsAFailure) {
    Play("expect result 2\nexpect host 6:1 6/1\nexpect device 1 device\n");
    EXPECT_EQ(player->Status(), 0);
    EXPECT_EQ(host.said.back(), L"ok");
    closed = false;
    Play("expect host 6 6/1\nterminate\n");
    EXPECT_EQ(host.said.back(), L"failed: it is \"6/0\", not \"6/1\"");
    EXPECT_EQ(player->Status(), 1);
    EXPECT_EQ(host.terminated, 0);
    for (const char* script : {"inside print result\n", "expect-file x.txt\n"}) {
        closed = false;
        Play(script);
        EXPECT_EQ(player->Status(), 1) << script;
    }
}

TEST_F(PlayerTest, AFileDialogIsGivenItsFile) {
    player = std::make_unique<Player>(ParseScript("expect-file some name.txt\nprint result\n"), host,
                                      std::filesystem::path(), 5);
    player->Idle();
    std::wstring path(MAX_PATH, L'\0');
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = MAX_PATH;
    dialog.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR;
    EXPECT_TRUE(GetSaveFileNameW(&dialog));
    path.resize(wcslen(path.c_str()));
    EXPECT_TRUE(path.ends_with(L"\\some name.txt")) << path.size();
    EXPECT_EQ(player->Status(), 0);
}

TEST_F(PlayerTest, AControlThatIsNotThereIsAFailure) {
    Play("press cmdApply\n");
    EXPECT_EQ(player->Status(), 1);
    EXPECT_EQ(host.said.back(), L"failed: the add-on is not shown");
}

TEST_F(PlayerTest, ABoxThatNeverCameIsAFailure) {
    Play("expect-box Save anyway? answer yes\nprint result\n");
    EXPECT_EQ(host.said.back(), L"failed: the box expected in line 1 never came");
    EXPECT_EQ(player->Status(), 1);
}

TEST_F(PlayerTest, MeanwhileNeedsAWait) {
    Play("meanwhile print result\n");
    EXPECT_EQ(host.said.back(), L"failed: nothing is waiting");
}

TEST_F(PlayerTest, MeanwhileRunsInsideAWaitAndBeforeTheBoxIsAnswered) {
    player =
        std::make_unique<Player>(ParseScript("expect-box Really answer yes\nmeanwhile print result\nprint device 1\n"),
                                 host, std::filesystem::path(), 5);
    player->Idle(); // what is expected
    EXPECT_EQ(MessageBoxW(nullptr, L"Really?", L"Question", MB_YESNO), IDYES);
    EXPECT_THAT(host.said, ElementsAre(L"> expect-box Really answer yes", L"box: [Question] Really?",
                                       L"> meanwhile print result", L"= 2", L"answer: yes"));
    EXPECT_GT(host.alive, 0);
}

TEST_F(PlayerTest, AWaitWithoutAnEndIsEndedByTheLimit) {
    player = std::make_unique<Player>(ParseScript("show\nquit\n"), host, std::filesystem::path(), 1);
    player->Idle();
    // Somebody else's loop: the player is not told that the host has become idle.
    EXPECT_TRUE(host.pump.PumpFor(5000, [this] { return closed; }));
    EXPECT_EQ(host.said.back(), L"failed: time limit reached");
    EXPECT_EQ(player->Status(), 1);
}

} // namespace
} // namespace orv::host
