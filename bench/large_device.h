#pragma once
// A generated device of any size whose every parameter that the model reads is filled.
#include <cstdint>

#include "host/sim/description.h"

namespace orv::bench {

struct DeviceSize {
    std::int16_t slots = 64;
    std::int16_t groups = 64;
    std::int16_t formats = 32;
    std::int16_t items = 64; ///< of each format; times the formats it stays within 16 bits

    std::int32_t AllItems() const { return std::int32_t{formats} * items; }
};

/// One cluster with a master, at access level 3.
sim::SystemDescription LargeSystem(const DeviceSize& size);

} // namespace orv::bench
