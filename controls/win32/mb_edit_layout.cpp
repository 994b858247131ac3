#include "controls/win32/mb_edit_layout.h"

#include <algorithm>
#include <cstdlib>

#include <richedit.h>

namespace orv::controls::win32 {

int ViewLines::LineOf(std::size_t position) const {
    return static_cast<int>(SendMessageW(window_, EM_EXLINEFROMCHAR, 0, static_cast<LPARAM>(position)));
}

POINT ViewLines::PointOf(std::size_t position) const {
    POINTL point{};
    SendMessageW(window_, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&point), static_cast<LPARAM>(position));
    return {point.x, point.y};
}

LinePlace ViewLines::PlaceOf(std::size_t position) const {
    return {LineOf(position), static_cast<int>(PointOf(position).x)};
}

std::size_t ViewLines::PositionAt(const LinePlace& place) const {
    const auto start =
        static_cast<std::size_t>(SendMessageW(window_, EM_LINEINDEX, static_cast<WPARAM>(place.line), 0));
    const auto length = static_cast<std::size_t>(SendMessageW(window_, EM_LINELENGTH, start, 0));
    std::size_t nearest = start;
    long least = std::labs(PointOf(start).x - place.x);
    for (std::size_t position = start + 1; position <= start + length; ++position) {
        if (LineOf(position) != place.line) {
            // The line wraps here: its end is further right than all the rest.
            const long width = PointOf(start + length - 1).x - PointOf(start).x;
            return place.x - PointOf(start).x > width ? position : nearest;
        }
        const long distance = std::labs(PointOf(position).x - place.x);
        if (distance >= least)
            break;
        least = distance;
        nearest = position;
    }
    return nearest;
}

int ViewLines::LineCount() const {
    return std::max(1, static_cast<int>(SendMessageW(window_, EM_GETLINECOUNT, 0, 0)));
}

int ViewLines::VisibleLines() const {
    RECT client{};
    GetClientRect(window_, &client);
    const POINT first = PointOf(static_cast<std::size_t>(SendMessageW(window_, EM_LINEINDEX, 0, 0)));
    const POINT second =
        PointOf(static_cast<std::size_t>(std::max<LRESULT>(SendMessageW(window_, EM_LINEINDEX, 1, 0), 0)));
    const long height = second.y - first.y;
    return height > 0 ? std::max(1, static_cast<int>(client.bottom / height)) : 1;
}

} // namespace orv::controls::win32
