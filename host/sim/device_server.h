#pragma once
// A simulated device behind a loopback port.
#include <cstdint>
#include <memory>
#include <stdexcept>

#include "host/sim/sim_device.h"

namespace orv::sim {

/// The port cannot be had; what() says which and why, in one line.
class PortError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Serves one client after another; a second one while one is connected is told so and sent away.
class DeviceServer {
  public:
    /// Listens on 127.0.0.1; port 0 takes any free one. Raises PortError. From Run on, the device belongs to the
    /// thread that runs.
    DeviceServer(std::shared_ptr<SimDevice> device, std::uint16_t port);
    ~DeviceServer();
    DeviceServer(const DeviceServer&) = delete;
    DeviceServer& operator=(const DeviceServer&) = delete;

    std::uint16_t Port() const;
    /// Serves until Stop.
    void Run();
    /// From any thread.
    void Stop();
    /// Interrupt, termination and, on Windows, break and the closing of the console end Run.
    void StopOnSignals();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace orv::sim
