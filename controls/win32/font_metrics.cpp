#include "controls/win32/font_metrics.h"

namespace orv::controls::win32 {
namespace {

constexpr std::size_t kMostWidths = 2000; ///< texts of the user's are measured, too

using platform::win32::OwnedFont;
using platform::win32::Selected;
using platform::win32::WindowDc;

OwnedFont MessageFont(int dpi) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (!SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi)))
        return OwnedFont(static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)));
    return OwnedFont(CreateFontIndirectW(&metrics.lfMessageFont));
}

} // namespace

FontMetrics::FontMetrics() {
    font_ = MessageFont(dpi_);
    Measure();
}

void FontMetrics::Refresh(HWND window) {
    const int dpi = static_cast<int>(GetDpiForWindow(window));
    dpi_ = dpi > 0 ? dpi : 96;
    font_ = MessageFont(dpi_);
    Measure();
}

void FontMetrics::Measure() {
    widths_.clear();
    const WindowDc dc(nullptr);
    const Selected selected(dc.Get(), font_.Get());
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc.Get(), &metrics);
    lineHeight_ = metrics.tmHeight + metrics.tmExternalLeading;
}

int FontMetrics::Width(std::wstring_view text) const {
    if (const auto known = widths_.find(text); known != widths_.end())
        return known->second;
    const WindowDc dc(nullptr);
    const Selected selected(dc.Get(), font_.Get());
    SIZE size{};
    GetTextExtentPoint32W(dc.Get(), text.data(), static_cast<int>(text.size()), &size);
    if (widths_.size() >= kMostWidths)
        widths_.clear();
    widths_.emplace(text, size.cx);
    return size.cx;
}

} // namespace orv::controls::win32
