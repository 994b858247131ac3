#include <gtest/gtest.h>

#include "host/sim/code_page.h"
#include "host/sim/utf8.h"

namespace orv::sim {
namespace {

TEST(CodePage, EveryByteComesBack) {
    Bytes all;
    for (int byte = 0; byte < 256; ++byte)
        all.push_back(static_cast<std::uint8_t>(byte));
    EXPECT_EQ(ToCodePage(std::wstring_view(FromCodePage(all))), all);
}

TEST(CodePage, KnowsTheMiddleRowsAndTheirGaps) {
    EXPECT_EQ(FromCodePage(Bytes{0x80, 0x81, 0x8D, 0x8F, 0x90, 0x9D, 0x9F, 0xA4}),
              L"\u20AC\x81\x8D\x8F\x90\x9D\u0178\u00A4");
    EXPECT_EQ(ToCodePage(u'\u2122'), 0x99);
}

TEST(CodePage, FallsBackAsTheSystemDoes) {
    struct Case {
        char16_t unit;
        int byte;
    };
    // First, inner and last units of runs, the units just outside, and what has no neighbour at all.
    const Case cases[] = {{0x100, 'A'},  {0x101, 'a'},  {0x110, 0xD0}, {0x132, '?'},  {0x3A9, 'O'},  {0x3B1, 'a'},
                          {0x2000, ' '}, {0x2006, ' '}, {0x2007, '?'}, {0x2212, '-'}, {0x221E, '8'}, {0x3000, ' '},
                          {0xFF00, '?'}, {0xFF01, '!'}, {0xFF21, 'A'}, {0xFF5E, '~'}, {0xFF5F, '?'}, {0x80, '?'},
                          {0x9C, '?'},   {0x301, 0xB4}, {0xD800, '?'}, {0x4E2D, '?'}, {0xFFFF, '?'}};
    for (const Case& c : cases)
        EXPECT_EQ(ToCodePage(c.unit), c.byte) << std::hex << static_cast<unsigned>(c.unit);
    EXPECT_EQ(ToCodePage(std::wstring_view(L"a\U0001F600b")), (Bytes{'a', '?', '?', 'b'}));
}

TEST(Utf8, ReplacesWhatIsMalformedAndKeepsTheRest) {
    EXPECT_EQ(FromUtf8("a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80z"), L"a\u00E4\u20AC\U0001F600z");
    EXPECT_EQ(ToUtf8(L"a\u00E4\u20AC\U0001F600z"), "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80z");
    // Overlong forms, surrogates, lone and missing continuation bytes, beyond the last character.
    for (const char* bad :
         {"\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\x80", "\xE2\x82", "\xF4\x90\x80\x80", "\xFF"}) {
        EXPECT_FALSE(IsUtf8(bad)) << bad;
        EXPECT_EQ(FromUtf8(std::string("x") + bad).substr(0, 2), L"x\uFFFD") << bad;
        EXPECT_EQ(FromUtf8(std::string(bad) + "y").back(), L'y') << bad;
    }
}

} // namespace
} // namespace orv::sim
