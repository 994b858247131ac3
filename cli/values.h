#pragma once
// Values as the command line shows and takes them. Texts have a display form that reads back as the same text: "<CR>"
// and the like for control characters and the blank, "<$C8>" for a byte by its number, anything else as itself. The
// sign "<" and the byte 127 always stand there by number.
#include <cstdint>
#include <string>
#include <string_view>

#include "device/parameter_access.h"
#include "device/value.h"

namespace orv::cli {

/// A value that does not read; Reason() says why, with excerpts of what was given.
class ValueError : public std::exception {
  public:
    explicit ValueError(std::wstring reason) : reason_(std::move(reason)) {}
    const std::wstring& Reason() const { return reason_; }
    const char* what() const noexcept override { return "a value that does not read"; }

  private:
    std::wstring reason_;
};

std::wstring DisplayBytes(const Bytes& bytes);
/// A character that the code page lacks stands as itself.
std::wstring DisplayText(const std::wstring& text, device::ParameterAccess& access);
/// In double quotes; a quote inside stands by its number.
std::wstring Quoted(const std::wstring& display);
/// Any parameter's value: numbers in decimal, texts and byte arrays quoted.
std::wstring DisplayValue(const device::Value& value, device::ParameterAccess& access);
/// "int16", "int32", "byte", "text", "bytes".
std::wstring TypeName(device::WireType type);

/// The text of a display form. Raises ValueError for an unknown name in angle brackets and, unless `force`, for a
/// character that the code page lacks.
std::wstring ParseText(std::wstring_view display, device::ParameterAccess& access, bool force);

/// Decimal, or "&H" and the digits of the bit pattern. Raises ValueError when it is neither or does not fit a number of
/// `bits` bits.
std::int32_t ParseNumber(std::wstring_view text, int bits, bool isSigned);

/// "1", "0", "true" or "false", in any case. Raises ValueError.
bool ParseSwitch(std::wstring_view text);

/// Equal but for the case of ASCII letters.
bool SameIgnoringCase(std::wstring_view a, std::wstring_view b);

} // namespace orv::cli
