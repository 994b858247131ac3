#include "device/device_state.h"

#include <limits>
#include <utility>

#include "device/mib_param_cache.h"

namespace orv::device {

void CallCounter::Increment() {
    std::int16_t count = count_;
    while (count != std::numeric_limits<std::int16_t>::max() &&
           !count_.compare_exchange_weak(count, static_cast<std::int16_t>(count + 1))) {
    }
}

DeviceState::DeviceState(platform::Services& services, HostFactory& hostFactory, std::shared_ptr<CommonState> shared)
    : platform(services), factory(hostFactory), common(std::move(shared)) {}

DeviceState::~DeviceState() = default;

SupportObject& DeviceState::Support() {
    if (!support_)
        support_ = factory.CreateSupportObject();
    if (!support_)
        throw Error(error_number::kObjectNotSet);
    return *support_;
}

} // namespace orv::device
