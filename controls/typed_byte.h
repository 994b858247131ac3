#pragma once
// The byte that a typed or pasted character stands for.
#include <cstdint>
#include <optional>

namespace orv::controls {

/// By code page 1252, in which the bytes of the device are shown; nothing for a character that it lacks.
std::optional<std::uint8_t> TypedByte(wchar_t character);

} // namespace orv::controls
