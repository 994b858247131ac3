#pragma once
// Texts shown to the user, by id. Portable programs link the table of texts/texts.def; the component links a
// loader over its own string table instead, so that a translated resource replaces every text at once.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orv::text {

enum class Id : std::uint16_t {
#define ORV_TEXT(name, id, english) name = id,
#include "text/texts.def"
#undef ORV_TEXT
};

/// The text of `id` where it stands in the table; empty when the table lacks it. Not terminated. Takes no memory.
std::wstring_view Find(Id id) noexcept;

/// A copy of it. Never throws but for want of memory.
inline std::wstring Load(Id id) {
    return std::wstring(Find(id));
}

/// A copy in a buffer of `size` characters, 1 or more, cut to fit and always terminated. Answers the length.
inline std::size_t LoadInto(Id id, wchar_t* buffer, std::size_t size) noexcept {
    const std::wstring_view text = Find(id).substr(0, size - 1);
    std::copy(text.begin(), text.end(), buffer);
    buffer[text.size()] = 0;
    return text.size();
}

} // namespace orv::text
