#pragma once
// Texts of the definition tree's nodes.
#include <cstdint>
#include <string>

#include "model/out_format_config.h"

namespace orv::model {

/// "3 - Code 39", "4 - (None)".
std::wstring NodeText(const CodeDef& code);
/// "2 - 1 OR 3".
std::wstring NodeText(const Group& group);
/// "1 - SerMain,EmailClient". `position` is 1-based.
std::wstring NodeText(const AdvancedFormat& format, std::int32_t position);

/// Groups are shown with combination by expression only, formats only while the advanced format is in use.
bool ShowsGroups(const OutFormatConfig& root);
bool ShowsFormats(const OutFormatConfig& root);

} // namespace orv::model
