#pragma once
// One device description that is open: the host's objects over it, its devices, the way to them. Portable.
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/app/orvhost/droppable_service.h"
#include "host/app/orvhost/options.h"
#include "host/sim/bench_host.h"
#include "host/sim/sim_device.h"
#include "platform/services.h"

namespace orv::host {

class Workspace {
  public:
    /// Raises sim::FileError for a file that cannot be used.
    Workspace(const Options& options, const std::filesystem::path& file, platform::MessagePump& pump,
              sim::LineService::Traffic traffic);

    const std::shared_ptr<sim::BenchHost>& Bench() const { return bench_; }
    DroppableService& Service() { return *service_; }
    const std::filesystem::path& File() const { return file_; }
    /// Written beside and renamed; from then on the open file. Raises sim::FileError.
    void Save(const std::filesystem::path& file);

    bool Has(std::int16_t cluster, std::int16_t device) const;
    const sim::SystemDescription& Description() const { return description_; }
    /// As a person reads it: where the device listens, or that it is simulated.
    std::wstring LinkText() const;

    /// A value as the configuration and as the device holds it. Raise orv::Error or sim::AskError.
    std::wstring HostValue(std::int16_t cluster, std::int16_t device, std::int32_t number, std::int32_t element) const;
    std::wstring DeviceValue(std::int16_t cluster, std::int16_t device, std::int32_t number,
                             std::int32_t element) const;

  private:
    std::filesystem::path file_;
    std::optional<DeviceAddress> deviceAt_;
    sim::SystemDescription description_;
    std::shared_ptr<sim::BenchHost> bench_;
    std::vector<std::shared_ptr<sim::SimDevice>> devices_; ///< empty when the device is elsewhere
    std::shared_ptr<DroppableService> service_;
};

} // namespace orv::host
