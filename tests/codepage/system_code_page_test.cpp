// The table of the portable host against the operating system, code unit by code unit.
#include <gtest/gtest.h>

#include <windows.h>

#include "host/sim/code_page.h"

namespace orv::sim {
namespace {

constexpr UINT kCodePage = 1252; // of locale 1033

TEST(SystemCodePage, IsThatOfTheLocale) {
    wchar_t digits[8] = {};
    ASSERT_GT(GetLocaleInfoW(1033, LOCALE_IDEFAULTANSICODEPAGE, digits, 8), 0);
    EXPECT_EQ(std::wstring(digits), L"1252");
}

TEST(SystemCodePage, AgreesOnAll65536CodeUnits) {
    int differing = 0;
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        const auto wide = static_cast<wchar_t>(unit);
        char narrow[4] = {};
        ASSERT_EQ(WideCharToMultiByte(kCodePage, 0, &wide, 1, narrow, 4, nullptr, nullptr), 1) << unit;
        const Bytes ours = ToCodePage(std::wstring(1, wide));
        const bool same = ours.size() == 1 && ours[0] == static_cast<unsigned char>(narrow[0]);
        differing += same ? 0 : 1;
        EXPECT_TRUE(same || differing > 10) << "U+" << std::hex << unit;
    }
    EXPECT_EQ(differing, 0);
}

TEST(SystemCodePage, AgreesOnAll256Bytes) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        const char narrow = static_cast<char>(byte);
        wchar_t wide[2] = {};
        ASSERT_EQ(MultiByteToWideChar(kCodePage, 0, &narrow, 1, wide, 2), 1);
        EXPECT_EQ(FromCodePage(Bytes{static_cast<std::uint8_t>(byte)}), std::wstring(1, wide[0])) << byte;
    }
}

} // namespace
} // namespace orv::sim
