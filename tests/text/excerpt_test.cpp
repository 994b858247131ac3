#include <array>
#include <string>

#include <gtest/gtest.h>

#include "text/excerpt.h"

namespace orv::text {
namespace {

/// A character beyond 16 bits as this platform holds it.
std::wstring Wide(char32_t c) {
    if constexpr (sizeof(wchar_t) == 4)
        return {static_cast<wchar_t>(c)};
    return {static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10)),
            static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF))};
}

TEST(Excerpt, LeavesWhatCanBeReadAsItIs) {
    for (const std::wstring& text :
         {std::wstring(), std::wstring(L"The host says no."), std::wstring(L"  <b> \"50 %\" {x} \\ "),
          std::wstring(L"Gr\u00F6\u00DFe \u2264 5 \u00B5m, \u4E2D\u6587, \u0645\u0631\u062D\u0628\u0627"),
          Wide(0x1F600)}) {
        EXPECT_EQ(Excerpt(text), text);
        EXPECT_EQ(Printable(text), text);
    }
}

TEST(Excerpt, NamesWhatATerminalOrABoxWouldActUpon) {
    const struct {
        std::wstring text;
        const wchar_t* shown;
    } cases[] = {
        {L"\x1B[2J\x1B]0;x\a", L"<ESC>[2J<ESC>]0;x<BEL>"},
        {std::wstring(L"a\0b", 3), L"a<NUL>b"},
        {L"one\r\ntwo\tx", L"one<CR><LF>two<HT>x"},
        {L"\x7F", L"<$7F>"},
        {L"\u009B31m", L"<U+009B>31m"},
        {L"\u0085", L"<U+0085>"},
        {L"a\u202Egnp.exe\u2069", L"a<U+202E>gnp.exe<U+2069>"},
        {L"\u202A\u202B\u202C\u202D\u2066\u2067\u2068", L"<U+202A><U+202B><U+202C><U+202D><U+2066><U+2067><U+2068>"},
        {L"a\u200Bb\u200Dc\uFEFFd\u00ADe", L"a<U+200B>b<U+200D>c<U+FEFF>d<U+00AD>e"},
        {L"\u2028\u2029", L"<U+2028><U+2029>"},
        {std::wstring(1, wchar_t{0xD83D}) + L"x", L"<U+D83D>x"},
        {std::wstring(1, wchar_t{0xDE00}), L"<U+DE00>"},
        {std::wstring(1, wchar_t{0xFFFE}), L"<U+FFFE>"},
        {Wide(0xE0041) + Wide(0x1FFFF), L"<U+0E0041><U+01FFFF>"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Excerpt(c.text), c.shown);
        EXPECT_EQ(Printable(c.text), c.shown);
        EXPECT_EQ(Excerpt(Excerpt(c.text)), c.shown) << "an excerpt of an excerpt";
    }
}

TEST(Excerpt, DropsTheLineBreaksAtTheEndOfASystemsMessage) {
    EXPECT_EQ(Excerpt(L"Access is denied.\r\n"), L"Access is denied.");
    EXPECT_EQ(Excerpt(L"\r\n"), L"");
    EXPECT_EQ(Printable(L"x\n"), L"x<LF>");
}

TEST(Excerpt, CutsBehindAWholeCharacter) {
    const std::wstring longest(kLongestExcerpt, L'a');
    EXPECT_EQ(Excerpt(longest), longest);
    EXPECT_EQ(Excerpt(longest + L"a"), std::wstring(197, L'a') + L"...");
    EXPECT_EQ(Printable(longest + longest).size(), 400U);
    // The cut may not stand inside a name or a pair, whatever comes before it.
    for (std::size_t before = 190; before <= 200; ++before) {
        const std::wstring plain(before, L'a');
        for (const std::wstring& part : {std::wstring(L"\x1B"), std::wstring(L"\u202E"), Wide(0x1F600)}) {
            const std::wstring excerpt = Excerpt(plain + part + std::wstring(60000, L'b'));
            EXPECT_LE(excerpt.size(), kLongestExcerpt);
            ASSERT_TRUE(excerpt.ends_with(L"...")) << before;
            const std::wstring kept = excerpt.substr(0, excerpt.size() - 3);
            const std::wstring whole = plain + Printable(part) + std::wstring(20, L'b');
            EXPECT_TRUE(whole.starts_with(kept)) << before;
            EXPECT_TRUE(kept.size() <= before || kept.size() >= before + Printable(part).size()) << before;
            EXPECT_GE(kept.size(), before < 197 ? before : 197) << before;
        }
    }
}

TEST(Excerpt, NeedsNoMoreThanItsBuffer) {
    std::array<wchar_t, kLongestExcerpt + 1> guarded;
    guarded.fill(L'#');
    const std::span<wchar_t, kLongestExcerpt> buffer(guarded.data(), kLongestExcerpt);
    EXPECT_LE(ExcerptInto(std::wstring(1000, L'\x1B'), buffer), kLongestExcerpt);
    EXPECT_EQ(guarded.back(), L'#');
    EXPECT_EQ(std::wstring(guarded.data(), 5), L"<ESC>");
}

} // namespace
} // namespace orv::text
