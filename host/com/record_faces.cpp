#include "host/com/record_faces.h"

#include "host/com/values.h"

namespace orv::host {

STDMETHODIMP DeviceRecordsFace::Record(SHORT cluster, SHORT device, IOrvDeviceRecord** record) {
    return Give(record, [&] { return Make<DeviceRecordFace>(records_->Record(cluster, device)).Detach(); });
}

STDMETHODIMP DeviceRecordFace::GetParameterTable(LONG argument, IOrvParameterTable** table) {
    return Give(table, [&] { return Make<ParameterTableFace>(record_->GetParameterTable(argument)).Detach(); });
}

STDMETHODIMP ParameterTableFace::FindByNumber(LONG number, LONG* entry) {
    return Give(entry, [&] { return table_->FindByNumber(number); });
}

STDMETHODIMP ParameterTableFace::FindByPath(BSTR path, LONG accessLevel, LONG* entry) {
    return Give(entry, [&] { return table_->FindByPath(TextOf(path), accessLevel); });
}

STDMETHODIMP ParameterTableFace::EntryName(LONG entry, SHORT element, LONG accessLevel, BSTR* name) {
    return Give(name, [&] { return ToBstr(table_->EntryName(entry, element, accessLevel)); });
}

STDMETHODIMP ParameterTableFace::GetValue(LONG entry, SHORT element, VARIANT* value) {
    return Give(value, [&] { return ToVariant(table_->GetValue(entry, element)).Detach(); });
}

STDMETHODIMP ParameterTableFace::SetValue(LONG entry, VARIANT value) {
    return Try([&] { table_->SetValue(entry, FromVariant(value)); });
}

STDMETHODIMP ParameterTableFace::Describe(LONG entry, IOrvParameterDescription** description) {
    return Give(description, [&] { return Make<DescriptionFace>(table_->Describe(entry)).Detach(); });
}

STDMETHODIMP ParameterTableFace::put_InteractiveMode(VARIANT_BOOL on) {
    return Try([&] { table_->SetInteractiveMode(on != VARIANT_FALSE); });
}

const device::Choice& DescriptionFace::At(LONG index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= description_.choices.size())
        throw Error(error_number::kSubscript);
    return description_.choices[static_cast<std::size_t>(index)];
}

STDMETHODIMP DescriptionFace::get_ElementCount(LONG* count) {
    return Give(count, [&] { return description_.elementCount; });
}

STDMETHODIMP DescriptionFace::get_ChoicesCount(LONG* count) {
    return Give(count, [&] { return static_cast<LONG>(description_.choices.size()); });
}

STDMETHODIMP DescriptionFace::get_ChoiceValue(LONG index, LONG* value) {
    return Give(value, [&] { return At(index).value; });
}

STDMETHODIMP DescriptionFace::get_ChoiceLabel(LONG index, BSTR* label) {
    return Give(label, [&] { return ToBstr(At(index).label); });
}

STDMETHODIMP DescriptionFace::get_HasRange(VARIANT_BOOL* hasRange) {
    return Give(hasRange, [&] { return ToVariantBool(description_.hasRange); });
}

STDMETHODIMP DescriptionFace::get_Minimum(LONG* minimum) {
    return Give(minimum, [&] { return description_.minimum; });
}

STDMETHODIMP DescriptionFace::get_Maximum(LONG* maximum) {
    return Give(maximum, [&] { return description_.maximum; });
}

STDMETHODIMP DescriptionFace::get_MaximumStringLength(LONG* length) {
    return Give(length, [&] { return description_.maximumStringLength; });
}

} // namespace orv::host
