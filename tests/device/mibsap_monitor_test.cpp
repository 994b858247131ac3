#include "device/mibsap_monitor.h"

#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/bench.h"
#include "tests/support/scripted_service.h"

namespace orv::device {
namespace {

using testing::ElementsAre;

class MonitorTest : public testing::Test {
  protected:
    MonitorTest() {
        bench.Open(3);
        bench.state.mibSap = service;
    }

    void Answer(std::deque<int> codes) {
        service->codes = std::move(codes);
        service->requests.clear();
        bench.platform.debug.lines.clear();
    }

    test::Bench bench{"tiny.json"};
    std::shared_ptr<test::ScriptedService> service = std::make_shared<test::ScriptedService>();
    COrvMIBSAPMonitor monitor{bench.state, Target{0, 0, 3}};
    std::vector<std::wstring>& log = bench.platform.debug.lines;
};

TEST_F(MonitorTest, BeginsWithItsDefaults) {
    EXPECT_EQ(monitor.Password(), L"TRAVEN");
    EXPECT_EQ(monitor.LastError(), 0);
    EXPECT_EQ(monitor.State(), COrvMIBSAPMonitor::Status::Idle);
}

TEST_F(MonitorTest, ConnectsWithinFiveAttemptsWhateverTheCode) {
    Answer({500, 0});
    EXPECT_TRUE(monitor.Connect());
    EXPECT_THAT(log, ElementsAre(L"MIBSAP.Connect", L"(Receive) MIBSAP ERROR 500", L"MIBSAP.Connect: Retry #1"));
    EXPECT_EQ(monitor.LastError(), 200);
    Answer({1, 2, 3, 4, 5, 0});
    EXPECT_FALSE(monitor.Connect());
    EXPECT_EQ(service->requests.size(), 5U);
    EXPECT_EQ(log.back(), L"MIBSAP.Connect: Retry #5");
    EXPECT_EQ(monitor.LastError(), 5);
}

TEST_F(MonitorTest, RetriesRequestsOnTheTransientCodesOnly) {
    const struct {
        const char* what;
        std::deque<int> answers;
        Value value;
        bool good;
        std::size_t requests;
        std::wstring lastLine;
    } cases[] = {
        {"309 four times", {309, 309, 309, 309, 0}, std::int16_t{7}, true, 5, L"(Receive) MIBSAP Response OK"},
        {"310 once", {310}, std::int16_t{7}, false, 1, L"Error 310 in SetEntry - E=7"},
        {"308 six times", {308, 308, 308, 308, 308, 308, 0}, Bytes{65}, false, 6, L"SetEntry failed (308). Retry:6"},
        {"308 and 309 mixed", {308, 309, 0}, std::int32_t{1}, true, 3, L"(Receive) MIBSAP Response OK"},
        {"empty text refused with 308", {308}, Bytes{}, true, 1, L"SetEntry failed (308). Retry:0"},
        {"empty text after 309, then 308", {309, 308}, std::wstring(), true, 2, L"SetEntry failed (308). Retry:1"},
        {"empty text refused with 309",
         {309, 309, 309, 309, 309, 309},
         Bytes{},
         false,
         6,
         L"SetEntry failed (309). Retry:6"},
        {"empty text refused for good", {310}, Bytes{}, false, 1, L"Error 310 in SetEntry - E="},
        {"a type that cannot be sent", {}, Value(), false, 0, L"Error 13 in SetEntry - E="},
    };
    for (const auto& c : cases) {
        monitor.Connect();
        Answer(c.answers);
        EXPECT_EQ(monitor.SetEntry(L"E", c.value), c.good) << c.what;
        EXPECT_EQ(service->requests.size(), c.requests) << c.what;
        EXPECT_EQ(log.back(), c.lastLine) << c.what;
        EXPECT_EQ(std::count_if(log.begin(), log.end(), [](auto& line) { return line.starts_with(L"(Send)"); }), 1)
            << c.what;
    }
}

TEST_F(MonitorTest, SendsNumbersAsDecimalAndBytesAsText) {
    monitor.Connect();
    Answer({});
    monitor.SetEntry(L"A", std::int16_t{-5});
    monitor.SetEntry(L"B", std::uint8_t{200});
    monitor.SetEntry(L"C", std::int32_t{70000});
    monitor.SetEntry(L"D", Bytes{2, 0x80});
    monitor.SetEntry(L"E", std::wstring(L"x"));
    EXPECT_THAT(service->requests,
                ElementsAre(L"number A=-5", L"number B=200", L"number C=70000", L"string D=\x02\x20AC", L"string E=x"));
    EXPECT_EQ(log[6], L"(Send) MIBSAP Set D = <STX><$80>");
}

TEST_F(MonitorTest, StartsNoSessionAtLevelZeroAndNeverLogsAPassword) {
    COrvMIBSAPMonitor guest(bench.state, Target{0, 0, 0});
    guest.Connect();
    Answer({});
    EXPECT_TRUE(guest.StartSession());
    EXPECT_TRUE(service->requests.empty());
    monitor.Password(L"secret");
    monitor.Connect();
    Answer({309, 0, 310});
    EXPECT_TRUE(monitor.StartSession());
    EXPECT_FALSE(monitor.EndSession(L"P"));
    EXPECT_THAT(service->requests, ElementsAre(L"start 3 secret", L"start 3 secret", L"end P"));
    EXPECT_EQ(log.back(), L"310:Error in EndSession");
    for (const std::wstring& line : log)
        EXPECT_EQ(line.find(L"secret"), std::wstring::npos) << "a password in the log";
}

TEST_F(MonitorTest, DisconnectsOnlyWhatIsConnected) {
    Answer({});
    EXPECT_FALSE(monitor.Disconnect());
    monitor.Connect();
    EXPECT_TRUE(monitor.Disconnect());
    EXPECT_FALSE(monitor.Disconnect());
    EXPECT_EQ(std::count(service->requests.begin(), service->requests.end(), L"disconnect"), 1);
    EXPECT_EQ(std::count(log.begin(), log.end(), L"MIBSAP Disconnect"), 3);
    EXPECT_EQ(monitor.State(), COrvMIBSAPMonitor::Status::Idle);
}

TEST_F(MonitorTest, WithoutAServiceThereIsNothingToConnectTo) {
    bench.state.mibSap = nullptr;
    for (const std::function<void()>& call :
         std::initializer_list<std::function<void()>>{[&] { monitor.Connect(); }, [&] { monitor.GetData(L"E"); },
                                                      [&] { monitor.SetData(L"E", std::int16_t{1}); }})
        EXPECT_THROW(call(), Error);
    EXPECT_FALSE(monitor.Disconnect());
}

TEST_F(MonitorTest, ReadsAndWritesOneEntryInATransactionOfItsOwn) {
    Answer({});
    EXPECT_EQ(monitor.GetData(L"E"), Value(std::wstring(L"42")));
    EXPECT_THAT(service->requests, ElementsAre(L"connect 0", L"start 3 TRAVEN", L"get E", L"disconnect"));
    Answer({});
    EXPECT_TRUE(monitor.SetData(L"E", std::int16_t{1}));
    EXPECT_THAT(service->requests,
                ElementsAre(L"connect 0", L"start 3 TRAVEN", L"number E=1", L"end V", L"disconnect"));
}

TEST_F(MonitorTest, FailedTransactionsDisconnectAndLeaveTheTransportError) {
    const struct {
        std::deque<int> answers;
        std::int32_t transport;
        std::wstring lastRequest;
    } sets[] = {
        {{1, 1, 1, 1, 77}, 77, L"connect 0"},
        {{0, 310}, 310, L"disconnect"},
        {{0, 0, 311, 0}, 0, L"disconnect"},
        {{0, 0, 0, 312}, 312, L"disconnect"},
    };
    for (const auto& c : sets) {
        bench.state.common->lastTransportError = 0;
        Answer(c.answers);
        EXPECT_FALSE(monitor.SetData(L"E", std::int16_t{1}));
        EXPECT_EQ(bench.state.common->lastTransportError, c.transport);
        EXPECT_EQ(service->requests.back(), c.lastRequest);
    }
    for (const std::deque<int>& answers : {std::deque{1, 1, 1, 1, 1}, {0, 310}, {0, 0, 310}}) {
        Answer(answers);
        EXPECT_EQ(monitor.GetData(L"E"), std::nullopt);
    }
}

TEST_F(MonitorTest, ClosingWakesAWaitAndLateAnswersFallOnTheFloor) {
    std::vector<std::function<void()>> late;
    service->post = [&](std::function<void()> answer) { late.push_back(std::move(answer)); };
    {
        COrvMIBSAPMonitor waiting(bench.state, Target{0, 0, 3});
        bench.platform.pump.Post([&] { bench.platform.pump.Close(); });
        EXPECT_THROW(waiting.Connect(), platform::WaitAbandoned);
    }
    const std::size_t lines = log.size();
    ASSERT_EQ(late.size(), 1U);
    late[0]();
    EXPECT_EQ(log.size(), lines);
}

} // namespace
} // namespace orv::device
