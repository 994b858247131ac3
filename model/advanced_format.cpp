#include "model/advanced_format.h"

#include <algorithm>

#include "model/out_format_config.h"
#include "text/texts.h"

namespace orv::model {
namespace {

using enum device::WireType;

enum Parameter : std::int32_t { kItemCount = 349, kMaxItemsCount = 350 };

// The transports (341) stand behind the filler, on purpose. Beside the table: a load ends with 350, 349 and the items,
// a save begins with the items and 349.
const Field<AdvancedFormat> kFields[] = {
    {L"Alignment", 342, Int32, &AdvancedFormat::Alignment},
    {L"AlignLength", 343, Int16, &AdvancedFormat::AlignLength},
    {L"AlignFiller", 344, ByteArray, &AdvancedFormat::AlignFiller, ReadAs::ByteString},
    {L"Transports", 341, Int32, &AdvancedFormat::Transports},
    {L"Header", 345, ByteArray, &AdvancedFormat::Header, ReadAs::ByteString},
    {L"Terminator", 346, ByteArray, &AdvancedFormat::Terminator, ReadAs::ByteString},
    {L"GlobalScaleType", 348, Int32, &AdvancedFormat::GlobalScaleType},
};

} // namespace

std::span<const Field<AdvancedFormat>> AdvancedFormat::Fields() {
    return kFields;
}

std::wstring AdvancedFormat::GetLabel() const {
    device::SupportObject& support = state_.Support();
    std::wstring label;
    const auto bits = static_cast<std::uint32_t>(Transports());
    for (std::uint8_t i = 0; i < 32; ++i) {
        if ((bits >> i & 1U) == 0)
            continue;
        const std::wstring name = root_.TransportDesc(i);
        if (!name.empty())
            label = support.AppendToList(label, name, L",");
    }
    return label.empty() ? text::Load(text::Id::None) : label;
}

std::int16_t AdvancedFormat::Element() const {
    return device::CheckedInt16(std::int64_t{index_} - 1);
}

std::int16_t AdvancedFormat::ItemElement(const OutItem& item, std::int32_t itemSlots) const {
    return device::CheckedInt16((std::int64_t{index_} - 1) * itemSlots + item.Index() - 1);
}

bool AdvancedFormat::Load(std::int32_t itemSlots) {
    device::ParameterAccess access(state_);
    for (const auto& field : kFields)
        LoadField(field, *this, access, {Element(), {}});
    maxItemsCount_(device::ToInt16(access.Read(kMaxItemsCount)));
    const std::int16_t count = device::ToInt16(access.Read(kItemCount, Element()));
    outItems_.Clear();
    outItems_.Reserve(std::max<std::int32_t>(count, 0));
    for (std::int32_t j = 1; j <= count; ++j) {
        OutItem& item = outItems_.Create(static_cast<std::int16_t>(j), Numbered(L"Item", j));
        item.Load(access, ItemElement(item, itemSlots));
    }
    return true;
}

void AdvancedFormat::Save(device::MIBParamCache& cache, std::int32_t itemSlots) const {
    device::ParameterAccess access(state_);
    for (const OutItem& item : outItems_)
        item.Save(access, cache, ItemElement(item, itemSlots));
    cache.Add(kItemCount, Int16, state_.Support().Minimum(outItems_.Count(), maxItemsCount_()), Element());
    for (const auto& field : kFields)
        SaveField(field, *this, access, cache, Element());
}

} // namespace orv::model
