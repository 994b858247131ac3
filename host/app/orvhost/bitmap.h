#pragma once
// Pictures as 24-bit bitmap files. Portable.
#include <cstdint>
#include <string>
#include <vector>

namespace orv::host {

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels; ///< 0x00RRGGBB, rows from the top
};

/// The file's bytes.
std::string FormatBitmap(const Picture& picture);

} // namespace orv::host
