#pragma once
// The ordered items of one advanced format.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "model/keyed_collection.h"
#include "model/out_item.h"

namespace orv::model {

/// 1-based. After every change item k has `Index` k, as long as no index beyond Count + 1 is passed.
class OutItems {
  public:
    std::int32_t Count() const { return items_.Count(); }
    /// Raise 5 (invalid argument) for one that does not exist.
    OutItem& Item(std::int32_t position) { return items_.Item(position); }
    const OutItem& Item(std::int32_t position) const { return items_.Item(position); }
    OutItem& Item(const std::wstring& key) { return items_.Item(key); }
    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

    /// A new item, or an item given away, before the one at `index`; at the end when `index` is past it. No key when
    /// `key` is empty. Raise 5 for an index below 1 and for a key that is taken, 6 (overflow) past 32767 items.
    OutItem& Create(std::int16_t index, std::wstring key);
    /// Before so many are added.
    void Reserve(std::int32_t count) { items_.Reserve(count); }
    OutItem& Add(std::unique_ptr<OutItem> item, std::int16_t index, std::wstring key);
    /// The caller owns the item that is taken out. Raise 5 for one that does not exist.
    std::unique_ptr<OutItem> Remove(std::int32_t position);
    std::unique_ptr<OutItem> Remove(const std::wstring& key);
    void Clear() { items_.Clear(); }
    /// Empties both lists. What was in `before` is made anew by the next calls of Create, so that reading a device
    /// once more does not give back and ask for all its memory.
    void Recycle(OutItems& before);

  private:
    void Renumber(std::int32_t from, int step);

    KeyedCollection<OutItem> items_;
    std::vector<KeyedCollection<OutItem>::Slot> spare_;
};

} // namespace orv::model
