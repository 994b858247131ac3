#pragma once
// Bytes as people read them: names of control characters, display form, hexadecimal.
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orv {
using Bytes = std::vector<std::uint8_t>;
}

namespace orv::text {

/// Two upper-case hexadecimal digits.
std::wstring Hex2(std::uint8_t byte);

/// Two digits a byte, joined with `separator`.
std::wstring Hex(std::span<const std::uint8_t> bytes, std::wstring_view separator = {});

/// Name of a byte without brackets, empty for one shown as itself: 0..31 by their names in ASCII (ANSI X3.4),
/// 32 "Space" when `nameSpace`, 128..255 "$" and two hexadecimal digits.
std::wstring ByteName(std::uint8_t byte, bool nameSpace);

/// What stands for one byte in a displayed text: its name, in angle brackets when `brackets`, else its character.
std::wstring ByteToken(std::uint8_t byte, bool brackets, bool nameSpace);

/// Tokens with brackets and named space, joined.
std::wstring DisplayForm(std::span<const std::uint8_t> bytes);
void AppendDisplayForm(std::wstring& text, std::span<const std::uint8_t> bytes);

/// Pairs of hexadecimal digits to bytes. Raises 13 (type mismatch) for a pair that is not a number and for an
/// odd count of digits.
Bytes FromHex(std::wstring_view digits);

} // namespace orv::text
