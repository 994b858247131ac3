#pragma once
// One code slot of the device: whether it is in use, its symbology and the symbology's options.
#include <cstdint>
#include <span>
#include <string>

#include "device/device_state.h"
#include "model/field.h"

namespace orv::model {

/// Everything that belongs to codes is read under this access level, whatever the current one is.
inline constexpr std::int32_t kCodesAccessLevel = 3;

/// Label of a code-type value, as the device enumerates it; empty when it does not. Raises 6 (overflow) outside 0..255.
std::wstring SymbologyLabel(device::DeviceState& state, std::int32_t codeType);

class CodeDef : public Marked {
  public:
    /// `index` is the 1-based slot number.
    CodeDef(device::DeviceState& state, std::int16_t index) : state_(state), index_(index) {}

    std::int16_t Index() const { return index_; }
    Property<bool> Enabled;
    Property<std::int32_t> CodeType;
    Property<std::int16_t> MinLength;
    Property<std::int16_t> MaxLength;
    Property<std::int16_t> Length; ///< fixed length; 0 is variable
    Property<bool> CheckDigit;
    Property<std::int32_t> StartCharTX;
    Property<std::int32_t> StopCharTX;
    Property<std::wstring> NoReadString;
    Property<std::int16_t> CheckDigitType39;
    Property<std::int16_t> CheckDigitType25IL;
    Property<std::int16_t> EANAddon;
    Property<std::wstring> MultipleReadString;
    Property<std::uint8_t> DMColumns;
    Property<std::uint8_t> DMRows;
    Property<std::int16_t> ModuleSize;
    Property<bool> DMRectangular;
    Property<bool> DMFastImprove;
    Property<std::int16_t> PostalSymbology;
    Property<std::int16_t> PostalDirection;
    Property<std::uint8_t> PostalMinBarcount;
    Property<std::uint8_t> PostalMaxBarcount;
    Property<std::int16_t> PostalBarDistance;
    Property<std::int16_t> RssType;
    SevenFlags MaxicodeEnable; ///< reading modes 0..6

    /// Label of the symbology; a text with the number for one that the device does not enumerate. Raises 6 outside
    /// 0..255.
    std::wstring SymbologyID() const;
    /// Caption of the slot: "3 - Code 39", "4 - (None)".
    std::wstring Description() const;

    /// A fixed length is kept as minimum = maximum; `Length` is 0 afterwards. Without a fixed length, a minimum or
    /// maximum of 0 or less leaves the field unchanged.
    void SetLength(std::int16_t length, std::int16_t minimum, std::int16_t maximum);
    /// The same as the user's choice.
    void ChooseLength(std::int16_t length, std::int16_t minimum, std::int16_t maximum);
    /// A fixed length stands in three parameters, so whoever gives one gives them all.
    void Stored(int cell);

    /// False when a read failed; what was read until then stays.
    bool Load();
    /// Normalises the lengths, as a save does before it queues the slot.
    void Normalise(device::MIBParamCache& cache);
    /// Queues the slot in its normal form.
    void Save(device::MIBParamCache& cache) const;
    /// A fixed length that stays on the device as it is, because minimum or maximum cannot be written beside it.
    bool KeepsLength(device::MIBParamCache& cache) const;

    static std::span<const Field<CodeDef>> Fields();

  private:
    std::int16_t Element() const;

    device::DeviceState& state_;
    std::int16_t index_;
};

} // namespace orv::model
