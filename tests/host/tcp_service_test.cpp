#include <chrono>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/sim/ask_device.h"
#include "host/sim/device_server.h"
#include "host/sim/portable_pump.h"
#include "host/sim/tcp_service.h"
#include "sim_fixture.h"

namespace orv::sim::testing {
namespace {

using namespace std::chrono_literals;
using platform::Wait;

/// A device behind a port, served by a thread.
class Served {
  public:
    explicit Served(FaultPlan faults = {})
        : server_(std::make_shared<SimDevice>(SmallDevice(), std::move(faults)), 0) {}
    ~Served() {
        server_.Stop();
        thread_.join();
    }
    std::uint16_t Port() const { return port_; }

  private:
    DeviceServer server_;
    std::uint16_t port_ = server_.Port();
    std::thread thread_{[this] { server_.Run(); }};
};

class TcpServiceTest : public ::testing::Test {
  protected:
    TcpServiceTest() { pump_.SetLimit(20s); }

    std::unique_ptr<TcpMibSapService> Service(std::uint16_t port) {
        TcpMibSapService::Endpoint endpoint;
        endpoint.port = port;
        return std::make_unique<TcpMibSapService>(pump_, endpoint);
    }
    /// Waits for one event more than there are.
    std::string Next() {
        const std::size_t before = events_->events.size();
        if (pump_.PumpUntil([&] { return events_->events.size() > before; }) != Wait::Satisfied)
            return "given up";
        return events_->events.back();
    }

    PortablePump pump_;
    std::shared_ptr<EventLog> events_ = std::make_shared<EventLog>();
};

TEST_F(TcpServiceTest, SetsAndGetsThroughTheSocket) {
    const Served served;
    const auto service = Service(served.Port());
    service->Connect(34, events_);
    EXPECT_EQ(Next(), "connected");
    service->StartSession(L"3", L"QMVRTK4826");
    EXPECT_EQ(Next(), "answer OK");
    service->SetStringEntry(L"/Raw[1]", std::wstring(L"a\r\n \x1d\u20AC\0z", 8));
    EXPECT_EQ(Next(), "answer OK");
    service->GetEntry(L"/Raw[1]");
    EXPECT_EQ(Next(), std::string("answer a\r\n \x1d\xE2\x82\xAC\0z", 17));
    service->Disconnect();
    EXPECT_EQ(AskDevice("127.0.0.1", served.Port(), {{14, 1}, {11, 0}}),
              (std::vector<std::string>{"610D0A201D80007A", "70000"}));
    EXPECT_THROW(AskDevice("127.0.0.1", served.Port(), {{99, 0}}), AskError);
}

TEST_F(TcpServiceTest, NobodyListening) {
    std::uint16_t port = 0;
    {
        const Served gone;
        port = gone.Port();
    }
    const auto service = Service(port);
    service->Connect(34, events_);
    EXPECT_EQ(Next(), "error 502");
    service->GetEntry(L"/Count");
    EXPECT_EQ(events_->events.back(), "error 502") << "a request without connection is answered, too";
    EXPECT_THROW(AskDevice("127.0.0.1", port, {{11, 0}}), AskError);
}

TEST_F(TcpServiceTest, ReconnectsAtOnceTimeAndAgain) {
    const Served served;
    const auto service = Service(served.Port());
    for (int i = 0; i < 50; ++i) {
        service->Connect(34, events_);
        ASSERT_EQ(Next(), "connected") << i;
        service->GetEntry(L"/Count");
        ASSERT_EQ(Next(), "answer 70000") << i;
        service->Disconnect();
    }
}

TEST_F(TcpServiceTest, SecondClientIsSentAway) {
    const Served served;
    const auto first = Service(served.Port());
    first->Connect(34, events_);
    ASSERT_EQ(Next(), "connected");
    const auto second = Service(served.Port());
    second->Connect(34, events_);
    EXPECT_EQ(Next(), "error 407");
    first->GetEntry(L"/Count");
    EXPECT_EQ(Next(), "answer 70000");
}

TEST_F(TcpServiceTest, ConnectionLostInAWaitAndWhileIdle) {
    FaultPlan plan;
    plan.dropAfter = 2;
    const Served served(plan);
    const auto service = Service(served.Port());
    service->Connect(34, events_);
    ASSERT_EQ(Next(), "connected");
    service->GetEntry(L"/Count");
    ASSERT_EQ(Next(), "answer 70000");
    service->GetEntry(L"/Count");
    EXPECT_EQ(Next(), "error 504");
    service->Connect(34, events_);
    EXPECT_EQ(Next(), "connected") << "the device survives";
}

TEST_F(TcpServiceTest, ServerGoneWhileIdleShowsAtTheNextRequest) {
    auto served = std::make_unique<Served>();
    const auto service = Service(served->Port());
    service->Connect(34, events_);
    ASSERT_EQ(Next(), "connected");
    served.reset();
    // The news of the loss comes by itself and raises no event.
    pump_.PostAfter(100ms, [&] { service->GetEntry(L"/Count"); });
    EXPECT_EQ(Next(), "error 504");
    EXPECT_EQ(events_->events.size(), 2U);
}

TEST_F(TcpServiceTest, SilentDeviceKeepsTheWaitUntilClose) {
    FaultPlan plan;
    plan.silentAfter = 1;
    const Served served(plan);
    auto service = Service(served.Port());
    service->Connect(34, events_);
    ASSERT_EQ(Next(), "connected");
    service->GetEntry(L"/Count");
    pump_.PostAfter(50ms, [this] { pump_.Close(); });
    EXPECT_EQ(Next(), "given up");
    const auto start = std::chrono::steady_clock::now();
    service->Disconnect();
    service.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2s);
    EXPECT_EQ(events_.use_count(), 1) << "the sink is given back";
}

TEST_F(TcpServiceTest, LateAnswersAreDropped) {
    FaultPlan plan;
    plan.delay = 60ms;
    const Served served(plan);
    auto service = Service(served.Port());
    service->Connect(34, events_);
    ASSERT_EQ(Next(), "connected");
    service->GetEntry(L"/Count");
    service->Disconnect();
    service->Connect(34, events_);
    EXPECT_EQ(Next(), "connected");
    service->GetEntry(L"/Name");
    EXPECT_EQ(Next(), "answer one two");
    // Answered and posted, but not yet delivered when the service goes.
    service->GetEntry(L"/Count");
    std::this_thread::sleep_for(200ms);
    service.reset();
    pump_.ProcessPending();
    EXPECT_EQ(events_->events.size(), 3U);
}

TEST_F(TcpServiceTest, OtherDevicesHaveOtherPorts) {
    const Served served;
    TcpMibSapService::Endpoint endpoint;
    endpoint.port = 1;
    endpoint.ports[34] = served.Port();
    TcpMibSapService service(pump_, endpoint);
    service.Connect(34, events_);
    EXPECT_EQ(Next(), "connected");
    endpoint.host = "not an address";
    TcpMibSapService nowhere(pump_, endpoint);
    nowhere.Connect(34, events_);
    EXPECT_EQ(Next(), "error 502");
}

TEST(DeviceServer, SaysThatAPortIsTaken) {
    const Served served;
    try {
        DeviceServer second(std::make_shared<SimDevice>(SmallDevice()), served.Port());
        FAIL() << "two servers on one port";
    } catch (const PortError& error) {
        EXPECT_THAT(error.what(), ::testing::HasSubstr(std::to_string(served.Port())));
    }
}

} // namespace
} // namespace orv::sim::testing
