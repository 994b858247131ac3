#include "model/code_def.h"

#include "text/texts.h"

namespace orv::model {
namespace {

using enum device::WireType;

constexpr std::int32_t kCodeType = 2;

// 3005 and 3006 before 3004, and 3010 before 3009: meant, and the same both ways.
const Field<CodeDef> kFields[] = {
    {L"Enabled", 1, Int16, &CodeDef::Enabled},
    {L"CodeType", kCodeType, Int32, &CodeDef::CodeType},
    {L"MinLength", 3, Int16, &CodeDef::MinLength},
    {L"MaxLength", 4, Int16, &CodeDef::MaxLength},
    {L"Length", 70, Int16, &CodeDef::Length},
    {L"CheckDigit", 5, Int16, &CodeDef::CheckDigit},
    {L"StartCharTX", 382, Int32, &CodeDef::StartCharTX},
    {L"StopCharTX", 383, Int32, &CodeDef::StopCharTX},
    {L"NoReadString", 18, ByteArray, &CodeDef::NoReadString, ReadAs::String},
    {L"CheckDigitType39", 527, Int16, &CodeDef::CheckDigitType39},
    {L"CheckDigitType25IL", 526, Int16, &CodeDef::CheckDigitType25IL},
    {L"EANAddon", 32, Int16, &CodeDef::EANAddon},
    {L"MultipleReadString", 328, ByteArray, &CodeDef::MultipleReadString, ReadAs::String},
    {L"DMColumns", 3002, Byte, &CodeDef::DMColumns},
    {L"DMRows", 3003, Byte, &CodeDef::DMRows},
    {L"DMRectangular", 3005, Int16, &CodeDef::DMRectangular},
    {L"DMFastImprove", 3006, Int16, &CodeDef::DMFastImprove},
    {L"ModuleSize", 3004, Int16, &CodeDef::ModuleSize},
    {L"PostalSymbology", 3007, Int16, &CodeDef::PostalSymbology},
    {L"PostalDirection", 3008, Int16, &CodeDef::PostalDirection},
    {L"PostalMaxBarcount", 3010, Byte, &CodeDef::PostalMaxBarcount},
    {L"PostalMinBarcount", 3009, Byte, &CodeDef::PostalMinBarcount},
    {L"PostalBarDistance", 3011, Int16, &CodeDef::PostalBarDistance},
    {L"RssType", 3012, Int16, &CodeDef::RssType},
    {L"MaxicodeEnable", 3013, Int16, &CodeDef::MaxicodeEnable},
};

const Field<CodeDef>& kMinLength = kFields[2];
const Field<CodeDef>& kMaxLength = kFields[3];
const Field<CodeDef>& kLength = kFields[4];

} // namespace

std::span<const Field<CodeDef>> CodeDef::Fields() {
    return kFields;
}

std::wstring SymbologyLabel(device::DeviceState& state, std::int32_t codeType) {
    return device::ParameterAccess(state).ValueLabel(kCodeType, device::ToByte(codeType), kCodesAccessLevel);
}

std::wstring CodeDef::SymbologyID() const {
    const std::wstring label = SymbologyLabel(state_, CodeType());
    return !label.empty() ? label : text::Load(text::Id::UnknownSymbology) + std::to_wstring(CodeType()) + L")";
}

std::wstring CodeDef::Description() const {
    return std::to_wstring(index_) + L" - " + (Enabled() ? SymbologyID() : text::Load(text::Id::None));
}

void CodeDef::SetLength(std::int16_t length, std::int16_t minimum, std::int16_t maximum) {
    Length(0);
    if (length > 0)
        minimum = maximum = length;
    if (minimum > 0)
        MinLength(minimum);
    if (maximum > 0)
        MaxLength(maximum);
}

void CodeDef::ChooseLength(std::int16_t length, std::int16_t minimum, std::int16_t maximum) {
    SetLength(length, minimum, maximum);
    Marked::Stored(CellOf(kLength));
    if (length > 0 || minimum > 0)
        Marked::Stored(CellOf(kMinLength));
    if (length > 0 || maximum > 0)
        Marked::Stored(CellOf(kMaxLength));
}

void CodeDef::Stored(int cell) {
    Marked::Stored(cell);
    if (cell != CellOf(kLength) || Length() <= 0)
        return;
    if (Marks().Has(CellOf(kMinLength)))
        MinLength(Length());
    if (Marks().Has(CellOf(kMaxLength)))
        MaxLength(Length());
    Marked::Stored(CellOf(kMinLength));
    Marked::Stored(CellOf(kMaxLength));
}

std::int16_t CodeDef::Element() const {
    return device::CheckedInt16(std::int64_t{index_} - 1);
}

bool CodeDef::Load() {
    device::ParameterAccess access(state_);
    OwnMarks().SetAll(RowCells<CodeDef>());
    try {
        for (const auto& field : kFields)
            LoadField(field, *this, access, {Element(), kCodesAccessLevel});
        return true;
    } catch (const Error&) {
        return false;
    }
}

bool CodeDef::KeepsLength(device::MIBParamCache& cache) const {
    if (Length() <= 0)
        return false;
    const auto isWritten = [&](const Field<CodeDef>& row) {
        return !Marks().Has(CellOf(row)) && cache.HasEntry(row.parameter, Element());
    };
    return !isWritten(kMinLength) || !isWritten(kMaxLength);
}

void CodeDef::Normalise(device::MIBParamCache& cache) {
    if (!KeepsLength(cache))
        SetLength(Length(), MinLength(), MaxLength());
}

void CodeDef::Save(device::MIBParamCache& cache) const {
    device::ParameterAccess access(state_);
    const bool keepsLength = KeepsLength(cache);
    const bool isFixed = Length() > 0 && !keepsLength;
    for (const auto& field : kFields) {
        // The normal form of a fixed length: minimum = maximum, and 0.
        if (&field == &kLength && keepsLength)
            cache.LeaveOut(device::LeftOut::Why::LengthStays, field.parameter, Element(),
                           text::Load(text::Id::FixedLengthStays));
        else if (&field == &kLength && !Marks().Has(CellOf(field)))
            cache.Add(field.parameter, field.type, std::int16_t{0}, Element());
        else if (isFixed && (&field == &kMinLength || &field == &kMaxLength))
            cache.Add(field.parameter, field.type, Length(), Element());
        else
            SaveField(field, *this, access, cache, Element());
    }
}

} // namespace orv::model
