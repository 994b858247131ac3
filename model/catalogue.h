#pragma once
// Every type of output item, as one table.
#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "text/texts.h"

namespace orv::model {

class ToolItems;

/// Allowed lengths by number format; an empty text: the format is not allowed.
using AllowedFormats = std::array<std::wstring, 4>;

// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): the fields stand in the order of the table's columns
struct CatalogueEntry {
    std::int32_t category;
    std::uint8_t type; ///< within the category
    const wchar_t* key;
    text::Id caption;
    bool hasFormats; ///< false: not number-formatted
    const wchar_t* lengths[4];
    bool deviceDependent;
    bool useScaleType;
};

/// In the order in which entries are added and shown.
std::span<const CatalogueEntry> Catalogue();

/// Key of a type; empty when the catalogue does not hold it.
std::wstring CatalogueKey(std::int32_t category, std::int32_t type);

/// Clears the collection and adds every entry, for the current device.
void FillCatalogue(ToolItems& items);

} // namespace orv::model
