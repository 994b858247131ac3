#include "host/sim/parameter_values.h"

#include <cstring>
#include <stdexcept>

#include "host/sim/utf8.h"

namespace orv::sim {
namespace {

using device::Value;
using device::WireType;

constexpr std::size_t kWord = sizeof(std::uint32_t);

bool IsTextual(WireType type) {
    return type == WireType::Text || type == WireType::ByteArray;
}

std::string TextOf(const Value& value) {
    if (const auto* bytes = std::get_if<Bytes>(&value))
        return {bytes->begin(), bytes->end()};
    const auto* text = std::get_if<std::wstring>(&value);
    return text != nullptr ? ToUtf8(*text) : std::string();
}

void PutWord(std::string& packed, std::size_t i, std::uint32_t word) {
    std::memcpy(packed.data() + i * kWord, &word, kWord);
}

std::size_t Flags(std::size_t count) {
    return (count + 7) / 8;
}

} // namespace

ParameterValues ParameterValues::Packed(const std::vector<Value>& values, WireType type) {
    ParameterValues made;
    made.isPacked_ = true;
    made.type_ = type;
    made.count_ = static_cast<std::uint32_t>(values.size());
    const std::size_t flags = values.size() * kWord;
    std::string packed(flags + Flags(values.size()), '\0');
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (std::holds_alternative<std::monostate>(values[i]))
            packed[flags + i / 8] = static_cast<char>(packed[flags + i / 8] | 1 << i % 8);
        if (IsTextual(type)) {
            packed += TextOf(values[i]);
            PutWord(packed, i, static_cast<std::uint32_t>(packed.size()));
        } else {
            PutWord(packed, i, static_cast<std::uint32_t>(device::ToInt32(values[i])));
        }
    }
    made.packed_.assign(packed); // without the room that it grew in
    return made;
}

Value ParameterValues::at(std::size_t i) const {
    if (i >= size())
        throw std::out_of_range("no such element");
    return isPacked_ ? Unpacked(i) : plain_[i];
}

bool ParameterValues::operator==(const ParameterValues& other) const {
    if (isPacked_ && other.isPacked_ && type_ == other.type_)
        return packed_ == other.packed_ && count_ == other.count_;
    if (size() != other.size())
        return false;
    for (std::size_t i = 0; i < size(); ++i)
        if (at(i) != other.at(i))
            return false;
    return true;
}

std::vector<Value>& ParameterValues::Plain() {
    if (isPacked_) {
        std::vector<Value> plain;
        plain.reserve(count_);
        for (std::size_t i = 0; i < count_; ++i)
            plain.push_back(Unpacked(i));
        plain_ = std::move(plain);
        packed_ = {};
        isPacked_ = false;
    }
    return plain_;
}

std::uint32_t ParameterValues::Word(std::size_t i) const {
    std::uint32_t word = 0;
    std::memcpy(&word, packed_.data() + i * kWord, kWord);
    return word;
}

Value ParameterValues::Unpacked(std::size_t i) const {
    const std::size_t flags = std::size_t{count_} * kWord;
    if ((packed_[flags + i / 8] >> i % 8 & 1) != 0)
        return {};
    if (!IsTextual(type_))
        return device::Convert(static_cast<std::int32_t>(Word(i)), type_);
    const std::size_t begin = i == 0 ? flags + Flags(count_) : Word(i - 1);
    const auto text = std::string_view(packed_).substr(begin, Word(i) - begin);
    if (type_ == WireType::Text)
        return FromUtf8(text);
    return Bytes(text.begin(), text.end());
}

} // namespace orv::sim
