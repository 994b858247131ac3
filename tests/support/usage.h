#pragma once
// What the process holds of the system, counted by looking: not every system that runs these tests keeps the sums.
#include <windows.h>

#include <cstddef>
#include <iosfwd>

namespace orv::tests {

struct Usage {
    int windows = 0; ///< of this thread, children and message windows included
    int menusAndIcons = 0;
    int drawing = 0;              ///< pens, brushes, fonts, bitmaps, regions, device contexts
    int handles = 0;              ///< files, keys, threads and other objects of the system's core
    std::size_t blocks = 0;       ///< of memory in the process's heaps
    std::size_t bytes = 0;        ///< in those blocks
    std::size_t privateBytes = 0; ///< of the whole process, what the system keeps for it included
};

/// Now. Takes a second or so.
Usage Look();

/// How much of each `after` has beyond `before`.
Usage Growth(const Usage& before, const Usage& after);

/// One row of a table with this head.
inline constexpr int kUsageColumn = 9;
inline constexpr char kUsageHead[] = "  windows    menus  drawing  handles   blocks    bytes  private KB";
std::ostream& operator<<(std::ostream& out, const Usage& usage);

} // namespace orv::tests
