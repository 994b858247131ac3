#pragma once
// A device parameter's value and its conversions.
#include <cstdint>
#include <string>
#include <variant>

#include "text/bytes.h"
#include "text/error.h"

namespace orv::device {

/// Empty, 16-bit integer, 32-bit integer, byte, text, byte array (one 8-bit byte a character).
using Value = std::variant<std::monostate, std::int16_t, std::int32_t, std::uint8_t, std::wstring, Bytes>;

/// Type codes of the write-back cache; the numbers are the automation variant types of the host.
enum class WireType : std::int32_t { Int16 = 2, Int32 = 3, Text = 8, Byte = 17, ByteArray = 8209 };

/// Conversions. Empty converts to 0, false, "" and an empty array; text that reads as a decimal number converts to
/// a number and back. Raise 6 (overflow) when the number does not fit, 13 (type mismatch) where the kinds do not allow.
std::int32_t ToInt32(const Value& value);
std::int16_t ToInt16(const Value& value);
std::uint8_t ToByte(const Value& value);
bool ToBool(const Value& value); ///< true when not 0
std::wstring ToText(const Value& value);
Bytes ToBytes(const Value& value);
/// The same of a value that is not needed any more: its text or bytes are taken out of it.
std::wstring ToText(Value&& value);
Bytes ToBytes(Value&& value);

/// Wire type of the value held; raises 13 for an empty value.
WireType TypeOf(const Value& value);

/// `value` as the wire type asks for it, by the conversions above.
Value Convert(const Value& value, WireType type);
Value Convert(Value&& value, WireType type);

/// As a log line shows it: byte arrays in display form, numbers in decimal, empty as "".
std::wstring LogForm(const Value& value);
void AppendLogForm(std::wstring& line, const Value& value);

/// `number` in decimal, behind `text`.
void AppendDecimal(std::wstring& text, std::int32_t number);

/// 16-bit arithmetic that raises 6 (overflow) instead of wrapping.
std::int16_t CheckedInt16(std::int64_t number);

} // namespace orv::device
