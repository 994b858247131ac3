#pragma once
// A list of values as a 1-based keyed collection, and back.
#include <span>
#include <vector>

#include "device/value.h"
#include "model/keyed_collection.h"

namespace orv::model {

/// Members in order, each under its own text as key; a value whose text is taken already has no key.
/// Raises 13 (type mismatch) for a value without a text.
KeyedCollection<device::Value> ToCollection(std::span<const device::Value> values);

/// 0-based; empty for an empty collection.
std::vector<device::Value> ToArray(const KeyedCollection<device::Value>& collection);

} // namespace orv::model
