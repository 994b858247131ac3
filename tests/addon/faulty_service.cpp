#include "tests/addon/faulty_service.h"

#include <limits>
#include <utility>

#include "host/sim/sim_device.h"
#include "text/error.h"

namespace orv::test {
namespace {

constexpr std::int32_t kRefused = 310;
constexpr std::int32_t kTryAgain = 309;
constexpr std::size_t kHuge = 4'000'000;

} // namespace

class FaultyService::Relay final : public device::MibSapEvents {
  public:
    Relay(std::shared_ptr<device::MibSapEvents> to, Post post) : to_(std::move(to)), post_(std::move(post)) {}
    void Connected() override {
        const bool again = std::exchange(twice, false);
        to_->Connected();
        if (again)
            post_([to = to_] { to->Connected(); });
    }
    void Error(std::int32_t code) override { to_->Error(code); }
    void ResponseReceived(const std::wstring& text) override {
        const std::wstring answer = replaced ? std::exchange(replaced, nullptr)() : text;
        const bool again = std::exchange(twice, false);
        to_->ResponseReceived(answer);
        if (again)
            post_([to = to_, answer] { to->ResponseReceived(answer); });
    }

    bool twice = false;
    std::function<std::wstring()> replaced;

  private:
    std::shared_ptr<device::MibSapEvents> to_;
    Post post_;
};

void FaultyService::Fail(std::int32_t code) {
    post_([relay = relay_, code] { relay->Error(code); });
}

void FaultyService::Request(const char* name, const std::function<void()>& send) {
    ++count_;
    if (count_ == at_) {
        victim_ = name;
        Victimise(send);
    } else if (useless_) {
        Fail(kTryAgain);
    } else {
        send();
    }
}

void FaultyService::Victimise(const std::function<void()>& send) {
    switch (how_) {
    case Misbehaviour::Refuses:
        return Fail(kRefused);
    case Misbehaviour::NoAnswerOfUse:
        useless_ = true;
        return Fail(kTryAgain);
    case Misbehaviour::Silent:
        if (onSilence)
            onSilence();
        return;
    case Misbehaviour::Lost:
        to_->Disconnect();
        return Fail(sim::device_code::kConnectionLost);
    case Misbehaviour::Late:
        Fail(kTryAgain);
        return send();
    case Misbehaviour::Twice:
        relay_->twice = true;
        return send();
    case Misbehaviour::OutOfTurn:
        post_([relay = relay_] { relay->Connected(); });
        return send();
    case Misbehaviour::Huge:
        relay_->replaced = [] { return std::wstring(kHuge, L'x'); };
        return send();
    case Misbehaviour::Malformed:
        relay_->replaced = [] { return std::wstring(L"\0\xD800\r\n<$", 6); };
        return send();
    case Misbehaviour::OddCode:
        return Fail(std::numeric_limits<std::int32_t>::min());
    case Misbehaviour::Raises:
        throw Error(error_number::kInvalidArgument, L"the service is broken");
    }
}

void FaultyService::Connect(std::int32_t address, std::shared_ptr<device::MibSapEvents> events) {
    relay_ = std::make_shared<Relay>(std::move(events), post_);
    Request("Connect", [&] { to_->Connect(address, relay_); });
}

void FaultyService::Disconnect() {
    to_->Disconnect();
}

void FaultyService::StartSession(const std::wstring& level, const std::wstring& password) {
    Request("StartSession", [&] { to_->StartSession(level, password); });
}

void FaultyService::EndSession(const std::wstring& mode) {
    Request("EndSession", [&] { to_->EndSession(mode); });
}

void FaultyService::GetEntry(const std::wstring& entry) {
    Request("GetEntry", [&] { to_->GetEntry(entry); });
}

void FaultyService::SetNumericEntry(const std::wstring& entry, const std::wstring& decimal) {
    Request("SetEntry", [&] { to_->SetNumericEntry(entry, decimal); });
}

void FaultyService::SetStringEntry(const std::wstring& entry, const std::wstring& text) {
    Request("SetEntry", [&] { to_->SetStringEntry(entry, text); });
}

} // namespace orv::test
