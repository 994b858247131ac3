#pragma once
// What the editor shows, held against the model by whoever does not know how pages are filled.
#include <string>

#include "controls/widget.h"
#include "device/device_state.h"
#include "model/out_format_config.h"

namespace orv::test {

/// The first control of the visible page, or node of the tree, that shows something else than the model holds; empty
/// when there is none. What is still being typed does not count.
std::wstring Disagreement(controls::Widget& root, model::OutFormatConfig& config, device::DeviceState& state);

} // namespace orv::test
