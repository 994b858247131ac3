#include "text/excerpt.h"

#include <algorithm>
#include <array>

#include "text/texts.h"

namespace orv::text {
namespace {

constexpr std::uint16_t kFirstNameId = 4096;

struct Range {
    char32_t first;
    char32_t last;
};

/// What a terminal or a message box acts upon, or draws nothing for.
constexpr Range kHidden[] = {
    {0x00, 0x1F},       {0x7F, 0x9F},       {0xAD, 0xAD},      {0x34F, 0x34F},   {0x61C, 0x61C},   {0x115F, 0x1160},
    {0x17B4, 0x17B5},   {0x180B, 0x180F},   {0x200B, 0x200F},  {0x2028, 0x202E}, {0x2060, 0x206F}, {0x3164, 0x3164},
    {0xD800, 0xDFFF},   {0xFDD0, 0xFDEF},   {0xFEFF, 0xFEFF},  {0xFFA0, 0xFFA0}, {0xFFF0, 0xFFFB}, {0xFFFE, 0xFFFF},
    {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A}, {0xE0000, 0xE0FFF}};

bool IsHidden(char32_t c) {
    if (c > 0x10FFFF || (c & 0xFFFE) == 0xFFFE)
        return true;
    return std::any_of(std::begin(kHidden), std::end(kHidden),
                       [c](const Range& range) { return c >= range.first && c <= range.last; });
}

/// Most of what is shown; saves the look into the table.
bool IsPlain(wchar_t c) {
    return c >= L' ' && c < 0x7F;
}

/// What stands for one character, in place.
class Token {
  public:
    void Append(std::wstring_view part) {
        part = part.substr(0, characters_.size() - size_);
        std::copy(part.begin(), part.end(), characters_.begin() + static_cast<std::ptrdiff_t>(size_));
        size_ += part.size();
    }
    std::wstring_view View() const { return {characters_.data(), size_}; }

  private:
    std::array<wchar_t, 24> characters_{};
    std::size_t size_ = 0;
};

void AppendHex(Token& token, char32_t c, int digits) {
    constexpr wchar_t hex[] = L"0123456789ABCDEF";
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
        token.Append({&hex[c >> shift & 15U], 1});
}

Token NameOf(char32_t c) {
    Token token;
    if (c < 0x20) {
        token.Append(L"<");
        token.Append(Find(static_cast<Id>(kFirstNameId + c)).substr(0, 20));
    } else if (c == 0x7F) {
        token.Append(L"<$7F");
    } else {
        token.Append(L"<U+");
        AppendHex(token, c, c > 0xFFFFFF ? 8 : c > 0xFFFF ? 6 : 4);
    }
    token.Append(L">");
    return token;
}

/// Takes the first character off `text`.
Token Next(std::wstring_view& text) {
    const auto unit = [&](std::size_t at) {
        return static_cast<char32_t>(text[at]) & (sizeof(wchar_t) == 2 ? 0xFFFFU : ~0U);
    };
    char32_t c = unit(0);
    std::size_t size = 1;
    if (c >= 0xD800 && c < 0xDC00 && text.size() > 1 && unit(1) >= 0xDC00 && unit(1) < 0xE000) {
        c = 0x10000 + ((c - 0xD800) << 10) + (unit(1) - 0xDC00);
        size = 2;
    }
    Token token;
    if (IsHidden(c))
        token = NameOf(c);
    else
        token.Append(text.substr(0, size));
    text.remove_prefix(size);
    return token;
}

} // namespace

std::wstring Printable(std::wstring_view text) {
    std::wstring printable;
    printable.reserve(text.size());
    while (!text.empty()) {
        if (IsPlain(text.front())) {
            printable += text.front();
            text.remove_prefix(1);
        } else {
            printable += Next(text).View();
        }
    }
    return printable;
}

std::size_t ExcerptInto(std::wstring_view text, std::span<wchar_t, kLongestExcerpt> buffer) noexcept {
    text = text.substr(0, text.find_last_not_of(L"\r\n") + 1);
    std::size_t size = 0;
    std::size_t cut = 0; // the last place from where on the sign of cutting fits
    while (!text.empty()) {
        const Token token = Next(text);
        const std::wstring_view view = token.View();
        if (size + view.size() > buffer.size()) {
            std::copy(kCutSign.begin(), kCutSign.end(), buffer.begin() + static_cast<std::ptrdiff_t>(cut));
            return cut + kCutSign.size();
        }
        std::copy(view.begin(), view.end(), buffer.begin() + static_cast<std::ptrdiff_t>(size));
        size += view.size();
        if (size + kCutSign.size() <= buffer.size())
            cut = size;
    }
    return size;
}

void AppendExcerpt(std::wstring& line, std::wstring_view text) {
    if (text.size() <= kLongestExcerpt && std::all_of(text.begin(), text.end(), IsPlain)) {
        line += text;
        return;
    }
    std::array<wchar_t, kLongestExcerpt> buffer;
    line.append(buffer.data(), ExcerptInto(text, buffer));
}

std::wstring Excerpt(std::wstring_view text) {
    std::wstring excerpt;
    AppendExcerpt(excerpt, text);
    return excerpt;
}

} // namespace orv::text
