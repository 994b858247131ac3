#include <gtest/gtest.h>

#include <set>

#include "text/bytes.h"
#include "text/error.h"
#include "text/texts.h"

namespace orv::text {
namespace {

TEST(ByteTokens, NameControlSpaceAndHighBytes) {
    const struct {
        std::uint8_t byte;
        bool brackets;
        bool nameSpace;
        const wchar_t* token;
    } cases[] = {
        {0, true, true, L"<NUL>"},   {13, true, false, L"<CR>"},   {13, false, true, L"CR"},
        {31, true, true, L"<US>"},   {32, true, true, L"<Space>"}, {32, true, false, L" "},
        {33, true, true, L"!"},      {60, true, true, L"<"},       {127, true, true, L"\x7f"},
        {128, true, true, L"<$80>"}, {200, false, false, L"$C8"},  {255, true, true, L"<$FF>"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ByteToken(c.byte, c.brackets, c.nameSpace), c.token) << int{c.byte};
}

TEST(ByteTokens, EveryControlByteHasANameOfItsOwn) {
    std::set<std::wstring> names;
    for (int byte = 0; byte <= 32; ++byte)
        names.insert(ByteName(static_cast<std::uint8_t>(byte), true));
    EXPECT_EQ(names.size(), 33U);
    EXPECT_FALSE(names.contains(L""));
    EXPECT_EQ(ByteName(16, true), L"DLE");
    EXPECT_EQ(ByteName(25, true), L"EM");
}

TEST(Hexadecimal, PadsJoinsAndReadsBack) {
    EXPECT_EQ(Hex2(5), L"05");
    EXPECT_EQ(Hex(Bytes{0x0D, 0x0A, 0xFF}, L" "), L"0D 0A FF");
    Bytes all;
    for (int byte = 0; byte < 256; ++byte)
        all.push_back(static_cast<std::uint8_t>(byte));
    EXPECT_EQ(FromHex(Hex(all)), all);
    EXPECT_EQ(FromHex(L"aB0f"), (Bytes{0xAB, 0x0F}));
    for (const wchar_t* bad : {L"0", L"0G", L" 1", L"-1"})
        EXPECT_THROW(FromHex(bad), Error) << bad;
}

TEST(DisplayForm, ShowsAPrintableLessThanAsItself) {
    EXPECT_EQ(DisplayForm(Bytes{2, 'A', ' ', 13}), L"<STX>A<Space><CR>");
    EXPECT_EQ(DisplayForm(Bytes{'<', 'C', 'R', '>'}), L"<CR>");
}

TEST(Errors, CarryTheTextOfTheirNumber) {
    EXPECT_EQ(Error(error_number::kOverflow).Description(), L"Overflow");
    EXPECT_EQ(Error(error_number::kPropertyArrayIndex).Description(), Load(Id::ErrPropertyArrayIndex));
    EXPECT_EQ(Error(-5, L"gone").Number(), -5);
    EXPECT_STREQ(Error(-5, L"g\x4e00ne").what(), "error -5: g?ne");
}

} // namespace
} // namespace orv::text
