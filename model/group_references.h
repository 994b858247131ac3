#pragma once
// Output items that refer to code groups.
#include <cstdint>

#include "model/out_format_config.h"

namespace orv::model {

/// Whether `item` takes its code from a group above number `last`. Nothing does unless codes are combined by
/// expression: the same number names a code then.
bool RefersToGroupAbove(const OutItem& item, const Codes& codes, std::int32_t last);

bool RefersToGroupAbove(const AdvancedFormat& format, const Codes& codes, std::int32_t last);

/// Over all advanced formats.
bool AnyItemRefersToGroupAbove(const OutFormatConfig& root, std::int32_t last);
/// False when one of them is in a format whose number of items cannot be saved.
bool ItemsOfGroupsAboveCanGo(const OutFormatConfig& root, std::int32_t last);
void RemoveItemsOfGroupsAbove(OutFormatConfig& root, std::int32_t last);

} // namespace orv::model
