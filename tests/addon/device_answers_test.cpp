// Each request of an interactive save answered as no device should, one request a life.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

#include "tests/addon/faulty_service.h"
#include "tests/addon/whole_life.h"

namespace orv::addon {
namespace {

using test::Misbehaviour;
using test::Session;

/// What the user is told when that request met it; null: nothing.
const wchar_t* Expected(Misbehaviour how, const std::string& victim) {
    const bool set = victim == "SetEntry";
    switch (how) {
    case Misbehaviour::Refuses:
        if (set)
            return L"Couldn't save parameters to MIB!\nMIBSAP Error 310";
        // Another attempt connects; a save that wrote everything is complete however its session ends.
        return victim == "StartSession" ? L"Communication error 310" : nullptr;
    case Misbehaviour::NoAnswerOfUse:
        if (set)
            return L"Couldn't save parameters to MIB!\nMIBSAP Error 309";
        return victim == "EndSession" ? nullptr : L"Communication error 309";
    case Misbehaviour::Lost:
        if (set)
            return L"Couldn't save parameters to MIB!\nMIBSAP Error 504";
        return victim == "StartSession" ? L"Communication error 504" : nullptr;
    case Misbehaviour::OddCode:
        if (set)
            return L"Couldn't save parameters to MIB!\nMIBSAP Error -2147483648";
        return victim == "StartSession" ? L"Communication error -2147483648" : nullptr;
    case Misbehaviour::OutOfTurn:
        // A session is asked for over a connection that is not there yet.
        return victim == "Connect" ? L"Communication error 501" : nullptr;
    case Misbehaviour::Raises:
        return L"AddOnControl.cmdApply_Click\n5: the service is broken";
    default:
        return nullptr;
    }
}

/// A whole life whose one interactive save meets it.
class AnsweredLife {
  public:
    AnsweredLife()
        : session_("tiny.json", {}, 0, {}), life_(session_),
          service_(std::make_shared<test::FaultyService>(session_.bench.service, [this](std::function<void()> task) {
              session_.bench.platform.pump.Post(std::move(task));
          })) {
        session_.bench.host.SetService(service_);
        session_.bench.host.SetConfigurationInteractive(true);
        service_->onSilence = [this] { session_.bench.platform.pump.Post([this] { session_.addOn->Terminate(); }); };
        life_.after = [this](const std::string& step) {
            if (step == "cmdApply press" && !applied_) {
                applied_ = true;
                Applied();
            }
        };
    }
    std::int64_t Requests() {
        life_.Run();
        EXPECT_TRUE(saved_);
        return service_->Count();
    }
    void Run(std::int64_t k, Misbehaviour how) {
        how_ = how;
        service_->Misbehave(k, how);
        life_.Run();
        EXPECT_TRUE(service_->Happened());
        CheckRestored();
        session_.addOn->Terminate();
        EXPECT_TRUE(session_.addOn->Terminated());
        EXPECT_EQ(session_.bench.host.OpenConfigurations(), 0);
    }

  private:
    void Applied() {
        saved_ = !session_.Widget(L"cmdApply").Enabled();
        if (!service_->Happened())
            return;
        const wchar_t* const expected = Expected(how_, service_->Victim());
        const auto& boxes = session_.Boxes();
        const bool told = !boxes.empty() && boxes.back().text == (expected ? expected : L"");
        EXPECT_EQ(told, expected != nullptr)
            << service_->Victim() << ": "
            << (boxes.empty() ? "nothing" : std::string(boxes.back().text.begin(), boxes.back().text.end()));
        EXPECT_EQ(saved_, !expected && how_ != Misbehaviour::Silent) << service_->Victim();
        CheckSame();
        CheckRestored();
    }
    /// What is in the host's configuration is on the device, whatever was answered.
    void CheckSame() {
        for (const sim::ParameterDescription& parameter : session_.bench.device->Store().Contents().parameters)
            for (std::int32_t element = 0; element < parameter.details.elementCount; ++element)
                EXPECT_EQ(session_.bench.host.Store(0, 0)->Get(parameter.number, element),
                          session_.bench.device->Store().Get(parameter.number, element))
                    << parameter.number;
    }
    void CheckRestored() {
        EXPECT_EQ(session_.bench.host.AccessLevel(), 3);
        EXPECT_TRUE(session_.bench.host.ConfigurationInteractive());
        EXPECT_TRUE(session_.container.enabled);
        EXPECT_FALSE(session_.bench.host.Progress().shown);
        EXPECT_EQ(session_.state.cache, nullptr);
        EXPECT_EQ(session_.bench.platform.pump.Depth(), 0);
        EXPECT_FALSE(session_.bench.device->InSession());
        EXPECT_FALSE(session_.addOn->Saving());
    }

    Session session_;
    test::WholeLife life_;
    std::shared_ptr<test::FaultyService> service_;
    Misbehaviour how_ = Misbehaviour::Refuses;
    bool applied_ = false;
    bool saved_ = false;
};

TEST(DeviceAnswers, EachRequestOfASaveMeetsEachMisbehaviour) {
    const std::int64_t requests = AnsweredLife().Requests();
    ASSERT_GT(requests, 30);
    // Unless ORV_EXHAUSTIVE is set: the ends of the session, and of the writes every so-many-th, another each time.
    const std::int64_t stride = std::getenv("ORV_EXHAUSTIVE") ? 1 : 17;
    int lives = 0;
    for (int how = 0; how <= static_cast<int>(Misbehaviour::Raises); ++how)
        for (std::int64_t k = 1; k <= requests; ++k) {
            if (k > 3 && k + 1 < requests && (k + how) % stride != 0)
                continue;
            SCOPED_TRACE(testing::Message() << "misbehaviour " << how << " at request " << k);
            AnsweredLife().Run(k, static_cast<Misbehaviour>(how));
            ++lives;
        }
    std::printf("%lld requests, %d lives\n", static_cast<long long>(requests), lives);
}

} // namespace
} // namespace orv::addon
