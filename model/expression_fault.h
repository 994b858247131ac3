#pragma once
// Where an expression stops making sense.
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orv::model {

struct ExpressionFault {
    std::size_t character = 0; ///< 1-based
    std::wstring token;        ///< that stands there; empty when the expression ends too early
};

/// Nothing for an expression that parses. Raises 6 (overflow) past 32767 groups.
std::optional<ExpressionFault> FindFault(std::wstring_view expression);

} // namespace orv::model
