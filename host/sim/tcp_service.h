#pragma once
// The MIB/SAP service over a loopback socket, with a worker thread of its own.
#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "host/sim/line_service.h"
#include "platform/services.h"

namespace orv::sim {

class TcpMibSapService final : public LineService {
  public:
    struct Endpoint {
        std::string host = "127.0.0.1"; ///< a numeric address
        std::uint16_t port = 0;
        std::map<std::int32_t, std::uint16_t> ports;    ///< of devices that listen elsewhere, by device address
        std::chrono::milliseconds connectTimeout{5000}; ///< and how long the device may take to close its side
    };

    /// Events come through MessagePump::Post, called from the worker thread. `pump` must outlive the service; what
    /// is still posted when the service goes does nothing.
    TcpMibSapService(platform::MessagePump& pump, Endpoint endpoint);
    /// Does not wait for the network.
    ~TcpMibSapService() override;

  protected:
    void Open(std::int32_t deviceAddress) override;
    void Close() override;
    void Finish() override;
    void Send(std::string line) override;

  private:
    struct Worker;
    class Link;

    platform::MessagePump& pump_;
    Endpoint endpoint_;
    std::unique_ptr<Worker> worker_;
    std::shared_ptr<Link> link_;
};

} // namespace orv::sim
