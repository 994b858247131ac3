#pragma once
// The process-wide state, as far as device access knows it. There is one, owned by the component.
#include <cstdint>
#include <memory>

#include "device/host.h"
#include "platform/services.h"

namespace orv::device {

class MIBParamCache;

/// Counts shows and look-ups by number. Saturates; the flag is set when the count reaches exactly 2 and stays.
class CallCounter {
  public:
    void Increment();
    bool Flag() const { return flag_; }
    std::int16_t Count() const { return count_; }

  private:
    std::int16_t count_ = 0;
    bool flag_ = false;
};

/// The device that an operation works on, and the access level it works under.
struct Target {
    std::int16_t cluster = 0;
    std::int16_t device = 0; ///< 0 is the master
    std::int32_t accessLevel = 0;
};

struct DeviceState {
    DeviceState(platform::Services& services, HostFactory& hostFactory);
    ~DeviceState();
    DeviceState(const DeviceState&) = delete;
    DeviceState& operator=(const DeviceState&) = delete;

    platform::Services& platform;
    HostFactory& factory;
    std::shared_ptr<HostApplication> application;
    std::shared_ptr<ConfigurationManager> manager;
    std::shared_ptr<Configuration> configuration;
    std::shared_ptr<MibSapService> mibSap; ///< obtained when first needed
    std::unique_ptr<MIBParamCache> cache;  ///< of the running save
    Target current;                        ///< indices set by the host, level read once when shown
    std::int32_t lastTransportError = 0;   ///< only ever set, never cleared
    CallCounter calls;
    WindowHandle progressOwner = 0;

    /// Created on first use and kept for the process.
    SupportObject& Support();

  private:
    std::shared_ptr<SupportObject> support_;
};

} // namespace orv::device
