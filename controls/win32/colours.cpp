#include "controls/win32/colours.h"

#include <algorithm>
#include <cmath>

namespace orv::controls::win32 {
namespace {

constexpr double kReadable = 4.5;
constexpr COLORREF kBlue = RGB(0, 70, 190);

double Linear(int channel) {
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(COLORREF colour) {
    return 0.2126 * Linear(GetRValue(colour)) + 0.7152 * Linear(GetGValue(colour)) + 0.0722 * Linear(GetBValue(colour));
}

// Ratio of contrast as accessibility guidelines define it, 1 to 21.
double Contrast(COLORREF one, COLORREF other) {
    const double a = Luminance(one);
    const double b = Luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

} // namespace

COLORREF TokenColour(COLORREF background) {
    for (const COLORREF colour : {static_cast<COLORREF>(GetSysColor(COLOR_HOTLIGHT)), kBlue})
        if (Contrast(colour, background) >= kReadable)
            return colour;
    return GetSysColor(COLOR_WINDOWTEXT);
}

COLORREF InactiveSelection() {
    const COLORREF window = GetSysColor(COLOR_WINDOW);
    const COLORREF selection = GetSysColor(COLOR_HIGHLIGHT);
    const auto towards = [](int from, int to) { return static_cast<BYTE>((3 * from + to) / 4); };
    return RGB(towards(GetRValue(window), GetRValue(selection)), towards(GetGValue(window), GetGValue(selection)),
               towards(GetBValue(window), GetBValue(selection)));
}

} // namespace orv::controls::win32
