#include "host/sim/device_server.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <string>
#include <utility>

#include <asio.hpp>

#include "host/sim/protocol_handler.h"

namespace orv::sim {
namespace {

using asio::ip::tcp;

/// A client that has gone and comes back at once can overtake the news of its going; so a second one waits a little.
constexpr std::chrono::milliseconds kGrace{300};
/// How long a client that was sent away may take to hang up.
constexpr std::chrono::milliseconds kFarewell{1000};
/// What is read ahead of the request that is being answered: enough to see a client go, and no more.
constexpr std::size_t kReadAhead = 4096;

/// Sends a last text and waits for the other side to hang up, so that the text is not lost with unread requests.
class Farewell : public std::enable_shared_from_this<Farewell> {
  public:
    explicit Farewell(tcp::socket socket) : socket_(std::move(socket)), timer_(socket_.get_executor()) {}

    void Start(std::string text) {
        text_ = std::move(text);
        timer_.expires_after(kFarewell);
        timer_.async_wait([self = shared_from_this()](asio::error_code) {
            asio::error_code ignored;
            self->socket_.close(ignored);
        });
        asio::async_write(socket_, asio::buffer(text_), [self = shared_from_this()](asio::error_code, std::size_t) {
            asio::error_code ignored;
            self->socket_.shutdown(tcp::socket::shutdown_send, ignored);
            self->Drain();
        });
    }

  private:
    void Drain() {
        socket_.async_read_some(asio::buffer(buffer_), [self = shared_from_this()](asio::error_code gone, std::size_t) {
            if (gone)
                self->timer_.cancel();
            else
                self->Drain();
        });
    }

    tcp::socket socket_;
    asio::steady_timer timer_;
    std::string text_;
    std::array<char, 1024> buffer_{};
};

/// The client that is served.
class Client : public std::enable_shared_from_this<Client> {
  public:
    Client(tcp::socket socket, std::shared_ptr<SimDevice> device, std::function<void()> onGone)
        : socket_(std::move(socket)), timer_(socket_.get_executor()), onGone_(std::move(onGone)),
          handler_(std::make_unique<ProtocolHandler>(std::move(device))) {}

    void Start() {
        asio::error_code ignored;
        socket_.set_option(tcp::no_delay(true), ignored);
        Read();
    }

  private:
    void Read() {
        if (reading_ || ended_ || ahead_.size() >= kReadAhead)
            return;
        reading_ = true;
        socket_.async_read_some(asio::buffer(buffer_),
                                [self = shared_from_this()](asio::error_code failed, std::size_t count) {
                                    self->reading_ = false;
                                    if (self->gone_)
                                        return;
                                    self->ahead_.append(self->buffer_.data(), count);
                                    if (failed)
                                        self->End();
                                    self->Next();
                                });
    }

    /// The client asks for nothing more, or is gone; which of the two only writing shows. So nothing is delayed now.
    void End() {
        ended_ = true;
        timer_.cancel();
    }

    /// One request after the other: as long as an answer is unsent, no more than kReadAhead of what follows is taken.
    void Next() {
        while (!answering_ && !ahead_.empty()) {
            const std::size_t line = std::min(ahead_.find('\n'), ahead_.size() - 1) + 1;
            for (ProtocolHandler::Reply& reply : handler_->Feed(std::string_view(ahead_).substr(0, line)))
                Answer(std::move(reply));
            ahead_.erase(0, line);
        }
        if (ended_ && !answering_)
            Go();
        else
            Read();
    }

    void Answer(ProtocolHandler::Reply reply) {
        answering_ = true;
        reply_ = std::move(reply);
        timer_.expires_after(ended_ ? std::chrono::milliseconds(0) : reply_.delay);
        timer_.async_wait([self = shared_from_this()](asio::error_code) {
            if (!self->gone_)
                self->Write();
        });
    }

    void Write() {
        asio::async_write(socket_, asio::buffer(reply_.bytes),
                          [self = shared_from_this()](asio::error_code failed, std::size_t) {
                              if (failed || self->gone_ || self->reply_.close) {
                                  self->Go();
                                  return;
                              }
                              self->answering_ = false;
                              self->Next();
                          });
    }

