#pragma once
// The device's advanced-format slots.
#include <cstdint>
#include <string>

#include "device/device_state.h"
#include "model/advanced_format.h"
#include "model/keyed_collection.h"

namespace orv::model {

/// 1-based; the key of the format at position i is "Format" and i. The device fixes their number: formats are added by
/// a load only.
class AdvancedFormats {
  public:
    AdvancedFormats(device::DeviceState& state, const OutFormatConfig& root) : state_(state), root_(root) {}
    AdvancedFormats(const AdvancedFormats&) = delete;
    AdvancedFormats& operator=(const AdvancedFormats&) = delete;

    std::int32_t Count() const { return formats_.Count(); }
    /// Raise 5 (invalid argument) for one that does not exist.
    AdvancedFormat& Item(std::int32_t position) { return formats_.Item(position); }
    const AdvancedFormat& Item(std::int32_t position) const { return formats_.Item(position); }
    AdvancedFormat& Item(const std::wstring& key) { return formats_.Item(key); }
    auto begin() { return formats_.begin(); }
    auto end() { return formats_.end(); }
    auto begin() const { return formats_.begin(); }
    auto end() const { return formats_.end(); }

    /// Item slots that the device keeps for each format, as the last load found them.
    std::int32_t ItemSlots() const { return itemSlots_; }

    /// A failed read flies; what was read until then stays.
    bool Load();
    void Save(device::MIBParamCache& cache) const;

  private:
    AdvancedFormat& Add(std::int16_t index, const std::wstring& key);

    device::DeviceState& state_;
    const OutFormatConfig& root_;
    KeyedCollection<AdvancedFormat> formats_;
    std::int32_t itemSlots_ = 0;
};

} // namespace orv::model
