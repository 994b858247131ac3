#pragma once
// Texts outside the program (files, lines of the device's protocol, console) are UTF-8.
#include <string>
#include <string_view>

namespace orv::sim {

/// Lone surrogates and values that are no characters become U+FFFD.
std::string ToUtf8(std::wstring_view text);

/// Malformed sequences become U+FFFD, one for each byte that starts none.
std::wstring FromUtf8(std::string_view bytes);

bool IsUtf8(std::string_view bytes);

/// text::Excerpt and text::Printable of UTF-8.
std::string Excerpt(std::string_view bytes);
std::string Printable(std::string_view bytes);

} // namespace orv::sim
