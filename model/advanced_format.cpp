#include "model/advanced_format.h"

#include <algorithm>

#include "model/out_format_config.h"
#include "text/filled.h"

namespace orv::model {
namespace {

using enum device::WireType;

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

std::int16_t AdvancedFormat::ElementOf(const OutItem& item) const {
    return device::CheckedInt16((std::int64_t{index_} - 1) * itemSlots_ + item.Index() - 1);
}

bool AdvancedFormat::Load(std::int32_t itemSlots) {
    device::ParameterAccess access(state_);
    itemSlots_ = itemSlots;
    OwnMarks().SetAll(kMaxItemsCountCell + 1); // a load that fails leaves nothing that looks as if it had been read
    for (const auto& field : kFields)
        LoadField(field, *this, access, {Element(), {}});
    ReadCell(
        kMaxItemsCountCell, [&] { return access.Read(kMaxItemsCount); },
        [&](const device::Value& value) { maxItemsCount_ = device::ToInt16(value); });
    std::int16_t count = 0;
    ReadCell(
        kItemCountCell, [&] { return access.Read(kItemCount, Element()); },
        [&](const device::Value& value) { count = device::ToInt16(value); });
    LoadItems(access, count);
    return true;
}

void AdvancedFormat::LoadItems(device::ParameterAccess& access, std::int16_t count) {
    outItems_.Clear();
    outItems_.Reserve(std::max<std::int32_t>(count, 0));
    for (std::int32_t j = 1; j <= count; ++j) {
        OutItem& item = outItems_.Create(static_cast<std::int16_t>(j), Numbered(L"Item", j));
        if (HasPlace(item))
            item.Load(access, ElementOf(item));
        else // what stands there is another format's
            item.MarkAll();
    }
}

void AdvancedFormat::Save(device::MIBParamCache& cache) const {
    device::ParameterAccess access(state_);
    for (const OutItem& item : outItems_)
        if (HasPlace(item))
            item.Save(access, cache, ElementOf(item));
        else
            cache.LeaveOutForWantOfPlace(
                text::Filled(text::Id::ItemWithoutPlace,
                             {{L"item", std::to_wstring(item.Index())}, {L"format", std::to_wstring(index_)}}));
    if (ItemCountIsRead())
        cache.Add(kItemCount, Int16, state_.Support().Minimum(outItems_.Count(), maxItemsCount_), Element());
    else if (!ItemsAreRead())
        LeaveOutNotRead(cache, kItemCount, Element(), Marks(), kItemCountCell);
    else
        cache.LeaveOut(device::LeftOut::Why::NotRead, kItemCount, Element(),
                       text::Filled(text::Id::NotReadEntry, {{L"number", std::to_wstring(kMaxItemsCount)},
                                                             {L"reason", NotReadReason(Marks(), kMaxItemsCountCell)}}));
    for (const auto& field : kFields)
        SaveField(field, *this, access, cache, Element());
}

} // namespace orv::model
