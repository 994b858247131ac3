#pragma once
// Texts that came from outside (a device, a host, a file, its name, a command line) as a message shows them. Nothing in
// them can move a cursor, change colours, hide or reorder what stands beside them, or fill a screen.
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace orv::text {

inline constexpr std::size_t kLongestExcerpt = 200;
inline constexpr std::wstring_view kCutSign = L"...";

/// `text` with everything that shows no character of its own in angle brackets: control characters below 32 by name,
/// "<ESC>", byte 127 as "<$7F>", others by code point, "<U+202E>". Anything else stays as it is.
std::wstring Printable(std::wstring_view text);

/// The same for a message: without the line breaks at its end, and at most kLongestExcerpt characters. A longer one
/// keeps its start, whole characters and whole names, and ends in "...".
std::wstring Excerpt(std::wstring_view text);
void AppendExcerpt(std::wstring& line, std::wstring_view text);

/// The same in a buffer, without taking memory. Answers the length.
std::size_t ExcerptInto(std::wstring_view text, std::span<wchar_t, kLongestExcerpt> buffer) noexcept;

} // namespace orv::text
