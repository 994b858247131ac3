#include "model/list_helpers.h"

namespace orv::model {

KeyedCollection<device::Value> ToCollection(std::span<const device::Value> values) {
    KeyedCollection<device::Value> collection;
    for (const device::Value& value : values) {
        const std::wstring key = device::ToText(value);
        collection.Append(std::make_unique<device::Value>(value), collection.PositionOf(key) == 0 ? key : L"");
    }
    return collection;
}

std::vector<device::Value> ToArray(const KeyedCollection<device::Value>& collection) {
    std::vector<device::Value> values;
    for (std::int32_t position = 1; position <= collection.Count(); ++position)
        values.push_back(collection.Item(position));
    return values;
}

} // namespace orv::model