    void Go() {
        if (gone_)
            return;
        gone_ = true;
        timer_.cancel();
        asio::error_code ignored;
        socket_.shutdown(tcp::socket::shutdown_both, ignored);
        socket_.close(ignored);
        handler_.reset();
        onGone_();
    }

    tcp::socket socket_;
    asio::steady_timer timer_;
    std::function<void()> onGone_;
    std::unique_ptr<ProtocolHandler> handler_;
    std::array<char, kReadAhead> buffer_{};
    std::string ahead_; ///< read and not yet handled
    ProtocolHandler::Reply reply_;
    bool answering_ = false;
    bool reading_ = false;
    bool ended_ = false; ///< nothing more will come from the client
    bool gone_ = false;
};

tcp::acceptor Listen(asio::io_context& io, std::uint16_t port) {
    const tcp::endpoint endpoint(asio::ip::address_v4::loopback(), port);
    tcp::acceptor acceptor(io);
    acceptor.open(endpoint.protocol());
#ifndef _WIN32
    // Elsewhere this only skips the waiting time of a closed port; on Windows it would share one that is in use.
    acceptor.set_option(tcp::acceptor::reuse_address(true));
#endif
    asio::error_code failed;
    acceptor.bind(endpoint, failed);
    if (!failed)
        acceptor.listen(asio::socket_base::max_listen_connections, failed);
    // Not every system has words for this one.
    if (failed)
        throw PortError("port " + std::to_string(port) + " cannot be used: " +
                        (failed == asio::error::address_in_use ? "it is taken" : failed.message()));
    return acceptor;
}

} // namespace

struct DeviceServer::State {
    State(std::shared_ptr<SimDevice> served, std::uint16_t port)
        : device(std::move(served)), acceptor(Listen(io, port)), signals(io), grace(io) {}

    void Accept() {
        acceptor.async_accept([this](asio::error_code failed, tcp::socket socket) {
            if (!acceptor.is_open())
                return;
            if (!failed)
                Welcome(std::move(socket));
            Accept();
        });
    }

    void Welcome(tcp::socket socket) {
        if (!busy) {
            Serve(std::move(socket));
        } else if (waiting) {
            std::make_shared<Farewell>(std::move(socket))->Start(BusyAnswer());
        } else {
            waiting = std::make_unique<tcp::socket>(std::move(socket));
            grace.expires_after(kGrace);
            grace.async_wait([this](asio::error_code stopped) {
                if (!stopped && waiting)
                    std::make_shared<Farewell>(std::move(*std::exchange(waiting, nullptr)))->Start(BusyAnswer());
            });
        }
    }

    void Serve(tcp::socket socket) {
        busy = true;
        std::make_shared<Client>(std::move(socket), device, [this] { Free(); })->Start();
    }

    void Free() {
        busy = false;
        if (!waiting)
            return;
        grace.cancel();
        Serve(std::move(*std::exchange(waiting, nullptr)));
    }

    std::shared_ptr<SimDevice> device;
    asio::io_context io;
    tcp::acceptor acceptor;
    asio::signal_set signals;
    asio::steady_timer grace;
    std::unique_ptr<tcp::socket> waiting; ///< came while another is served
    bool busy = false;
};

DeviceServer::DeviceServer(std::shared_ptr<SimDevice> device, std::uint16_t port)
    : state_(std::make_unique<State>(std::move(device), port)) {
    state_->Accept();
}

DeviceServer::~DeviceServer() = default;

std::uint16_t DeviceServer::Port() const {
    return state_->acceptor.local_endpoint().port();
}

void DeviceServer::Run() {
    state_->io.run();
}

void DeviceServer::Stop() {
    state_->io.stop();
}

void DeviceServer::StopOnSignals() {
    state_->signals.add(SIGINT);
    state_->signals.add(SIGTERM);
#ifdef SIGBREAK
    state_->signals.add(SIGBREAK);
#endif
    state_->signals.async_wait([this](asio::error_code stopped, int) {
        if (!stopped)
            Stop();
    });
}

} // namespace orv::sim
