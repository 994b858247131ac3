#pragma once
// A simulated device behind a loopback port, in a process of its own: its work is nobody's time here.
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include <sys/types.h>

#include "bench/large_device.h"

namespace orv::bench {

class DeviceProcess {
  public:
    /// Raises std::runtime_error when there is none to be had. To be made while this process has one thread.
    DeviceProcess(const DeviceSize& size, std::chrono::milliseconds delay);
    ~DeviceProcess();
    DeviceProcess(const DeviceProcess&) = delete;
    DeviceProcess& operator=(const DeviceProcess&) = delete;

    std::uint16_t Port() const { return port_; }

    /// Connects, sends each line when the one before is answered, and disconnects. Raises std::runtime_error for an
    /// answer that is no success.
    void Converse(const std::vector<std::string>& lines) const;

  private:
    pid_t process_ = 0;
    std::uint16_t port_ = 0;
};

} // namespace orv::bench
