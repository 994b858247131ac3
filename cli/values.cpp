#include "cli/values.h"

#include <algorithm>
#include <limits>

#include "text/bytes.h"
#include "text/excerpt.h"

namespace orv::cli {
namespace {

constexpr std::uint8_t kDelete = 127;

wchar_t Lower(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

std::wstring Token(std::uint8_t byte) {
    if (byte == '<' || byte == kDelete)
        return L"<$" + text::Hex2(byte) + L">";
    return text::ByteToken(byte, true, true);
}

int HexDigit(wchar_t c) {
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    c = Lower(c);
    return c >= L'a' && c <= L'f' ? c - L'a' + 10 : -1;
}

/// The byte called `name`, with or without regard to case; -1 when there is none.
int NamedByte(std::wstring_view name) {
    if (name.size() == 3 && name[0] == L'$' && HexDigit(name[1]) >= 0 && HexDigit(name[2]) >= 0)
        return HexDigit(name[1]) * 16 + HexDigit(name[2]);
    for (int byte = 0; byte <= ' '; ++byte)
        if (SameIgnoringCase(name, text::ByteName(static_cast<std::uint8_t>(byte), true)))
            return byte;
    return -1;
}

/// Whether `text` comes back from the code page as it went in.
bool InCodePage(const std::wstring& text, device::ParameterAccess& access) {
    return access.BytesToString(access.StringToBytes(text)) == text;
}

std::size_t CharacterLength(std::wstring_view text, std::size_t at) {
    const bool pair = (text[at] & 0xFC00) == 0xD800 && at + 1 < text.size() && (text[at + 1] & 0xFC00) == 0xDC00;
    return pair ? 2 : 1;
}

void RequireCodePage(const std::wstring& text, device::ParameterAccess& access) {
    if (InCodePage(text, access))
        return;
    for (std::size_t i = 0; i < text.size(); i += CharacterLength(text, i)) {
        const std::wstring character = text.substr(i, CharacterLength(text, i));
        if (!InCodePage(character, access))
            throw ValueError(L"the device's code page has no \"" + text::Excerpt(character) +
                             L"\" (--force takes its replacement)");
    }
}

std::wstring Kind(int bits, bool isSigned) {
    return std::to_wstring(bits) + (isSigned ? L"-bit number" : L"-bit number without sign");
}

std::int32_t ParseBitPattern(std::wstring_view text, std::wstring_view digits, int bits, bool isSigned) {
    std::uint64_t pattern = 0;
    for (const wchar_t c : digits) {
        if (HexDigit(c) < 0)
            throw ValueError(L"\"" + text::Excerpt(text) + L"\" is no number");
        pattern = std::min<std::uint64_t>(pattern * 16 + static_cast<unsigned>(HexDigit(c)), std::uint64_t{1} << 40);
    }
    if (digits.empty() || pattern >> bits != 0)
        throw ValueError(L"\"" + text::Excerpt(text) + L"\" does not fit a " + Kind(bits, isSigned));
    const bool negative = isSigned && (pattern >> (bits - 1) & 1U) != 0;
    return static_cast<std::int32_t>(static_cast<std::int64_t>(pattern) - (negative ? std::int64_t{1} << bits : 0));
}

} // namespace

bool SameIgnoringCase(std::wstring_view a, std::wstring_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](wchar_t x, wchar_t y) { return Lower(x) == Lower(y); });
}

std::wstring DisplayBytes(const Bytes& bytes) {
    std::wstring display;
    for (const std::uint8_t byte : bytes)
        display += Token(byte);
    return display;
}

std::wstring DisplayText(const std::wstring& text, device::ParameterAccess& access) {
    const Bytes bytes = access.StringToBytes(text);
    if (access.BytesToString(bytes) == text)
        return DisplayBytes(bytes);
    std::wstring display;
    for (const wchar_t c : text) {
        const std::wstring character(1, c);
        display += InCodePage(character, access) ? DisplayBytes(access.StringToBytes(character)) : character;
    }
    return display;
}

std::wstring Quoted(const std::wstring& display) {
    std::wstring quoted = L"\"";
    for (const wchar_t c : display)
        quoted += c == L'"' ? std::wstring(L"<$22>") : std::wstring(1, c);
    return quoted + L"\"";
}

std::wstring DisplayValue(const device::Value& value, device::ParameterAccess& access) {
    if (const auto* bytes = std::get_if<Bytes>(&value))
        return Quoted(DisplayBytes(*bytes));
    if (const auto* text = std::get_if<std::wstring>(&value))
        return Quoted(DisplayText(*text, access));
    return device::ToText(value);
}

std::wstring TypeName(device::WireType type) {
    using enum device::WireType;
    switch (type) {
    case Int16:
        return L"int16";
    case Int32:
        return L"int32";
    case Byte:
        return L"byte";
    case Text:
        return L"text";
    case ByteArray:
        return L"bytes";
    }
    return L"?";
}

std::wstring ParseText(std::wstring_view display, device::ParameterAccess& access, bool force) {
    std::wstring text;
    while (!display.empty()) {
        if (display[0] != L'<') {
            const std::size_t plain = std::min(display.find(L'<'), display.size());
            const std::wstring run(display.substr(0, plain));
            if (!force)
                RequireCodePage(run, access);
            text += run;
            display.remove_prefix(plain);
            continue;
        }
        const std::size_t end = display.find(L'>');
        if (end == std::wstring_view::npos)
            throw ValueError(L"\"" + text::Excerpt(display) + L"\" has no end; \"<\" itself is written <$3C>");
        const int byte = NamedByte(display.substr(1, end - 1));
        if (byte < 0)
            throw ValueError(L"there is no character called " + text::Excerpt(display.substr(0, end + 1)) +
                             L"; \"<\" itself is written <$3C>");
        text += access.BytesToString({static_cast<std::uint8_t>(byte)});
        display.remove_prefix(end + 1);
    }
    return text;
}

std::int32_t ParseNumber(std::wstring_view text, int bits, bool isSigned) {
    if (text.size() >= 2 && text[0] == L'&' && Lower(text[1]) == L'h')
        return ParseBitPattern(text, text.substr(2), bits, isSigned);
    const bool negative = text.starts_with(L'-');
    const std::wstring_view digits = text.substr(negative || text.starts_with(L'+') ? 1 : 0);
    std::int64_t number = 0;
    for (const wchar_t c : digits) {
        if (c < L'0' || c > L'9')
            throw ValueError(L"\"" + text::Excerpt(text) + L"\" is no number");
        number = std::min(number * 10 + (c - L'0'), std::int64_t{1} << 40);
    }
    if (digits.empty())
        throw ValueError(L"a number is wanted");
    number = negative ? -number : number;
    const std::int64_t maximum = (std::int64_t{1} << (isSigned ? bits - 1 : bits)) - 1;
    const std::int64_t minimum = isSigned ? -maximum - 1 : 0;
    if (number < minimum || number > maximum)
        throw ValueError(text::Excerpt(text) + L" does not fit a " + Kind(bits, isSigned) + L" (" +
                         std::to_wstring(minimum) + L" to " + std::to_wstring(maximum) + L")");
    return static_cast<std::int32_t>(number);
}

bool ParseSwitch(std::wstring_view text) {
    if (text == L"1" || SameIgnoringCase(text, L"true"))
        return true;
    if (text == L"0" || SameIgnoringCase(text, L"false"))
        return false;
    throw ValueError(L"\"" + text::Excerpt(text) + L"\" is neither 1 nor 0");
}

} // namespace orv::cli
