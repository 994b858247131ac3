#pragma once
// The schema of description files, as a whole and of each part that a file consists of.
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "host/sim/description_parts.h"

namespace orv::sim {

/// Raises FileError with the innermost place that is wrong, behind `place`, which is that of `value`.
void RequireSchema(Part part, const nlohmann::json& value, std::string_view name, const std::string& place);

} // namespace orv::sim
