#include "device/value.h"

#include <charconv>
#include <limits>
#include <utility>

namespace orv::device {
namespace {

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

[[noreturn]] void RaiseMismatch() {
    throw Error(error_number::kTypeMismatch);
}

/// Decimal number with optional sign and surrounding blanks; nothing else reads as a number.
std::int64_t ParseDecimal(const std::wstring& text) {
    const auto first = text.find_first_not_of(L' ');
    const auto last = text.find_last_not_of(L' ');
    if (first == std::wstring::npos)
        RaiseMismatch();
    std::size_t i = first;
    const bool negative = text[i] == L'-';
    if (text[i] == L'-' || text[i] == L'+')
        ++i;
    if (i > last)
        RaiseMismatch();
    std::int64_t number = 0;
    for (; i <= last; ++i) {
        if (text[i] < L'0' || text[i] > L'9')
            RaiseMismatch();
        number = number * 10 + (text[i] - L'0');
        if (number > std::int64_t{1} << 40)
            throw Error(error_number::kOverflow);
    }
    return negative ? -number : number;
}

std::int64_t ToNumber(const Value& value) {
    return std::visit(Overloaded{[](std::monostate) -> std::int64_t { return 0; },
                                 [](const std::wstring& text) -> std::int64_t { return ParseDecimal(text); },
                                 [](const Bytes&) -> std::int64_t { RaiseMismatch(); },
                                 [](auto number) -> std::int64_t { return number; }},
                      value);
}

template <typename Number>
Number Narrow(std::int64_t number) {
    if (number < std::numeric_limits<Number>::min() || number > std::numeric_limits<Number>::max())
        throw Error(error_number::kOverflow);
    return static_cast<Number>(number);
}

} // namespace

std::int32_t ToInt32(const Value& value) {
    return Narrow<std::int32_t>(ToNumber(value));
}
std::int16_t ToInt16(const Value& value) {
    return Narrow<std::int16_t>(ToNumber(value));
}
std::uint8_t ToByte(const Value& value) {
    return Narrow<std::uint8_t>(ToNumber(value));
}
bool ToBool(const Value& value) {
    return ToNumber(value) != 0;
}
std::int16_t CheckedInt16(std::int64_t number) {
    return Narrow<std::int16_t>(number);
}

std::wstring ToText(const Value& value) {
    return std::visit(Overloaded{[](std::monostate) { return std::wstring(); },
                                 [](const std::wstring& text) { return text; },
                                 [](const Bytes&) -> std::wstring { RaiseMismatch(); },
                                 [](auto number) {
                                     std::wstring text;
                                     AppendDecimal(text, number);
                                     return text;
                                 }},
                      value);
}

Bytes ToBytes(const Value& value) {
    return std::visit(Overloaded{[](std::monostate) { return Bytes(); }, [](const Bytes& bytes) { return bytes; },
                                 [](const auto&) -> Bytes { RaiseMismatch(); }},
                      value);
}

WireType TypeOf(const Value& value) {
    return std::visit(
        Overloaded{[](std::monostate) -> WireType { RaiseMismatch(); }, [](std::int16_t) { return WireType::Int16; },
                   [](std::int32_t) { return WireType::Int32; }, [](std::uint8_t) { return WireType::Byte; },
                   [](const std::wstring&) { return WireType::Text; },
                   [](const Bytes&) { return WireType::ByteArray; }},
        value);
}

std::wstring ToText(Value&& value) {
    if (auto* text = std::get_if<std::wstring>(&value))
        return std::move(*text);
    return ToText(std::as_const(value));
}

Bytes ToBytes(Value&& value) {
    if (auto* bytes = std::get_if<Bytes>(&value))
        return std::move(*bytes);
    return ToBytes(std::as_const(value));
}

Value Convert(const Value& value, WireType type) {
    return Convert(Value(value), type);
}

Value Convert(Value&& value, WireType type) {
    switch (type) {
    case WireType::Int16:
        return ToInt16(value);
    case WireType::Int32:
        return ToInt32(value);
    case WireType::Text:
        return ToText(std::move(value));
    case WireType::Byte:
        return ToByte(value);
    case WireType::ByteArray:
        return ToBytes(std::move(value));
    }
    RaiseMismatch();
}

void AppendDecimal(std::wstring& text, std::int32_t number) {
    char digits[12];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    text.append(std::begin(digits), end);
}

void AppendLogForm(std::wstring& line, const Value& value) {
    std::visit(Overloaded{[](std::monostate) {}, [&](const std::wstring& text) { line += text; },
                          [&](const Bytes& bytes) { text::AppendDisplayForm(line, bytes); },
                          [&](auto number) { AppendDecimal(line, number); }},
               value);
}

std::wstring LogForm(const Value& value) {
    std::wstring form;
    AppendLogForm(form, value);
    return form;
}

} // namespace orv::device
