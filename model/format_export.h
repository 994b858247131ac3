#pragma once
// The structure of the advanced formats in use, as text.
#include <string>

#include "model/out_format_config.h"

namespace orv::model {

/// One block for each format that is bound to a transport; lines end with CR LF. The text is single bytes: bytes of
/// header and terminator outside 32..127 stand there by name.
std::string FormatStructure(const OutFormatConfig& root, device::DeviceState& state);

} // namespace orv::model
