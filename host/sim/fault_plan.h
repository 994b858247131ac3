#pragma once
// What a simulated device does wrong.
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orv::sim {

/// How often a fault happens; a negative count means always.
using FaultCount = std::int64_t;
inline constexpr FaultCount kAlways = -1;

struct SetFault {
    std::wstring entry; ///< entry name, "*" for any, "#k" for the k-th set (1 is the first)
    std::int32_t code = 0;
    FaultCount times = kAlways;
};

struct FaultPlan {
    std::chrono::milliseconds delay{0}; ///< before each answer; kept by whoever sends the answers
    std::vector<SetFault> sets;
    FaultCount failConnect = 0;
    bool failSession = false;
    std::optional<std::int64_t> dropAfter;   ///< the request after so many answered ones loses the connection, once
    std::optional<std::int64_t> silentAfter; ///< no answer after so many answered requests
};

/// Takes one off `count`; answers whether the fault happens.
bool Spend(FaultCount& count);

/// "ENTRY:CODE" or "ENTRY:CODE:TIMES". Nothing when it is not of that form.
std::optional<SetFault> ParseSetFault(std::string_view text);

} // namespace orv::sim
