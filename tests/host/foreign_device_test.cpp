// The service against a device that does not keep to the protocol, and the device against a client that does not.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <thread>

#include <asio.hpp>
#include <gtest/gtest.h>

#include "host/sim/answer_count.h"
#include "host/sim/ask_device.h"
#include "host/sim/device_server.h"
#include "host/sim/portable_pump.h"
#include "host/sim/tcp_service.h"
#include "sim_fixture.h"

namespace orv::sim::testing {
namespace {

using namespace std::chrono_literals;
using asio::ip::tcp;

/// What a device sends: before anything was asked, to each line that comes, and when nothing more comes.
struct Answers {
    std::string first;
    std::vector<std::string> each;
    std::string last;
    bool closes = true;                    ///< its side, behind `last`
    std::chrono::milliseconds between{30}; ///< behind each of the pieces, which a '|' parts
};

/// Serves one client by a list, in a thread.
class Peer {
  public:
    explicit Peer(Answers answers) : answers_(std::move(answers)) {}
    ~Peer() {
        asio::error_code ignored;
        stop_ = true;
        tcp::socket(io_).connect(acceptor_.local_endpoint(), ignored);
        thread_.join();
    }
    std::uint16_t Port() const { return acceptor_.local_endpoint().port(); }

  private:
    void Serve() {
        tcp::socket client = acceptor_.accept();
        Say(client, answers_.first);
        asio::error_code gone;
        std::string received;
        for (const std::string& answer : answers_.each) {
            asio::read_until(client, asio::dynamic_buffer(received), '\n', gone);
            if (gone)
                return;
            received.erase(0, received.find('\n') + 1);
            Say(client, answer);
        }
        while (!gone)
            asio::read(client, asio::dynamic_buffer(received), gone);
        Say(client, answers_.last);
        while (!answers_.closes && !stop_)
            std::this_thread::sleep_for(5ms);
    }
    void Say(tcp::socket& client, std::string_view text) {
        asio::error_code ignored;
        for (std::size_t end = 0; end != std::string_view::npos; text.remove_prefix(end + 1)) {
            end = text.find('|');
            asio::write(client, asio::buffer(text.substr(0, end)), ignored);
            if (end == std::string_view::npos)
                return;
            std::this_thread::sleep_for(answers_.between);
        }
    }

