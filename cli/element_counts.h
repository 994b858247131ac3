#pragma once
// Whether a description file holds an element for each code slot, group, format and item that it says there is.
#include <optional>
#include <string>

#include "host/sim/description.h"
#include "model/out_format_config.h"

namespace orv::cli {

struct ShortParameter {
    std::size_t position; ///< in the device's list
    std::string reason;   ///< "2 elements for 10 code slots"
};

/// The first parameter of the device that has fewer elements than `model`, loaded from it, needs.
std::optional<ShortParameter> FindShort(const model::OutFormatConfig& model, const sim::DeviceDescription& device);

} // namespace orv::cli
