#include "controls/mb_edit_text.h"

#include <algorithm>
#include <array>

namespace orv::controls {
namespace {

constexpr std::size_t kLongest = 8;
constexpr std::uint8_t kReturn = 13;

struct Token {
    std::array<wchar_t, kLongest> characters{};
    ShadowCell cell;
    std::size_t Length() const { return static_cast<std::size_t>(cell.tokenLength); }
};

/// The names come from the resources: too slow to ask for again with every byte.
const std::array<Token, 256>& Tokens() {
    static const std::array<Token, 256> tokens = [] {
        std::array<Token, 256> all;
        for (std::size_t i = 0; i < all.size(); ++i) {
            const auto byte = static_cast<std::uint8_t>(i);
            std::wstring name = text::ByteToken(byte, true, true);
            name.resize(std::min(name.size(), kLongest));
            std::copy(name.begin(), name.end(), all[i].characters.begin());
            all[i].cell = {byte, static_cast<std::int16_t>(name.size())};
        }
        return all;
    }();
    return tokens;
}

std::ptrdiff_t Offset(std::size_t position) {
    return static_cast<std::ptrdiff_t>(position);
}

} // namespace

std::size_t TokenText::LengthOf(std::uint8_t byte) {
    return Tokens()[byte].Length();
}

void TokenText::Reserve(std::size_t size) {
    text_.reserve(size);
    // Text grows by itself to twice what it had, cells would not.
    if (size > cells_.capacity())
        cells_.reserve(std::max(size, 2 * cells_.capacity()));
}

void TokenText::Assign(std::span<const std::uint8_t> bytes) {
    const auto& tokens = Tokens();
    std::size_t length = 0;
    for (std::uint8_t byte : bytes)
        length += tokens[byte].Length();
    Reserve(length);
    text_.resize(length);
    cells_.resize(length);
    wchar_t* character = text_.data();
    ShadowCell* cell = cells_.data();
    for (std::uint8_t byte : bytes) {
        const Token& token = tokens[byte];
        for (std::size_t i = 0; i < token.Length(); ++i) {
            *character++ = token.characters[i];
            *cell++ = token.cell;
        }
    }
}

void TokenText::AppendLineBreak() {
    Reserve(Size() + 1);
    text_ += kLineBreak;
    cells_.push_back({kReturn, 1});
}

std::size_t TokenText::Floor(std::size_t position) const {
    if (position >= cells_.size())
        return cells_.size();
    // Two equal tokens side by side have equal cells; but no name contains the bracket that it begins with.
    if (cells_[position].tokenLength > 1)
        while (text_[position] != L'<')
            --position;
    return position;
}

std::size_t TokenText::Ceiling(std::size_t position) const {
    const std::size_t border = Floor(position);
    return border >= position ? border : border + static_cast<std::size_t>(cells_[border].tokenLength);
}

Bytes TokenText::Data(std::size_t at, std::size_t length) const {
    Bytes data(length); // as many at most
    std::uint8_t* byte = data.data();
    for (std::size_t i = at; i < at + length; i += static_cast<std::size_t>(cells_[i].tokenLength))
        *byte++ = cells_[i].value;
    data.resize(static_cast<std::size_t>(byte - data.data()));
    return data;
}

TokenText TokenText::Part(std::size_t at, std::size_t length) const {
    TokenText part;
    part.text_ = text_.substr(at, length);
    part.cells_.assign(cells_.begin() + Offset(at), cells_.begin() + Offset(at + length));
    return part;
}

void TokenText::Splice(std::size_t at, std::size_t length, const TokenText& with) {
    Reserve(Size() - length + with.Size());
    text_.replace(at, length, with.text_);
    const auto first = cells_.erase(cells_.begin() + Offset(at), cells_.begin() + Offset(at + length));
    cells_.insert(first, with.cells_.begin(), with.cells_.end());
}

} // namespace orv::controls
