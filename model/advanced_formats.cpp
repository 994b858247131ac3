#include "model/advanced_formats.h"

#include <algorithm>
#include <utility>

#include "model/device_shape.h"

namespace orv::model {
AdvancedFormat& AdvancedFormats::Add(std::int16_t index, const std::wstring& key) {
    return formats_.Append(std::make_unique<AdvancedFormat>(state_, root_, index), key);
}

bool AdvancedFormats::Load() {
    device::ParameterAccess access(state_);
    const std::int16_t count = FormatCount(access);
    auto before = std::exchange(formats_, {});
    itemSlots_ = ItemSlotCount(access, count);
    formats_.Reserve(std::max<std::int32_t>(count, 0));
    for (std::int32_t i = 1; i <= count; ++i) {
        AdvancedFormat& format = Add(static_cast<std::int16_t>(i), Numbered(L"Format", i));
        if (i <= before.Count())
            format.Recycle(before.Item(i));
        format.Load(itemSlots_);
    }
    return true;
}

void AdvancedFormats::Save(device::MIBParamCache& cache) const {
    for (const AdvancedFormat& format : formats_)
        format.Save(cache);
}

} // namespace orv::model
