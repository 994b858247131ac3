#pragma once
// A description file opened as a configuration, with the model of one of its devices.
#include <cstdint>
#include <optional>
#include <string>

#include "device/device_state.h"
#include "host/sim/bench_host.h"
#include "host/sim/portable_platform.h"
#include "model/out_format_config.h"

namespace orv::cli {

/// Which device of which file, and under which access level; nothing given: the first device's cluster, the file's
/// level.
struct DeviceChoice {
    std::string file; ///< UTF-8
    std::optional<std::int16_t> cluster;
    std::int16_t device = 0;
    std::optional<std::int32_t> level;
};

class DeviceFile {
  public:
    /// Reads file and model. Raises sim::FileError, and Failure for a device that the file does not have.
    explicit DeviceFile(const DeviceChoice& choice);
    DeviceFile(const DeviceFile&) = delete;
    DeviceFile& operator=(const DeviceFile&) = delete;

    /// As messages show it.
    const std::string& Name() const { return name_; }
    model::OutFormatConfig& Model() { return model_; }
    device::DeviceState& State() { return state_; }
    sim::BenchHost& Host() { return host_; }
    sim::PortablePlatform& Platform() { return platform_; }
    const sim::ParameterStore& Store() { return *host_.Store(state_.current.cluster, state_.current.device); }
    /// What the file would hold now; its access level stays the file's.
    sim::SystemDescription Contents() const;

  private:
    /// Takes the description over: a large one is not held twice.
    DeviceFile(const DeviceChoice& choice, sim::SystemDescription&& system);

    void RequireElements();

    std::string name_;
    std::int32_t fileLevel_;
    device::Target target_;
    std::size_t place_; ///< of the device, in the file's list
    sim::PortablePlatform platform_;
    sim::BenchHost host_;
    device::DeviceState state_;
    model::OutFormatConfig model_;
};

} // namespace orv::cli
