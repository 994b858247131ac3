#include "text/bytes.h"

#include <array>

#include "text/error.h"
#include "text/texts.h"

namespace orv::text {
namespace {

constexpr std::uint16_t kFirstNameId = 4096;

int Digit(wchar_t c) {
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    if (c >= L'A' && c <= L'F')
        return c - L'A' + 10;
    if (c >= L'a' && c <= L'f')
        return c - L'a' + 10;
    throw Error(error_number::kTypeMismatch);
}

} // namespace

std::wstring Hex2(std::uint8_t byte) {
    constexpr wchar_t digits[] = L"0123456789ABCDEF";
    return {digits[byte >> 4], digits[byte & 15]};
}

std::wstring Hex(std::span<const std::uint8_t> bytes, std::wstring_view separator) {
    std::wstring result;
    for (std::uint8_t byte : bytes) {
        if (!result.empty())
            result += separator;
        result += Hex2(byte);
    }
    return result;
}

std::wstring ByteName(std::uint8_t byte, bool nameSpace) {
    if (byte < 32 || (byte == 32 && nameSpace))
        return Load(static_cast<Id>(kFirstNameId + byte));
    if (byte > 127)
        return L"$" + Hex2(byte);
    return {};
}

std::wstring ByteToken(std::uint8_t byte, bool brackets, bool nameSpace) {
    std::wstring name = ByteName(byte, nameSpace);
    if (name.empty())
        return {static_cast<wchar_t>(byte)};
    return brackets ? L"<" + name + L">" : name;
}

void AppendDisplayForm(std::wstring& text, std::span<const std::uint8_t> bytes) {
    // Looked up once: a display form is made of every byte array that is logged.
    static const std::array<std::wstring, 256> tokens = [] {
        std::array<std::wstring, 256> all;
        for (int byte = 0; byte < 256; ++byte)
            all[static_cast<std::size_t>(byte)] = ByteToken(static_cast<std::uint8_t>(byte), true, true);
        return all;
    }();
    for (const std::uint8_t byte : bytes)
        text += tokens[byte];
}

std::wstring DisplayForm(std::span<const std::uint8_t> bytes) {
    std::wstring result;
    AppendDisplayForm(result, bytes);
    return result;
}

Bytes FromHex(std::wstring_view digits) {
    if (digits.size() % 2 != 0)
        throw Error(error_number::kTypeMismatch);
    Bytes result;
    result.reserve(digits.size() / 2);
    for (std::size_t i = 0; i < digits.size(); i += 2)
        result.push_back(static_cast<std::uint8_t>(Digit(digits[i]) * 16 + Digit(digits[i + 1])));
    return result;
}

} // namespace orv::text
