#include <gtest/gtest.h>

#include "host/sim/local_service.h"
#include "host/sim/portable_pump.h"
#include "sim_fixture.h"

namespace orv::sim::testing {
namespace {

class LocalServiceTest : public ::testing::Test {
  protected:
    std::shared_ptr<SimDevice> device_ = std::make_shared<SimDevice>(SmallDevice());
    std::shared_ptr<EventLog> events_ = std::make_shared<EventLog>();
    PortablePump pump_;
};

TEST_F(LocalServiceTest, AnswersAtOnce) {
    LocalMibSapService service({device_}, nullptr);
    service.GetEntry(L"/Count");
    EXPECT_TRUE(events_->events.empty());
    service.Connect(34, events_);
    service.SetStringEntry(L"/Name", L"a b");
    service.GetEntry(L"/Name");
    service.GetEntry(L"/Nothing");
    service.Connect(35, events_);
    service.GetEntry(L"/Name");
    EXPECT_EQ(events_->events, (Events{"connected", "answer OK", "answer a b", "error 401", "error 406", "error 406"}));
}

TEST_F(LocalServiceTest, DropsWhatComesTooLate) {
    auto service = std::make_unique<LocalMibSapService>(std::vector{device_}, pump_);
    service->Connect(34, events_);
    service->Disconnect();
    service->Connect(34, events_);
    EXPECT_TRUE(events_->events.empty()) << "an answer waits for its turn";
    while (events_->events.empty())
        pump_.ProcessPending();
    EXPECT_EQ(events_->events, (Events{"connected"})) << "the first connection's answer is gone";
    service->GetEntry(L"/Count");
    service->Disconnect();
    pump_.ProcessPending();
    service->Connect(34, events_);
    pump_.ProcessPending();
    service.reset();
    pump_.ProcessPending();
    EXPECT_EQ(events_->events, (Events{"connected"}));
    EXPECT_EQ(events_.use_count(), 1) << "the sink is given back";
}

TEST_F(LocalServiceTest, SinkMayDisconnectAndDestroyFromAnEvent) {
    struct Destroyer final : device::MibSapEvents {
        std::unique_ptr<LocalMibSapService> service;
        int calls = 0;
        void Connected() override { service->GetEntry(L"/Count"); }
        void Error(std::int32_t) override { ++calls; }
        void ResponseReceived(const std::wstring&) override {
            ++calls;
            service.reset();
        }
    };
    for (const bool atOnce : {true, false}) {
        const auto sink = std::make_shared<Destroyer>();
        sink->service = atOnce ? std::make_unique<LocalMibSapService>(std::vector{device_}, nullptr)
                               : std::make_unique<LocalMibSapService>(std::vector{device_}, pump_);
        sink->service->Connect(34, sink);
        for (int i = 0; i < 10; ++i)
            pump_.ProcessPending();
        EXPECT_EQ(sink->calls, 1);
        EXPECT_EQ(sink->service, nullptr);
    }
}

TEST_F(LocalServiceTest, LossOfTheConnectionIsAnErrorEvent) {
    device_->Faults().dropAfter = 1;
    LocalMibSapService service({device_}, nullptr);
    service.Connect(34, events_);
    service.GetEntry(L"/Count");
    service.GetEntry(L"/Count");
    service.Disconnect();
    service.Connect(34, events_);
    EXPECT_EQ(events_->events, (Events{"connected", "error 504", "error 504", "connected"}));
}

TEST_F(LocalServiceTest, TrafficShowsLinesWithoutPasswords) {
    LocalMibSapService service({device_}, nullptr);
    std::wstring traffic;
    service.SetTraffic([&](std::wstring_view line) { traffic += std::wstring(line) + L"|"; });
    service.Connect(34, events_);
    service.StartSession(L"1", L"VLPX");
    service.StartSession(L"0", L"");
    EXPECT_EQ(traffic, L"> HELLO 1 34|< OK OK|> SESSION 1 ***|< OK OK|> SESSION 0 \\e|< OK OK|");
}

} // namespace
} // namespace orv::sim::testing