    Answers answers_;
    std::atomic<bool> stop_ = false;
    asio::io_context io_;
    tcp::acceptor acceptor_{io_, tcp::endpoint(asio::ip::address_v4::loopback(), 0)};
    std::thread thread_{[this] { Serve(); }};
};

/// Connects, starts a session, sets an entry, ends the session and asks once more. Goes on behind each error. Behind
/// the event `rest` it waits until the connection has ended.
std::vector<std::string> Save(std::uint16_t port, std::size_t rest, std::wstring& reason) {
    PortablePump pump;
    pump.SetLimit(20s);
    TcpMibSapService::Endpoint endpoint;
    endpoint.port = port;
    endpoint.connectTimeout = 2s;
    TcpMibSapService service(pump, endpoint);
    service.SetTraffic([&](std::wstring_view line) {
        if (line.starts_with(L"! 504 "))
            reason = line.substr(6);
    });
    const auto log = std::make_shared<EventLog>();
    const auto ask = [&](const auto& request) {
        const std::size_t before = log->events.size();
        request();
        pump.PumpUntil([&] { return log->events.size() > before; });
        if (log->events.size() == rest)
            pump.PumpUntil([&] { return !reason.empty(); });
    };
    ask([&] { service.Connect(34, log); });
    ask([&] { service.StartSession(L"3", L"QMVRTK4826"); });
    ask([&] { service.SetNumericEntry(L"/Count", L"1"); });
    ask([&] { service.EndSession(L"V"); });
    ask([&] { service.GetEntry(L"/Count"); });
    return log->events;
}

TEST(ForeignDevice, NoLineCountsThatNothingAskedFor) {
    const std::string ok = "OK OK\n";
    const std::string refused = "ERR 310 no\n";
    const Events lost{"error 504", "error 504", "error 504", "error 504", "error 504"};
    const Events noSession{"connected", "error 504", "error 504", "error 504", "error 504"};
    const Events noSet{"connected", "answer OK", "error 504", "error 504", "error 504"};
    const Events noEnd{"connected", "answer OK", "answer OK", "error 504", "error 504"};
    const Events malformed{"connected", "answer OK", "error 405", "answer OK", "error 501"};
    const std::wstring unasked = L"the device sent a line that nothing asked for";
    const struct {
        const char* name;
        Answers answers;
        Events events;
        std::wstring reason;
        std::size_t rest = 0;
    } cases[] = {
        {"honest", {"", {ok, ok, ok, ok}, ""}, {"connected", "answer OK", "answer OK", "answer OK", "error 501"}, L""},
        {"refusal",
         {"", {ok, ok, refused, ok}, ""},
         {"connected", "answer OK", "error 310", "answer OK", "error 501"},
         L""},
        {"in pieces",
         {"", {"O|K OK|\n", ok, "O|K OK|\r\n", ok}, ""},
         {"connected", "answer OK", "answer OK", "answer OK", "error 501"},
         L""},
        {"two for the greeting", {"", {ok + ok, ok, refused, ok}, ""}, lost, unasked},
        {"one between greeting and session", {"", {ok + "|" + ok, ok, refused, ok}, ""}, noSession, unasked, 1},
        {"begun line between greeting and session", {"", {ok + "|O", "K\n", refused, ok}, ""}, noSession, unasked, 1},
        {"two for the set, good one first", {"", {ok, ok, ok + refused, ok}, ""}, noSet, unasked},
        {"two for the set, bad one first", {"", {ok, ok, refused + ok, ok}, ""}, noSet, unasked},
        {"one behind the set", {"", {ok, ok, ok + "|" + refused, ok}, ""}, noEnd, unasked, 3},
        {"one behind the end", {"", {ok, ok, ok, ok}, refused}, noEnd, unasked},
        {"good one behind the end", {"", {ok, ok, ok, ok}, ok}, noEnd, unasked},
        {"begun line behind the end", {"", {ok, ok, ok, ok}, "O"}, noEnd, unasked},
        {"never closes", {"", {ok, ok, ok, ok}, "", false}, noEnd, L"the device does not close the connection"},
        {"too long",
         {"", {ok, ok, std::string(kMaximumLine + 1, 'x'), ok}, ""},
         noSet,
         L"the device sent a line that is too long"},
        {"code of success", {"", {ok, ok, "ERR 0 fine\n", ok}, ""}, malformed, L""},
        {"more than success", {"", {ok, ok, "OK OK or not\n", ok}, ""}, malformed, L""},
        {"control character", {"", {ok, ok, std::string("OK OK\0\n", 7), ok}, ""}, malformed, L""},
        {"error's code in another line", {"", {ok, ok, "VALUE 308 OK\n", ok}, ""}, malformed, L""},
        {"no code", {"", {ok, ok, "ERR\n", ok}, ""}, malformed, L""},
    };
    for (const auto& c : cases) {
        const Peer peer(c.answers);
        std::wstring reason;
        EXPECT_EQ(Save(peer.Port(), c.rest, reason), c.events) << c.name;
        EXPECT_EQ(reason, c.reason) << c.name;
    }
}

/// A connection whose other end is the test.
class Wire final : public LineService {
  public:
    using LineService::OnClosed;
    using LineService::OnLine;
    bool open = false;
    bool finished = false;
    int sent = 0;

  protected:
    void Open(std::int32_t) override {
        open = true;
        OnOpened();
    }
    void Close() override { open = false; }
    void Finish() override { finished = true; }
    void Send(std::string) override { ++sent; }
};

class OnTheWire : public ::testing::Test {
  protected:
    void Greet() {
        wire.Connect(34, log);
        wire.OnLine("OK OK");
    }
    void End() {
        wire.EndSession(L"V");
        wire.OnLine("OK done");
    }

