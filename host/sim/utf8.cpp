#include "host/sim/utf8.h"

#include <cstddef>
#include <cstdint>

#include "text/excerpt.h"

namespace orv::sim {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsCharacter(char32_t c) {
    return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF);
}

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
        return;
    }
    const int tail = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    const int lead = tail == 1 ? 0xC0 : tail == 2 ? 0xE0 : 0xF0;
    out += static_cast<char>(static_cast<char32_t>(lead) | (c >> (6 * tail)));
    for (int shift = 6 * (tail - 1); shift >= 0; shift -= 6)
        out += static_cast<char>(0x80 | ((c >> shift) & 0x3F));
}

void AppendWide(std::wstring& out, char32_t c) {
    if constexpr (sizeof(wchar_t) == 2) {
        if (c > 0xFFFF) {
            out += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
            out += static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
            return;
        }
    }
    out += static_cast<wchar_t>(c);
}

/// Character at `at`, moved behind it; kReplacement with `ok` false for a malformed byte, which alone is skipped.
char32_t NextUtf8(std::string_view bytes, std::size_t& at, bool& ok) {
    const auto lead = static_cast<std::uint8_t>(bytes[at]);
    ++at;
    ok = true;
    if (lead < 0x80)
        return lead;
    const std::size_t tail = lead >= 0xF0 && lead < 0xF8   ? 3
                             : lead >= 0xE0 && lead < 0xF0 ? 2
                             : lead >= 0xC2 && lead < 0xE0 ? 1
                                                           : 0;
    ok = false;
    if (tail == 0 || at + tail > bytes.size())
        return kReplacement;
    char32_t c = lead & (0x3FU >> tail);
    for (std::size_t i = 0; i < tail; ++i) {
        const auto next = static_cast<std::uint8_t>(bytes[at + i]);
        if ((next & 0xC0) != 0x80)
            return kReplacement;
        c = (c << 6) | (next & 0x3FU);
    }
    constexpr char32_t kShortest[] = {0, 0x80, 0x800, 0x10000};
    if (c < kShortest[tail] || !IsCharacter(c))
        return kReplacement;
    ok = true;
    at += tail;
    return c;
}

} // namespace

std::string ToUtf8(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto c = static_cast<char32_t>(text[i]);
        if constexpr (sizeof(wchar_t) == 2) {
            c &= 0xFFFF;
            const bool high = c >= 0xD800 && c < 0xDC00;
            if (high && i + 1 < text.size()) {
                const char32_t low = static_cast<char32_t>(text[i + 1]) & 0xFFFF;
                if (low >= 0xDC00 && low < 0xE000) {
                    c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                    ++i;
                }
            }
        }
        AppendUtf8(out, IsCharacter(c) ? c : kReplacement);
    }
    return out;
}

std::wstring FromUtf8(std::string_view bytes) {
    std::wstring out;
    out.reserve(bytes.size());
    bool ok = true;
    for (std::size_t at = 0; at < bytes.size();)
        AppendWide(out, NextUtf8(bytes, at, ok));
    return out;
}

bool IsUtf8(std::string_view bytes) {
    bool ok = true;
    for (std::size_t at = 0; at < bytes.size() && ok;)
        NextUtf8(bytes, at, ok);
    return ok;
}

std::string Excerpt(std::string_view bytes) {
    // So many bytes are more characters than are shown; a text of megabytes is not converted for its first lines.
    constexpr std::size_t kEnough = 8 * text::kLongestExcerpt;
    if (bytes.size() > kEnough)
        bytes = bytes.substr(0, kEnough);
    return ToUtf8(text::Excerpt(FromUtf8(bytes)));
}

std::string Printable(std::string_view bytes) {
    return ToUtf8(text::Printable(FromUtf8(bytes)));
}

} // namespace orv::sim
