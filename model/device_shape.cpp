#include "model/device_shape.h"

#include "device/value.h"
#include "model/group.h"

namespace orv::model {
namespace {

enum Parameter : std::int32_t { kSlotEnabled = 1, kFormatCount = 340, kItemCategory = 351 };

// The shape of the device does not depend on who looks: under a level that hides 351 the items of all formats would
// fall into one place.
constexpr std::int32_t kShapeAccessLevel = 3;

} // namespace

std::int32_t CodeSlotCount(device::ParameterAccess& access) {
    return access.ElementCount(kSlotEnabled, kShapeAccessLevel);
}

std::int32_t GroupLimit(device::ParameterAccess& access) {
    return access.ElementCount(Group::Fields().front().parameter, kShapeAccessLevel);
}

std::int16_t FormatCount(device::ParameterAccess& access) {
    return device::ToInt16(access.Read(kFormatCount));
}

std::int32_t ItemSlotCount(device::ParameterAccess& access, std::int32_t formats) {
    return formats > 0 ? access.ElementCount(kItemCategory, kShapeAccessLevel) / formats : 0;
}

} // namespace orv::model
