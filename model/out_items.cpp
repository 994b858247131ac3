#include "model/out_items.h"

namespace orv::model {

OutItem& OutItems::Create(std::int16_t index, std::wstring key) {
    if (spare_.empty())
        return Add(std::make_unique<OutItem>(), index, std::move(key));
    auto spare = std::move(spare_.back());
    spare_.pop_back();
    *spare.member = OutItem();
    return Add(std::move(spare.member), index, std::move(key));
}

void OutItems::Recycle(OutItems& before) {
    items_ = std::move(before.items_);
    spare_ = std::move(before.spare_);
    items_.TakeAll(spare_);
}

OutItem& OutItems::Add(std::unique_ptr<OutItem> item, std::int16_t index, std::wstring key) {
    device::CheckedInt16(std::int64_t{Count()} + 1);
    OutItem& added = items_.Insert(index, std::move(item), std::move(key));
    added.index_ = index;
    Renumber(std::int32_t{index} + 1, 1);
    return added;
}

std::unique_ptr<OutItem> OutItems::Remove(std::int32_t position) {
    const std::int32_t index = items_.Item(position).index_;
    auto removed = items_.Take(position);
    Renumber(index, -1);
    return removed;
}

std::unique_ptr<OutItem> OutItems::Remove(const std::wstring& key) {
    return Remove(items_.PositionOf(key));
}

void OutItems::Renumber(std::int32_t from, int step) {
    for (std::int32_t position = from; position <= Count(); ++position) {
        OutItem& item = items_.Item(position);
        item.index_ = device::CheckedInt16(std::int64_t{item.index_} + step);
    }
}

} // namespace orv::model