    const std::shared_ptr<EventLog> log = std::make_shared<EventLog>();
    Wire wire;
};

TEST_F(OnTheWire, ALineBetweenTwoRequestsEndsTheConnection) {
    Greet();
    wire.OnLine("OK OK");
    EXPECT_FALSE(wire.open);
    wire.SetNumericEntry(L"/Count", L"1");
    EXPECT_EQ(wire.sent, 1) << "only the greeting";
    EXPECT_EQ(log->events, (Events{"connected", "error 504"}));
}

TEST_F(OnTheWire, ALineBehindTheEndEndsTheConnection) {
    Greet();
    End();
    EXPECT_TRUE(wire.finished);
    EXPECT_EQ(log->events, Events{"connected"}) << "the end is told when the device has closed";
    wire.OnLine("OK OK");
    EXPECT_FALSE(wire.open);
    EXPECT_EQ(log->events, (Events{"connected", "error 504"}));
}

TEST_F(OnTheWire, TheEndIsToldWhenTheDeviceHasClosed) {
    Greet();
    End();
    wire.OnClosed();
    wire.GetEntry(L"/Count");
    EXPECT_EQ(log->events, (Events{"connected", "answer done", "error 501"}));
}

/// However the bytes arrive: no batch with a line too many is an answer.
TEST(ForeignDevice, AnswersAreCountedInPiecesOfAnySize) {
    for (const std::string text : {"OK 1\nOK 2\nOK 3\n", "a\r\n\nb\n"})
        for (std::size_t piece = 1; piece <= text.size(); ++piece)
            for (std::size_t asked = 0; asked <= 3; ++asked) {
                AnswerCount count;
                for (std::size_t i = 0; i < asked; ++i)
                    count.Ask();
                std::size_t lines = 0;
                Breach breach = Breach::None;
                for (std::size_t at = 0; at < text.size() && breach == Breach::None; at += piece) {
                    const auto taken = count.Take(std::string_view(text).substr(at, piece));
                    lines += taken.lines.size();
                    breach = taken.breach;
                }
                EXPECT_EQ(breach == Breach::None, asked == 3) << piece << " " << asked;
                EXPECT_LE(lines, asked) << piece;
                EXPECT_EQ(count.Settled(), lines == asked) << piece << " " << asked;
            }
}

class Server {
  public:
    explicit Server(FaultPlan faults = {}) : device_(std::make_shared<SimDevice>(SmallDevice(), std::move(faults))) {}
    ~Server() { Stop(); }
    tcp::socket Call(asio::io_context& io) const {
        tcp::socket socket(io);
        socket.connect({asio::ip::address_v4::loopback(), port_});
        return socket;
    }
    /// What the device holds at the end.
    std::wstring Stop(std::int32_t number = 11) {
        server_.Stop();
        if (thread_.joinable())
            thread_.join();
        return FormatValue(device_->Store().Get(number, 0));
    }

  private:
    std::shared_ptr<SimDevice> device_;
    DeviceServer server_{device_, 0};
    std::uint16_t port_ = server_.Port();
    std::thread thread_{[this] { server_.Run(); }};
};

TEST(ForeignClient, IsNotHandledFurtherWhileAnAnswerIsUnsent) {
    FaultPlan plan;
    plan.delay = 10ms; // an answer that has not been sent, without filling a socket
    Server device(plan);
    asio::io_context io;
    tcp::socket client = device.Call(io);
    std::string requests = "HELLO 1 34\nSESSION 3 QMVRTK4826\n";
    for (int i = 1; i <= 3000; ++i)
        requests += "SETN /Count " + std::to_string(i) + "\n";
    asio::write(client, asio::buffer(requests));
    std::string answers(12 * std::strlen("OK OK\n"), ' ');
    asio::read(client, asio::buffer(answers));
    EXPECT_LE(std::stoi(device.Stop()), 200) << "ten sets are answered";
}

TEST(ForeignClient, HearsEveryAnswerWhenItHasNothingMoreToAsk) {
    FaultPlan plan;
    plan.delay = 1h; // not for who has said that nothing more comes
    for (const FaultPlan& faults : {FaultPlan{}, plan}) {
        Server device(faults);
        asio::io_context io;
        tcp::socket client = device.Call(io);
        std::string requests = "HELLO 1 34\nSESSION 3 QMVRTK4826\n";
        for (int i = 0; i < 300; ++i)
            requests += "GET /Count\n";
        asio::write(client, asio::buffer(requests + "NOTHING"));
        client.shutdown(tcp::socket::shutdown_send);
        std::string answers;
        asio::error_code end;
        asio::read(client, asio::dynamic_buffer(answers), end);
        EXPECT_EQ(end, asio::error::eof);
        EXPECT_EQ(std::count(answers.begin(), answers.end(), '\n'), 302);
        EXPECT_TRUE(answers.ends_with("OK 70000\n"));
    }
}

} // namespace
} // namespace orv::sim::testing
