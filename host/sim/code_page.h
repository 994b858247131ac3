#pragma once
// The host's single-byte code page (Windows-1252) with the system's best-fit rules.
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "text/bytes.h"

namespace orv::sim {

/// One UTF-16 code unit; '?' when the code page has nothing near it. Surrogates give '?'.
std::uint8_t ToCodePage(char16_t unit);

/// One byte a code unit, so a character outside the basic plane gives two '?', whatever the width of wchar_t.
Bytes ToCodePage(std::wstring_view text);

/// Exact; the five bytes without a character map to the control characters of the same value.
std::wstring FromCodePage(std::span<const std::uint8_t> bytes);

} // namespace orv::sim
