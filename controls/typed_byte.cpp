#include "controls/typed_byte.h"

#include <algorithm>
#include <array>

namespace orv::controls {
namespace {

/// Characters of the bytes 128 to 159; 0 where the code page has none and the byte is the character.
constexpr std::array<std::uint16_t, 32> kHighControls = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

} // namespace

std::optional<std::uint8_t> TypedByte(wchar_t character) {
    // wchar_t is signed on some systems; no character is negative.
    const std::int64_t code = character;
    if (code >= 0 && code < 256)
        return static_cast<std::uint8_t>(code);
    const auto found = std::find(kHighControls.begin(), kHighControls.end(), code);
    if (found == kHighControls.end())
        return std::nullopt;
    return static_cast<std::uint8_t>(128 + (found - kHighControls.begin()));
}

} // namespace orv::controls
