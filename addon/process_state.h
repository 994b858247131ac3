#pragma once
// What the component keeps while it lives: what device access needs, the root of the output format and the catalogue.
#include <memory>

#include "device/device_state.h"
#include "model/out_format_config.h"
#include "model/tool_items.h"

namespace orv::addon {

struct ProcessState : device::DeviceState {
    using device::DeviceState::DeviceState;

    std::unique_ptr<model::OutFormatConfig> root;
    std::unique_ptr<model::ToolItems> catalogue; ///< of the root's device; empty until its values were read
};

} // namespace orv::addon
