#pragma once
// Devices of random shape and contents, and what a load followed by a save makes of them, stated by hand.
#include <cstdint>
#include <random>
#include <string>

#include "host/sim/description.h"

namespace orv::test {

/// A combination expression, and how it comes back.
struct ExpressionCase {
    std::wstring text;
    std::wstring printed; ///< by a save; empty for one that does not parse
    bool parses = true;
    bool keepsGroups = true; ///< printed and parsed again, the groups are the same
};

struct RandomDevice {
    sim::SystemDescription system; ///< of one device
    ExpressionCase expression;     ///< text of parameter 191
};

/// Up to 12 slots, 10 groups and 5 formats of up to 8 item slots. The item count of a format stays within its slots,
/// and the expression within the device's groups.
RandomDevice MakeRandomDevice(std::mt19937& random);

/// Access levels at random, but for the counts that everything else hangs on.
void ScatterLevels(sim::DeviceDescription& device, std::mt19937& random);

/// What a device holds after it was loaded and saved at once under that level.
sim::DeviceDescription AfterSave(sim::DeviceDescription device, const ExpressionCase& expression, std::int32_t level);

} // namespace orv::test
