#include "host/app/orvhost/bitmap.h"

namespace orv::host {
namespace {

constexpr std::uint32_t kHeaders = 14 + 40;
constexpr std::uint32_t kDotsPerMetre = 3780; // 96 dots an inch

void Put16(std::string& bytes, std::uint32_t value) {
    bytes += static_cast<char>(value & 0xFF);
    bytes += static_cast<char>(value >> 8 & 0xFF);
}

void Put32(std::string& bytes, std::uint32_t value) {
    Put16(bytes, value & 0xFFFF);
    Put16(bytes, value >> 16);
}

} // namespace

std::string FormatBitmap(const Picture& picture) {
    const auto width = static_cast<std::uint32_t>(picture.width);
    const auto height = static_cast<std::uint32_t>(picture.height);
    const std::uint32_t row = (width * 3 + 3) / 4 * 4; // rows are padded to four bytes
    std::string bytes = "BM";
    bytes.reserve(kHeaders + row * height);
    Put32(bytes, kHeaders + row * height);
    Put32(bytes, 0);
    Put32(bytes, kHeaders);
    Put32(bytes, 40);
    Put32(bytes, width);
    Put32(bytes, height);
    Put16(bytes, 1);
    Put16(bytes, 24);
    Put32(bytes, 0);
    Put32(bytes, row * height);
    Put32(bytes, kDotsPerMetre);
    Put32(bytes, kDotsPerMetre);
    Put32(bytes, 0);
    Put32(bytes, 0);
    for (std::uint32_t y = height; y-- > 0;) { // rows from the bottom
        for (std::uint32_t x = 0; x < width; ++x) {
            const std::uint32_t pixel = picture.pixels[std::size_t{y} * width + x];
            Put16(bytes, pixel & 0xFFFF);
            bytes += static_cast<char>(pixel >> 16 & 0xFF);
        }
        bytes.append(row - width * 3, '\0');
    }
    return bytes;
}

} // namespace orv::host
