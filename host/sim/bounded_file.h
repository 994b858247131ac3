#pragma once
// Files read whole, up to a stated size: pipes and devices have no end of their own, and a file may grow while it is
// read.
#include <cstddef>
#include <filesystem>
#include <string>

namespace orv::sim {

inline constexpr std::size_t kLargestFile = std::size_t{64} * 1024 * 1024;

/// The name of `file` as messages show it: UTF-8, printable, cut where it is long.
std::string NameOf(const std::filesystem::path& file);

/// The contents of `file`. Raises FileError: it cannot be read, with the system's reason, or is larger than
/// kLargestFile.
std::string ReadFile(const std::filesystem::path& file);

} // namespace orv::sim
