#include "host/sim/tcp_service.h"

#include <array>
#include <deque>
#include <thread>
#include <utility>

#include <asio.hpp>

#include "host/sim/line_protocol.h"
#include "host/sim/sim_device.h"

namespace orv::sim {

using asio::ip::tcp;

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
    Link(TcpMibSapService& service, platform::MessagePump& pump, asio::io_context& io)
        : owner_(std::make_shared<TcpMibSapService*>(&service)), pump_(pump), socket_(io), timer_(io) {}

    /// User-interface thread: nothing that is still posted reaches the service any more.
    void Forget() { *owner_ = nullptr; }

    void Open(const std::string& host, std::uint16_t port, std::chrono::milliseconds timeout) {
        asio::post(socket_.get_executor(), [self = shared_from_this(), host, port, timeout] {
            asio::error_code bad;
            const asio::ip::address address = asio::ip::make_address(host, bad);
            if (bad)
                self->Lose(device_code::kConnectRefused);
            else
                self->Connect({address, port}, timeout);
        });
    }

    void Send(std::string line) {
        asio::post(socket_.get_executor(), [self = shared_from_this(), line = std::move(line)]() mutable {
            self->outgoing_.push_back(std::move(line));
            if (self->outgoing_.size() == 1)
                self->Write();
        });
    }

    void Close() {
        asio::post(socket_.get_executor(), [self = shared_from_this()] { self->Shut(); });
    }

  private:
    void Connect(const tcp::endpoint& endpoint, std::chrono::milliseconds timeout) {
        timer_.expires_after(timeout);
        timer_.async_wait([self = shared_from_this()](asio::error_code stopped) {
            if (!stopped)
                self->Lose(device_code::kConnectTimeout);
        });
        socket_.async_connect(endpoint, [self = shared_from_this()](asio::error_code failed) {
            if (failed) {
                self->Lose(device_code::kConnectRefused);
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
        socket_.async_read_some(
            asio::buffer(buffer_), [self = shared_from_this()](asio::error_code failed, std::size_t count) {
                if (failed) {
                    self->Lose(device_code::kConnectionLost);
                    return;
                }
                for (LineSplitter::Line& line : self->splitter_.Feed({self->buffer_.data(), count}))
                    self->Tell([text = std::move(line.text)](TcpMibSapService& service) { service.OnLine(text); });
                self->Read();
            });
    }

    void Write() {
        asio::async_write(socket_, asio::buffer(outgoing_.front()),
                          [self = shared_from_this()](asio::error_code failed, std::size_t) {
                              self->outgoing_.pop_front();
                              if (failed)
                                  self->Lose(device_code::kConnectionLost);
                              else if (!self->outgoing_.empty())
                                  self->Write();
                          });
    }

    void Lose(std::int32_t code) {
        if (over_)
            return;
        Shut();
        Tell([code](TcpMibSapService& service) { service.OnLost(code); });
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
    LineSplitter splitter_;
    std::deque<std::string> outgoing_;
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
    link_ = std::make_shared<Link>(*this, pump_, worker_->io);
    link_->Open(endpoint_.host, other == endpoint_.ports.end() ? endpoint_.port : other->second,
                endpoint_.connectTimeout);
}

void TcpMibSapService::Close() {
    if (!link_)
        return;
    link_->Forget();
    link_->Close();
    link_.reset();
}

void TcpMibSapService::Send(std::string line) {
    if (link_)
        link_->Send(std::move(line));
}

} // namespace orv::sim
