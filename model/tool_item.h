#pragma once
// One type of output item, with what the editor needs to offer it.
#include <cstdint>
#include <optional>
#include <string>

#include "model/catalogue.h"
#include "model/property.h"

namespace orv::model {

class ToolItem {
  public:
    Property<std::wstring> Key;
    Property<std::int32_t> ItemCategory;
    Property<std::uint8_t> ItemType;
    bool Supported() const { return supported_; } ///< by the current device
    Property<std::wstring> ImageKey;
    Property<std::wstring> TooltipText;
    Property<std::wstring> ItemText;
    Property<bool> DeviceDependent; ///< takes a device number
    Property<bool> UseScaleType;    ///< its value is scaled

    /// False for an item that is not number-formatted.
    bool HasAllowedFormats() const { return formats_.has_value(); }
    /// Allowed lengths (see LengthRule) of number format 0..3; empty: not allowed. Raises 9 (subscript) for an item
    /// that is not number-formatted and beyond 3.
    const std::wstring& AllowedFormatLen(int format) const;
    void SetAllowedFormats(AllowedFormats formats) { formats_ = std::move(formats); }

    /// The first allowed format and the number that its lengths begin with (0 where they begin with none). Both stay
    /// as they are when no format is allowed.
    void GetDefaultFormatAndLen(std::int32_t& format, std::uint8_t& length) const;

    /// The code data itself.
    bool IsCode() const { return ItemCategory() == 0 && ItemType() == 0; }

  private:
    friend class ToolItems;

    bool supported_ = false;
    std::optional<AllowedFormats> formats_;
};

} // namespace orv::model
