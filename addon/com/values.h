#pragma once
// A parameter's value, to and from automation.
#include "addon/com/automation.h"
#include "device/value.h"

namespace orv::addon::com {

/// Raises 13 (type mismatch) for what the product has no value for.
device::Value ToValue(const VARIANT& variant);
Variant ToVariant(const device::Value& value);
/// Array of bytes; empty for an empty value, 13 for any other.
Bytes ToByteArray(const VARIANT& variant);
Variant FromByteArray(const Bytes& bytes);

} // namespace orv::addon::com
