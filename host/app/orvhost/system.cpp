#include "host/app/orvhost/system.h"

#include <system_error>

namespace orv::host {

void RegisterWindowClass(const wchar_t* name, WNDPROC procedure, HBRUSH background, UINT style) {
    WNDCLASSEXW type{};
    type.cbSize = sizeof type;
    type.style = style;
    type.lpfnWndProc = procedure;
    type.hInstance = Program();
    type.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    type.hbrBackground = background;
    type.lpszClassName = name;
    RegisterClassExW(&type);
}

HWND Made(HWND window) {
    const auto code = static_cast<int>(GetLastError());
    if (window == nullptr)
        throw std::system_error(code, std::system_category(), "no window can be made (is there a display?)");
    return window;
}

OwnedFont MessageFont(UINT dpi) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (!SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0, dpi))
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    return OwnedFont(CreateFontIndirectW(&metrics.lfMessageFont));
}

std::wstring WindowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

} // namespace orv::host
