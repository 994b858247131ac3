#include "host/app/orvhost/window_picture.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "host/sim/utf8.h"
#include "platform/file_writer.h"
#include "text/error.h"

namespace orv::host {
namespace {

struct Owners {
    HWND frame;
    std::vector<HWND> windows; ///< the uppermost first
};

BOOL CALLBACK CollectOwned(HWND window, LPARAM list) {
    auto& owners = *reinterpret_cast<Owners*>(list);
    if (window != owners.frame && IsWindowVisible(window))
        owners.windows.push_back(window);
    return TRUE;
}

/// A window's device context, for as long as this lives.
class WindowDc {
  public:
    explicit WindowDc(HWND window) : window_(window), dc_(GetWindowDC(window)) {}
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;
    ~WindowDc() { ReleaseDC(window_, dc_); }
    HDC Get() const { return dc_; }

  private:
    HWND window_;
    HDC dc_;
};

void Draw(HDC target, HWND window, POINT origin) {
    RECT place{};
    GetWindowRect(window, &place);
    const WindowDc source(window);
    BitBlt(target, place.left - origin.x, place.top - origin.y, place.right - place.left, place.bottom - place.top,
           source.Get(), 0, 0, SRCCOPY);
}

} // namespace

Picture TakePicture(HWND frame) {
    RECT place{};
    GetWindowRect(frame, &place);
    Picture picture{place.right - place.left, place.bottom - place.top, {}};
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = picture.width;
    info.bmiHeader.biHeight = -picture.height; // rows from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    const OwnedMemoryDc target(CreateCompatibleDC(nullptr));
    void* bits = nullptr;
    const OwnedBitmap bitmap(CreateDIBSection(target.Get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (bits == nullptr)
        throw std::runtime_error("no memory for a picture");
    const HGDIOBJ old = SelectObject(target.Get(), bitmap.Get());
    Draw(target.Get(), frame, {place.left, place.top});
    Owners owners{frame, {}};
    EnumThreadWindows(GetCurrentThreadId(), &CollectOwned, reinterpret_cast<LPARAM>(&owners));
    std::for_each(owners.windows.rbegin(), owners.windows.rend(), [&](HWND window) {
        Draw(target.Get(), window, {place.left, place.top});
    });
    GdiFlush();
    const auto* const first = static_cast<const std::uint32_t*>(bits);
    picture.pixels.assign(first,
                          first + static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height));
    SelectObject(target.Get(), old);
    return picture;
}

void SavePicture(const Picture& picture, const std::filesystem::path& file) {
    if (file.has_parent_path())
        std::filesystem::create_directories(file.parent_path());
    try {
        platform::WriteWhole(file.native(), FormatBitmap(picture));
    } catch (const Error& error) {
        throw std::runtime_error("cannot write " + sim::ToUtf8(file.wstring() + L": " + error.Description()));
    }
}

} // namespace orv::host
