#pragma once
// The state of the component, as far as device access knows it. A host makes one control, so there is one; of two at
// once each has its own, but for what `CommonState` holds.
#include <atomic>
#include <cstdint>
#include <memory>

#include "device/host.h"
#include "platform/services.h"

namespace orv::device {

class MIBParamCache;

/// Counts shows and look-ups by number. Saturates; the flag is set when the count reaches exactly 2 and stays. Any
/// thread.
class CallCounter {
  public:
    void Increment();
    bool Flag() const { return count_ >= 2; }
    std::int16_t Count() const { return count_; }

  private:
    std::atomic<std::int16_t> count_ = 0;
};

/// The device that an operation works on, and the access level it works under.
struct Target {
    std::int16_t cluster = 0;
    std::int16_t device = 0; ///< 0 is the master
    std::int32_t accessLevel = 0;
};

struct DeviceState;

/// One for the process, even with two controls in it: what counts and what fails belongs to no control, and the host's
/// service carries one session, whoever asks for it. A host may have controls on several threads: all of it is atomic.
struct CommonState {
    CallCounter calls;
    std::atomic<std::int32_t> lastTransportError = 0; ///< only ever set, never cleared
    /// Of the control that talks to a device now. Whoever wants to takes it from null and gives it back.
    std::atomic<const DeviceState*> onTheWire = nullptr;
};

struct DeviceState {
    /// Without a `shared` of others it has a common part of its own.
    DeviceState(platform::Services& services, HostFactory& hostFactory,
                std::shared_ptr<CommonState> shared = std::make_shared<CommonState>());
    ~DeviceState();
    DeviceState(const DeviceState&) = delete;
    DeviceState& operator=(const DeviceState&) = delete;

    platform::Services& platform;
    HostFactory& factory;
    std::shared_ptr<HostApplication> application;
    std::shared_ptr<ConfigurationManager> manager;
    std::shared_ptr<Configuration> configuration;
    std::shared_ptr<MibSapService> mibSap;     ///< obtained when first needed
    std::unique_ptr<MIBParamCache> cache;      ///< of the running save
    Target current;                            ///< indices set by the host, level read once when shown
    const std::shared_ptr<CommonState> common; ///< never null
    WindowHandle progressOwner = 0;

    /// Created on first use and kept for the process.
    SupportObject& Support();

  private:
    std::shared_ptr<SupportObject> support_;
};

} // namespace orv::device
