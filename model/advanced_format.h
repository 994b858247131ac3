#pragma once
// One advanced format: the items of the output, what frames them, and the transports that use it.
#include <cstdint>
#include <span>
#include <string>

#include "device/device_state.h"
#include "model/field.h"
#include "model/out_items.h"

namespace orv::model {

class OutFormatConfig;

class AdvancedFormat : public Marked {
  public:
    /// `index` is the 1-based slot number.
    AdvancedFormat(device::DeviceState& state, const OutFormatConfig& root, std::int16_t index)
        : state_(state), root_(root), index_(index) {}

    std::int16_t Index() const { return index_; }
    Property<std::int32_t> Transports; ///< bit i for transport i; 31 is the sign bit
    Property<std::int32_t> Alignment;
    Property<std::int16_t> AlignLength;
    Property<std::wstring> AlignFiller;
    Property<std::wstring> Header;
    Property<std::wstring> Terminator;
    Property<std::int32_t> GlobalScaleType;

    /// How many items one format may hold on this device.
    std::int16_t MaxItemsCount() const { return maxItemsCount_; }
    /// False when the device did not say how many items there are or may be: their number is not saved then, so none
    /// may be added or removed.
    bool ItemCountIsRead() const { return ItemsAreRead() && MaxItemsCountIsRead(); }
    bool ItemsAreRead() const { return !Marks().Has(kItemCountCell); }
    bool MaxItemsCountIsRead() const { return !Marks().Has(kMaxItemsCountCell); }
    /// False for an item beyond the slots that the device keeps for each format: it would land in the next one's.
    bool HasPlace(const OutItem& item) const { return item.Index() <= itemSlots_; }
    /// Where the item's settings stand on the device.
    std::int16_t ElementOf(const OutItem& item) const;
    /// The other way: position of the item whose settings stand there.
    std::int32_t PositionAt(std::int16_t element) const { return element - (index_ - 1) * itemSlots_ + 1; }
    std::int16_t Element() const;
    model::OutItems& OutItems() { return outItems_; }
    const model::OutItems& OutItems() const { return outItems_; }

    /// Names of the transports bound to the format, joined with ","; "(None)" when there are none.
    std::wstring GetLabel() const;

    /// `itemSlots` is how many item slots the device keeps for each format. A failed read flies. Raises 6 (overflow)
    /// when an item's element does not fit 16 bits.
    bool Load(std::int32_t itemSlots);
    void Save(device::MIBParamCache& cache) const;

    /// Uses the memory of a format that is not needed any more.
    void Recycle(AdvancedFormat& before) { outItems_.Recycle(before.outItems_); }

    static std::span<const Field<AdvancedFormat>> Fields();

    /// Numbers of the two settings that stand beside the table, and their marks.
    static constexpr std::int32_t kItemCount = 349;
    static constexpr std::int32_t kMaxItemsCount = 350;
    static constexpr int kItemCountCell = 7;
    static constexpr int kMaxItemsCountCell = 8;

  private:
    void LoadItems(device::ParameterAccess& access, std::int16_t count);

    device::DeviceState& state_;
    const OutFormatConfig& root_;
    std::int16_t index_;
    std::int16_t maxItemsCount_ = 0;
    std::int32_t itemSlots_ = 0;
    model::OutItems outItems_;
};

} // namespace orv::model
