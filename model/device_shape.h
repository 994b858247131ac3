#pragma once
// How many objects of each kind a device has room for. It tells by the lengths of its arrays; only formats are counted.
#include <cstdint>

#include "device/parameter_access.h"

namespace orv::model {

std::int32_t CodeSlotCount(device::ParameterAccess& access);
std::int32_t GroupLimit(device::ParameterAccess& access);
/// Raises 13 when the device answers no number.
std::int16_t FormatCount(device::ParameterAccess& access);
/// Of each of `formats` formats.
std::int32_t ItemSlotCount(device::ParameterAccess& access, std::int32_t formats);

} // namespace orv::model
