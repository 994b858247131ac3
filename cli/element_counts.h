#pragma once
// Whether a description file holds an element for each code slot, group, format and item that it says there is.
#include <optional>
#include <string>

#include "device/parameter_access.h"
#include "host/sim/description.h"

namespace orv::cli {

struct ShortParameter {
    std::size_t position; ///< in the device's list
    std::string reason;   ///< "2 elements for 10 code slots"
};

/// The first parameter that has fewer elements than the device, which `access` reads, needs. Nothing where the device
/// does not say how many formats it has: the load tells that.
std::optional<ShortParameter> FindShort(device::ParameterAccess& access, const sim::DeviceDescription& device);

} // namespace orv::cli
