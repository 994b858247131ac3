#pragma once
// The structure of the advanced formats in use, as text.
#include <filesystem>
#include <iosfwd>

#include "model/out_format_config.h"

namespace orv::model {

/// One block for each format that is bound to a transport; lines end with CR LF. The text is single bytes: bytes of
/// header and terminator outside 32..127 stand there by name.
void WriteFormatStructure(const OutFormatConfig& root, device::DeviceState& state, std::ostream& out);

/// The same into a file, new or truncated. Raises 75 (file access) when it cannot be written; the file may be left
/// partly written.
void ExportFormatStructure(const OutFormatConfig& root, device::DeviceState& state, const std::filesystem::path& file);

} // namespace orv::model
