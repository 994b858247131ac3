#pragma once
// "NAME=VALUE": one field of the model and its new value.
#include <string>
#include <string_view>

#include "cli/names.h"
#include "device/device_state.h"
#include "model/out_format_config.h"

namespace orv::cli {

struct Assignment {
    std::wstring name;
    std::wstring value; ///< as it was written
};

/// Splits at the first "=". Raises AssignmentError when there is none or no name before it.
Assignment ParseAssignment(std::wstring_view text);

/// Gives the field its value. Raises AssignmentError, and changes nothing then: for a name that is not known, a value
/// that does not fit the field, a parameter that the device lacks or that lies above the current access level. With
/// `force`, limits that the device's description states are no reason to refuse.
void Apply(model::OutFormatConfig& model, device::DeviceState& state, const Assignment& assignment, bool force);

} // namespace orv::cli
