#pragma once
// One field of an advanced format's output.
#include <cstdint>
#include <span>
#include <string>

#include "model/field.h"

namespace orv::model {

namespace item_category {
inline constexpr std::int32_t kCodeRelated = 0;
inline constexpr std::int32_t kGlobal = 1;
inline constexpr std::int32_t kMiscellaneous = 2;
} // namespace item_category

/// Number formats of an item, by value.
inline constexpr const wchar_t* kFormatNames[] = {L"Dec", L"Bin", L"Hex", L"Asc"};

class OutItem : public Marked {
  public:
    std::int16_t Index() const { return index_; } ///< 1-based position, kept by the list
    // The numbers together, so that whoever goes through thousands of items touches little memory of each.
    Property<std::int32_t> ItemCategory;
    Property<std::int32_t> CodeRelType;
    Property<std::int32_t> GlobalType;
    Property<std::int32_t> FormatType;
    Property<std::uint8_t> FormatLength;
    Property<std::uint8_t> CodeNumber;
    Property<std::uint8_t> CodeCutLeading;
    Property<std::uint8_t> CodeCutTrailing;
    Property<std::int32_t> CodeCut;
    Property<std::int32_t> CodeCutPatternMode;
    Property<std::int32_t> Alignment;
    Property<std::int32_t> DiagnosticEvent;
    Property<std::int32_t> LinkTo;
    Property<std::int32_t> ScaleType;
    Property<std::int16_t> AlignLength;
    Property<std::int16_t> DeviceNumber;
    Property<std::wstring> AlignFiller;
    Property<std::wstring> CodeCutPattern;
    Property<std::wstring> StringText;

    /// Key of the item's entry in the catalogue; empty for a type that it does not hold.
    std::wstring GetItemTypeKey() const;

    /// `element` is the item's place among the item slots of all formats. A failed read flies.
    bool Load(device::ParameterAccess& access, std::int16_t element);
    /// For one that is not loaded: it has no place on the device.
    void MarkAll();
    void Save(device::ParameterAccess& access, device::MIBParamCache& cache, std::int16_t element) const;

    static std::span<const Field<OutItem>> Fields();

  private:
    friend class OutItems;

    std::int16_t index_ = 0;
};

} // namespace orv::model
