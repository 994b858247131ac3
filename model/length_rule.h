#pragma once
// The allowed lengths of a number format, as the catalogue writes them: "" not allowed, "3" exactly, "0..4" a range,
// "3,4" a list, "*" any.
#include <cstdint>
#include <string_view>
#include <vector>

namespace orv::model {

struct LengthRule {
    enum class Kind { NotAllowed, Range, List, Any };

    Kind kind = Kind::NotAllowed;
    std::uint8_t minimum = 0; ///< of a range
    std::uint8_t maximum = 0;
    std::vector<std::uint8_t> lengths; ///< of a list; one number alone is a list of one

    bool Allows(std::uint8_t length) const;
};

/// Anything that does not read as a number counts as 0; numbers past 255 as 255.
LengthRule ParseLengthRule(std::wstring_view text);

/// The number that a text begins with; 0 when it begins with none, 255 at most.
std::uint8_t LeadingNumber(std::wstring_view text);

} // namespace orv::model
