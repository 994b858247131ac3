#include "model/standard_format.h"

#include "device/mib_param_cache.h"
#include "device/parameter_access.h"

namespace orv::model {

/// What is read and written, in wire order. Scalars, byte strings all three.
struct StandardFormat::Field {
    std::int32_t parameter;
    std::wstring StandardFormat::*member;
};

const StandardFormat::Field StandardFormat::kFields[3] = {
    {6, &StandardFormat::header_},
    {7, &StandardFormat::terminator_},
    {82, &StandardFormat::codeSeparator_},
};

bool StandardFormat::Load(device::DeviceState& state) {
    device::ParameterAccess access(state);
    for (const auto& [number, member] : kFields)
        this->*member = access.ReadByteString(number);
    return true;
}

void StandardFormat::Save(device::DeviceState& state) const {
    device::ParameterAccess access(state);
    for (const auto& [number, member] : kFields)
        state.cache->Add(number, device::WireType::ByteArray, access.StringToBytes(this->*member));
}

} // namespace orv::model
