#pragma once
// The class of the empty control, for the container that makes it.
#include <guiddef.h>

namespace orv::bench {

// {6C7B1D5E-40E3-4C52-9F0B-0B5B6A1E8D27}
inline constexpr CLSID kEmptyControl = {0x6c7b1d5e, 0x40e3, 0x4c52, {0x9f, 0x0b, 0x0b, 0x5b, 0x6a, 0x1e, 0x8d, 0x27}};

} // namespace orv::bench
