#include "bench/device_process.h"

#include <array>
#include <csignal>
#include <memory>
#include <stdexcept>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/sim/device_server.h"

namespace orv::bench {
namespace {

[[noreturn]] void Fail(const char* what) {
    throw std::runtime_error(what);
}

/// The child's whole life; it ends with its parent.
[[noreturn]] void Serve(const DeviceSize& size, std::chrono::milliseconds delay, int portPipe) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    sim::FaultPlan plan;
    plan.delay = delay;
    sim::DeviceServer server(
        std::make_shared<sim::SimDevice>(std::move(LargeSystem(size).devices.front()), std::move(plan)), 0);
    server.StopOnSignals();
    const std::uint16_t port = server.Port();
    if (write(portPipe, &port, sizeof port) != sizeof port)
        _exit(1);
    close(portPipe);
    server.Run();
    _exit(0);
}

/// A blocking socket that knows nothing but lines.
class BareSocket {
  public:
    explicit BareSocket(std::uint16_t port) : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const int on = 1;
        setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
            close(socket_);
            Fail("no connection to the device");
        }
    }
    ~BareSocket() { close(socket_); }
    BareSocket(const BareSocket&) = delete;
    BareSocket& operator=(const BareSocket&) = delete;

    void Request(const std::string& line) {
        if (send(socket_, line.data(), line.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(line.size()))
            Fail("a request could not be sent");
        std::size_t length = 0;
        do {
            const ssize_t count = recv(socket_, answer_.data() + length, answer_.size() - length, 0);
            if (count <= 0)
                Fail("the device does not answer");
            length += static_cast<std::size_t>(count);
        } while (answer_[length - 1] != '\n');
        if (answer_[0] != 'O' || answer_[1] != 'K')
            Fail("the device refused a request");
    }

  private:
    int socket_;
    std::array<char, 4096> answer_{};
};

} // namespace

DeviceProcess::DeviceProcess(const DeviceSize& size, std::chrono::milliseconds delay) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        Fail("no pipe to the device");
    process_ = fork();
    if (process_ == 0) {
        close(ends[0]);
        Serve(size, delay, ends[1]);
    }
    close(ends[1]);
    const bool told = process_ > 0 && read(ends[0], &port_, sizeof port_) == sizeof port_;
    close(ends[0]);
    if (!told)
        Fail("the device did not start");
}

DeviceProcess::~DeviceProcess() {
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
}

void DeviceProcess::Converse(const std::vector<std::string>& lines) const {
    BareSocket socket(port_);
    for (const std::string& line : lines)
        socket.Request(line);
}

} // namespace orv::bench
