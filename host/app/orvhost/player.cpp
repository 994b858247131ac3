#include "host/app/orvhost/player.h"

#include "host/app/orvhost/control_driver.h"
#include "host/app/orvhost/transcript.h"
#include "host/sim/bench_host.h"
#include "host/sim/utf8.h"
#include "text/excerpt.h"

namespace orv::host {
namespace {

constexpr UINT kTick = 50;
// Ticks without the host's own loop and without a sign of life: somebody else's loop is running, and waits.
constexpr int kStalled = 20;

} // namespace

Player* Player::instance_ = nullptr;

Player::Player(std::vector<ScriptCommand> commands, PlayerHost& host, std::filesystem::path shots, int timeLimitSeconds)
    : host_(host), commands_(std::move(commands)), shots_(std::move(shots)),
      limit_(static_cast<ULONGLONG>(timeLimitSeconds) * 1000) {
    instance_ = this;
    boxes_.say = [this](const std::wstring& line) { host_.Say(line); };
    boxes_.fail = [this](const std::string& reason) { Fail(reason); };
    timer_ = SetTimer(nullptr, 0, kTick, &Player::OnTimer);
}

Player::~Player() {
    KillTimer(nullptr, timer_);
    instance_ = nullptr;
}

void CALLBACK Player::OnTimer(HWND, UINT, UINT_PTR, DWORD) {
    if (instance_ == nullptr)
        return;
    try {
        instance_->Tick();
    } catch (const std::exception& failure) {
        instance_->Fail(failure.what());
    }
}

bool Player::NextIsMeanwhile() const {
    return !ended_ && next_ < commands_.size() && commands_[next_].meanwhile;
}

bool Player::NextIsInside() const {
    return !ended_ && next_ < commands_.size() && commands_[next_].inside;
}

void Player::Tick() {
    stalledTicks_ = handled_ == handledAtTick_ ? stalledTicks_ + 1 : 0;
    handledAtTick_ = handled_;
    // Not after the end: a component that does not let go then is the watchdog's.
    if (!ended_)
        host_.Alive();
    if (busy_ && !inKey_)
        return;
    boxes_.AnswerFileDialog();
    const bool boxOpen = boxes_.Look();
    if (NextIsMeanwhile() && (boxOpen || stalledTicks_ >= kStalled))
        RunNow();
    else if (boxOpen)
        boxes_.AnswerAll();
    else if (NextIsInside() && OpenDialog() != nullptr)
        RunNow();
    if (!ended_ && GetTickCount64() - begun_ > limit_)
        Fail("time limit reached");
}

void Player::Idle() {
    if (ended_ || busy_)
        return;
    Finish();
    if (next_ == commands_.size()) {
        if (boxes_.FilesLeft())
            return Fail("the file dialog expected never came");
        if (boxes_.ExpectationsLeft())
            return Fail("the box expected in line " + std::to_string(boxes_.NextExpected().line) + " never came");
        ended_ = true;
        PostMessageW(host_.FrameWindow(), WM_CLOSE, 0, 0);
        return;
    }
    if (NextIsMeanwhile()) {
        Begin();
        return Fail("nothing is waiting");
    }
    if (NextIsInside()) {
        Begin();
        return Fail("no dialog is open");
    }
    RunNow();
}

void Player::Begin() {
    const ScriptCommand& command = commands_[next_++];
    host_.Say(L"> " + command.source);
    begun_ = GetTickCount64();
}

void Player::RunNow() {
    Begin();
    pending_ = true;
    const bool outer = std::exchange(busy_, true);
    const bool inKey = std::exchange(inKey_, false);
    if (inKey) {
        // A key opened what this runs in; it is let go by now.
        BYTE up[256] = {};
        SetKeyboardState(up);
    }
    try {
        Execute(commands_[next_ - 1]);
    } catch (const Error& failure) {
        Fail(sim::ToUtf8(text::Excerpt(failure.Description())));
    } catch (const std::exception& failure) {
        Fail(failure.what());
    }
    busy_ = outer;
    inKey_ = inKey;
    stalledTicks_ = 0;
}

void Player::Finish() {
    if (std::exchange(pending_, false))
        host_.Say(L"ok");
}

void Player::Fail(const std::string& reason) {
    if (std::exchange(failed_, true))
        return;
    const int line = next_ > 0 ? commands_[next_ - 1].line : 0;
    host_.Say(L"failed: " + sim::FromUtf8(reason));
    Transcript::Complain(ScriptError(line, reason).what());
    pending_ = false;
    ended_ = true;
    PostMessageW(host_.FrameWindow(), WM_CLOSE, 0, 0);
}

} // namespace orv::host
