#include "model/out_item.h"

#include "model/catalogue.h"

namespace orv::model {
namespace {

using enum device::WireType;

// The filler is a byte string, the pattern and the text are texts; the pattern (362) comes after its mode (363). Both
// are meant.
const Field<OutItem> kFields[] = {
    {L"ItemCategory", 351, Int32, &OutItem::ItemCategory},
    {L"Alignment", 352, Int32, &OutItem::Alignment},
    {L"AlignLength", 353, Int16, &OutItem::AlignLength},
    {L"AlignFiller", 354, ByteArray, &OutItem::AlignFiller, ReadAs::ByteString},
    {L"CodeRelType", 355, Int32, &OutItem::CodeRelType},
    {L"GlobalType", 356, Int32, &OutItem::GlobalType},
    {L"DiagnosticEvent", 357, Int32, &OutItem::DiagnosticEvent},
    {L"CodeNumber", 358, Byte, &OutItem::CodeNumber},
    {L"CodeCut", 359, Int32, &OutItem::CodeCut},
    {L"CodeCutLeading", 360, Byte, &OutItem::CodeCutLeading},
    {L"CodeCutTrailing", 361, Byte, &OutItem::CodeCutTrailing},
    {L"CodeCutPatternMode", 363, Int32, &OutItem::CodeCutPatternMode},
    {L"CodeCutPattern", 362, Text, &OutItem::CodeCutPattern},
    {L"FormatType", 364, Int32, &OutItem::FormatType},
    {L"FormatLength", 365, Byte, &OutItem::FormatLength},
    {L"LinkTo", 366, Int32, &OutItem::LinkTo},
    {L"ScaleType", 367, Int32, &OutItem::ScaleType},
    {L"StringText", 368, Text, &OutItem::StringText},
    {L"DeviceNumber", 369, Int16, &OutItem::DeviceNumber},
};

} // namespace

std::span<const Field<OutItem>> OutItem::Fields() {
    return kFields;
}

std::wstring OutItem::GetItemTypeKey() const {
    switch (ItemCategory()) {
    case item_category::kCodeRelated:
        return CatalogueKey(item_category::kCodeRelated, CodeRelType());
    case item_category::kGlobal:
        return CatalogueKey(item_category::kGlobal, GlobalType());
    case item_category::kMiscellaneous:
        return CatalogueKey(item_category::kMiscellaneous, 0);
    default:
        return {};
    }
}

bool OutItem::Load(device::ParameterAccess& access, std::int16_t element) {
    MarkAll();
    for (const auto& field : kFields)
        LoadField(field, *this, access, {element, {}});
    return true;
}

void OutItem::MarkAll() {
    OwnMarks().SetAll(RowCells<OutItem>());
}

void OutItem::Save(device::ParameterAccess& access, device::MIBParamCache& cache, std::int16_t element) const {
    for (const auto& field : kFields)
        SaveField(field, *this, access, cache, element);
}

} // namespace orv::model
