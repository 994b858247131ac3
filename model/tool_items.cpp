#include "model/tool_items.h"

#include "model/out_format_config.h"

namespace orv::model {
namespace {

enum Parameter : std::int32_t { kCodeRelType = 355, kGlobalType = 356 };

} // namespace

ToolItem& ToolItems::Add(const std::wstring& key, std::int32_t category, std::uint8_t type, const std::wstring& caption,
                         bool deviceDependent, bool useScaleType, const AllowedFormats* formats,
                         const std::wstring& imageKey) {
    auto item = std::make_unique<ToolItem>();
    item->Key(key);
    item->ItemCategory(category);
    item->ItemType(type);
    item->TooltipText(caption);
    Describe(*item);
    item->DeviceDependent(deviceDependent);
    item->UseScaleType(useScaleType);
    item->ImageKey(imageKey.empty() ? key : imageKey);
    if (formats)
        item->SetAllowedFormats(*formats);
    return items_.Append(std::move(item), key);
}

/// What depends on the device: whether it supports the type, and what it calls it.
void ToolItems::Describe(ToolItem& item) const {
    const std::int32_t type = item.ItemType();
    std::wstring text;
    switch (item.ItemCategory()) {
    case item_category::kCodeRelated:
        item.supported_ = root_.SupportedCodeRelItem(type);
        text = device::ParameterAccess(state_).ValueLabel(kCodeRelType, type);
        break;
    case item_category::kGlobal:
        item.supported_ = root_.SupportedGlobalItem(type);
        text = device::ParameterAccess(state_).ValueLabel(kGlobalType, type);
        break;
    default:
        item.supported_ = true;
    }
    // A device that has no name for a type leaves it with the built-in one.
    item.ItemText(text.empty() ? item.TooltipText() : text);
}

} // namespace orv::model
