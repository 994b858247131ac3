#include "model/group_references.h"

#include <algorithm>

namespace orv::model {

bool RefersToGroupAbove(const OutItem& item, const Codes& codes, std::int32_t last) {
    return codes.Combination() == kCombinationByExpression && item.ItemCategory() == item_category::kCodeRelated &&
           item.CodeNumber() > last;
}

bool RefersToGroupAbove(const AdvancedFormat& format, const Codes& codes, std::int32_t last) {
    return std::any_of(format.OutItems().begin(), format.OutItems().end(),
                       [&](const OutItem& item) { return RefersToGroupAbove(item, codes, last); });
}

bool AnyItemRefersToGroupAbove(const OutFormatConfig& root, std::int32_t last) {
    return std::any_of(root.AdvancedFormats().begin(), root.AdvancedFormats().end(),
                       [&](const AdvancedFormat& format) { return RefersToGroupAbove(format, root.Codes(), last); });
}

bool ItemsOfGroupsAboveCanGo(const OutFormatConfig& root, std::int32_t last) {
    return std::all_of(root.AdvancedFormats().begin(), root.AdvancedFormats().end(), [&](const AdvancedFormat& format) {
        return format.ItemCountIsRead() || !RefersToGroupAbove(format, root.Codes(), last);
    });
}

void RemoveItemsOfGroupsAbove(OutFormatConfig& root, std::int32_t last) {
    for (AdvancedFormat& format : root.AdvancedFormats()) {
        OutItems& items = format.OutItems();
        // From the end, so that the positions still to come stay what they are.
        for (std::int32_t position = items.Count(); position >= 1; --position)
            if (RefersToGroupAbove(items.Item(position), root.Codes(), last))
                items.Remove(position);
    }
}

} // namespace orv::model
