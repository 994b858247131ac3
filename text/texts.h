#pragma once
// Texts shown to the user, by id. Portable programs link the table of texts/texts.def; the component links a
// loader over its own string table instead, so that a translated resource replaces every text at once.
#include <cstddef>
#include <cstdint>
#include <string>

namespace orv::text {

enum class Id : std::uint16_t {
#define ORV_TEXT(name, id, english) name = id,
#include "text/texts.def"
#undef ORV_TEXT
};

/// The text of `id`; empty when the string table lacks it. Never throws but for want of memory.
std::wstring Load(Id id);

/// The same into a buffer of `size` characters, cut to fit and always terminated; takes no memory. Answers the length.
std::size_t LoadInto(Id id, wchar_t* buffer, std::size_t size) noexcept;

} // namespace orv::text
