#pragma once
// What goes over the wire, parameter by parameter, written out by hand: the tests must not ask the tables they check.
#include <cstdint>
#include <string>
#include <vector>

#include "device/value.h"

namespace orv::model::wire {

using enum device::WireType;

/// A parameter, and as which type it is written.
struct Row {
    std::int32_t number;
    device::WireType type;
};

inline const std::vector<Row> kCodes = {
    {72, Int32}, {191, Text}, {14, Int32}, {9, ByteArray}, {15, Int32}, {16, ByteArray},
};

inline const std::vector<Row> kCodeSlot = {
    {1, Int16},    {2, Int32},      {3, Int16},    {4, Int16},    {70, Int16},   {5, Int16},       {382, Int32},
    {383, Int32},  {18, ByteArray}, {527, Int16},  {526, Int16},  {32, Int16},   {328, ByteArray}, {3002, Byte},
    {3003, Byte},  {3005, Int16},   {3006, Int16}, {3004, Int16}, {3007, Int16}, {3008, Int16},    {3010, Byte},
    {3009, Byte},  {3011, Int16},   {3012, Int16}, {3013, Int16}, {3014, Int16}, {3015, Int16},    {3016, Int16},
    {3017, Int16}, {3018, Int16},   {3019, Int16},
};

inline const std::vector<Row> kGroup = {{17, ByteArray}, {327, ByteArray}};

inline const std::vector<Row> kStandardFormat = {{6, ByteArray}, {7, ByteArray}, {82, ByteArray}};

/// Read before 350 and 349, written behind the items and 349.
inline const std::vector<Row> kFormat = {
    {342, Int32}, {343, Int16}, {344, ByteArray}, {341, Int32}, {345, ByteArray}, {346, ByteArray}, {348, Int32},
};

inline const std::vector<Row> kItem = {
    {351, Int32}, {352, Int32}, {353, Int16}, {354, ByteArray}, {355, Int32}, {356, Int32}, {357, Int32},
    {358, Byte},  {359, Int32}, {360, Byte},  {361, Byte},      {363, Int32}, {362, Text},  {364, Int32},
    {365, Byte},  {366, Int32}, {367, Int32}, {368, Text},      {369, Int16},
};

} // namespace orv::model::wire
