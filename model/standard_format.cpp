#include "model/standard_format.h"

namespace orv::model {
namespace {

using enum device::WireType;

const Field<StandardFormat> kFields[] = {
    {L"Header", 6, ByteArray, &StandardFormat::Header, ReadAs::ByteString},
    {L"Terminator", 7, ByteArray, &StandardFormat::Terminator, ReadAs::ByteString},
    {L"CodeSeparator", 82, ByteArray, &StandardFormat::CodeSeparator, ReadAs::ByteString},
};

} // namespace

std::span<const Field<StandardFormat>> StandardFormat::Fields() {
    return kFields;
}

bool StandardFormat::Load() {
    device::ParameterAccess access(state_);
    OwnMarks().SetAll(RowCells<StandardFormat>());
    for (const auto& field : kFields)
        LoadField(field, *this, access, {});
    return true;
}

void StandardFormat::Save(device::MIBParamCache& cache) const {
    device::ParameterAccess access(state_);
    for (const auto& field : kFields)
        SaveField(field, *this, access, cache, 0);
}

} // namespace orv::model
