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

class AdvancedFormat {
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
    std::int16_t MaxItemsCount() const { return maxItemsCount_(); }
    model::OutItems& OutItems() { return outItems_; }
    const model::OutItems& OutItems() const { return outItems_; }

    /// Names of the transports bound to the format, joined with ","; "(None)" when there are none.
    std::wstring GetLabel() const;

    /// `itemSlots` is how many item slots the device keeps for each format. A failed read flies. Raises 6 (overflow)
    /// when an item's element does not fit 16 bits.
    bool Load(std::int32_t itemSlots);
    void Save(device::MIBParamCache& cache, std::int32_t itemSlots) const;

    /// Uses the memory of a format that is not needed any more.
    void Recycle(AdvancedFormat& before) { outItems_.Recycle(before.outItems_); }

    static std::span<const Field<AdvancedFormat>> Fields();

  private:
    std::int16_t Element() const;
    std::int16_t ItemElement(const OutItem& item, std::int32_t itemSlots) const;

    device::DeviceState& state_;
    const OutFormatConfig& root_;
    std::int16_t index_;
    Property<std::int16_t> maxItemsCount_;
    model::OutItems outItems_;
};

} // namespace orv::model
