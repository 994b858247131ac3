#pragma once
// The catalogue of output-item types for the current device.
#include <cstdint>
#include <string>

#include "device/device_state.h"
#include "model/keyed_collection.h"
#include "model/out_item.h"
#include "model/tool_item.h"

namespace orv::model {

class OutFormatConfig;

/// 1-based, in the order of adding; the key of an entry is its `Key`.
class ToolItems {
  public:
    /// `root` knows which types the device supports. Both must outlive the catalogue.
    ToolItems(device::DeviceState& state, const OutFormatConfig& root) : state_(state), root_(root) {}
    ToolItems(const ToolItems&) = delete;
    ToolItems& operator=(const ToolItems&) = delete;

    /// `formats` may be null, `imageKey` empty (then it is the key). Raises 5 for a key that is taken.
    ToolItem& Add(const std::wstring& key, std::int32_t category, std::uint8_t type, const std::wstring& caption,
                  bool deviceDependent, bool useScaleType, const AllowedFormats* formats = nullptr,
                  const std::wstring& imageKey = {});

    std::int32_t Count() const { return items_.Count(); }
    ToolItem& Item(std::int32_t position) { return items_.Item(position); }
    ToolItem& Item(const std::wstring& key) { return items_.Item(key); }
    /// Null when there is no such entry.
    const ToolItem* Find(const std::wstring& key) const { return items_.Find(key); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }
    void Clear() { items_.Clear(); }

  private:
    void Describe(ToolItem& item) const;

    device::DeviceState& state_;
    const OutFormatConfig& root_;
    KeyedCollection<ToolItem> items_;
};

} // namespace orv::model
