#include "host/sim/tcp_service.h"

#include <array>
#include <deque>
#include <thread>
#include <utility>

#include <asio.hpp>

#include "host/sim/answer_count.h"
#include "host/sim/sim_device.h"
#include "host/sim/utf8.h"

namespace orv::sim {

using asio::ip::tcp;

namespace {

std::wstring Reason(asio::error_code failed) {
    return failed == asio::error::eof ? L"the device closed the connection without an answer"
                                      : FromUtf8(failed.message());
}

} // namespace

struct TcpMibSapService::Worker {
    asio::io_context io;
    asio::executor_work_guard<asio::io_context::executor_type> keepRunning = asio::make_work_guard(io);
    std::thread thread{[this] { io.run(); }};

    ~Worker() {
        // Whatever is under way on the network is given up, so the join is short.
        io.stop();
        thread.join();
    }
};

/// One connection. Its sockets belong to the worker thread; the way back leads through the pump.
class TcpMibSapService::Link : public std::enable_shared_from_this<Link> {
  public:
    Link(TcpMibSapService& service, platform::MessagePump& pump, asio::io_context& io,
         std::chrono::milliseconds patience)
        : owner_(std::make_shared<TcpMibSapService*>(&service)), pump_(pump), socket_(io), timer_(io),
          patience_(patience) {
        // The greeting: a device that is busy refuses it before it has come.
        count_.Ask();
    }

    /// User-interface thread: nothing that is still posted reaches the service any more.
    void Forget() { *owner_ = nullptr; }

    void Open(const std::string& host, std::uint16_t port) {
        asio::post(socket_.get_executor(), [self = shared_from_this(), host, port] {
            asio::error_code bad;
            const asio::ip::address address = asio::ip::make_address(host, bad);
            if (bad)
                self->Lose(device_code::kConnectRefused, L"not a numeric address");
            else
                self->Connect({address, port});
        });
    }

    void Send(std::string line) {
        asio::post(socket_.get_executor(),
                   [self = shared_from_this(), line = std::move(line)]() mutable { self->Request(std::move(line)); });
    }

    void Finish() {
        asio::post(socket_.get_executor(), [self = shared_from_this()] {
            if (self->over_)
                return;
            asio::error_code ignored;
            self->socket_.shutdown(tcp::socket::shutdown_send, ignored);
            self->LoseLater(device_code::kConnectionLost, L"the device does not close the connection");
        });
    }

    void Close() {
        asio::post(socket_.get_executor(), [self = shared_from_this()] { self->Shut(); });
    }

  private:
    void Connect(const tcp::endpoint& endpoint) {
        LoseLater(device_code::kConnectTimeout, L"the device does not answer the call");
        socket_.async_connect(endpoint, [self = shared_from_this()](asio::error_code failed) {
            if (failed) {
                self->Lose(device_code::kConnectRefused, Reason(failed));
                return;
            }
            if (self->over_)
                return;
            self->timer_.cancel();
            asio::error_code ignored;
            self->socket_.set_option(tcp::no_delay(true), ignored);
            self->Tell([](TcpMibSapService& service) { service.OnOpened(); });
            self->Read();
        });
    }

    void Read() {
        socket_.async_read_some(asio::buffer(buffer_),
                                [self = shared_from_this()](asio::error_code failed, std::size_t count) {
                                    if (failed == asio::error::eof && self->count_.Settled())
                                        self->End();
                                    else if (failed)
                                        self->Lose(device_code::kConnectionLost, Reason(failed));
                                    else if (self->Take({self->buffer_.data(), count}))
                                        self->Read();
                                });
    }

    /// False when the connection is of no more use.
    bool Take(std::string_view bytes) {
        AnswerCount::Taken taken = count_.Take(bytes);
        for (std::string& line : taken.lines)
            Tell([text = std::move(line)](TcpMibSapService& service) { service.OnLine(text); });
        if (taken.breach == Breach::None)
            return true;
        Lose(device_code::kConnectionLost, std::wstring(Describe(taken.breach)));
        return false;
    }

    void Request(std::string line) {
        if (over_)
            return;
        // What has come by now cannot be the answer, even if it was not read yet.
        asio::error_code ignored;
        if (greeted_ && socket_.available(ignored) != 0) {
            Lose(device_code::kConnectionLost, std::wstring(Describe(Breach::Unasked)));
            return;
        }
        if (std::exchange(greeted_, true))
            count_.Ask();
        outgoing_.push_back(std::move(line));
        if (outgoing_.size() == 1)
            Write();
    }

    void Write() {
        asio::async_write(socket_, asio::buffer(outgoing_.front()),
                          [self = shared_from_this()](asio::error_code failed, std::size_t) {
                              self->outgoing_.pop_front();
                              if (failed)
                                  self->Lose(device_code::kConnectionLost, Reason(failed));
                              else if (!self->outgoing_.empty())
                                  self->Write();
                          });
    }

    void Lose(std::int32_t code, std::wstring reason) {
        if (over_)
            return;
        Shut();
        Tell([code, reason = std::move(reason)](TcpMibSapService& service) { service.OnLost(code, reason); });
    }

    void LoseLater(std::int32_t code, std::wstring reason) {
        timer_.expires_after(patience_);
        timer_.async_wait([self = shared_from_this(), code, reason = std::move(reason)](asio::error_code stopped) {
            if (!stopped)
                self->Lose(code, reason);
        });
    }

    void End() {
        if (over_)
            return;
        Shut();
        Tell([](TcpMibSapService& service) { service.OnClosed(); });
    }

    void Shut() {
        over_ = true;
        timer_.cancel();
        asio::error_code ignored;
        socket_.close(ignored);
    }

    template <typename Action>
    void Tell(Action action) {
        pump_.Post([owner = owner_, action = std::move(action)] {
            if (*owner)
                action(**owner);
        });
    }

    const std::shared_ptr<TcpMibSapService*> owner_; ///< what it points to belongs to the user-interface thread
    platform::MessagePump& pump_;
    tcp::socket socket_;
    asio::steady_timer timer_;
    std::array<char, 4096> buffer_{};
    const std::chrono::milliseconds patience_;
    AnswerCount count_;
    std::deque<std::string> outgoing_;
    bool greeted_ = false;
    bool over_ = false;
};

TcpMibSapService::TcpMibSapService(platform::MessagePump& pump, Endpoint endpoint)
    : pump_(pump), endpoint_(std::move(endpoint)), worker_(std::make_unique<Worker>()) {}

TcpMibSapService::~TcpMibSapService() {
    if (link_)
        link_->Forget();
    link_.reset();
}

void TcpMibSapService::Open(std::int32_t deviceAddress) {
    const auto other = endpoint_.ports.find(deviceAddress);
    link_ = std::make_shared<Link>(*this, pump_, worker_->io, endpoint_.connectTimeout);
    link_->Open(endpoint_.host, other == endpoint_.ports.end() ? endpoint_.port : other->second);
}

void TcpMibSapService::Close() {
    if (!link_)
        return;
    link_->Forget();
    link_->Close();
    link_.reset();
}

void TcpMibSapService::Finish() {
    if (link_)
        link_->Finish();
}

void TcpMibSapService::Send(std::string line) {
    if (link_)
        link_->Send(std::move(line));
}

} // namespace orv::sim
