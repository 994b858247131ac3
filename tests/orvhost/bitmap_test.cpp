#include "host/app/orvhost/bitmap.h"

#include <gtest/gtest.h>

namespace orv::host {
namespace {

std::uint32_t At(const std::string& bytes, std::size_t place) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;)
        value = value << 8 | static_cast<std::uint8_t>(bytes.at(place + i));
    return value;
}

TEST(Bitmap, HoldsRowsFromTheBottomPaddedToFourBytes) {
    const Picture picture{3, 2, {0x112233, 0, 0, 0, 0, 0xAABBCC}};
    const std::string bytes = FormatBitmap(picture);
    constexpr std::size_t row = 12;
    ASSERT_EQ(bytes.size(), 54u + 2 * row);
    EXPECT_EQ(bytes.substr(0, 2), "BM");
    EXPECT_EQ(At(bytes, 2), bytes.size());
    EXPECT_EQ(At(bytes, 10), 54u);
    EXPECT_EQ(At(bytes, 18), 3u);
    EXPECT_EQ(At(bytes, 22), 2u);
    EXPECT_EQ(bytes.substr(54 + 6, 3), "\xCC\xBB\xAA") << "last pixel of the lower row, blue first";
    EXPECT_EQ(bytes.substr(54 + row, 3), "\x33\x22\x11") << "first pixel of the upper row";
}

} // namespace
} // namespace orv::host
