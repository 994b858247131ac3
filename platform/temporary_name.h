#pragma once
// Names of temporaries that this product alone gives, so that what a killed run left can be told from anything else.
#include <cstdint>
#include <string>
#include <string_view>

namespace orv::platform {

/// ".orv-", the digits of `chance`, a check of digits and machine, ".tmp".
std::string TemporaryName(std::uint64_t chance, std::string_view machine);

/// Given by TemporaryName on that machine. A lock tells nothing of a writer on another one.
bool IsTemporaryName(std::string_view name, std::string_view machine);

} // namespace orv::platform
