#pragma once
// The one state of the process: what device access needs, and the root of the output format.
#include <memory>

#include "device/device_state.h"
#include "model/out_format_config.h"

namespace orv::addon {

struct ProcessState : device::DeviceState {
    using device::DeviceState::DeviceState;

    std::unique_ptr<model::OutFormatConfig> root;
};

} // namespace orv::addon
