#include "controls/win32/pictures.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace orv::controls::win32 {
namespace {

using platform::win32::OwnedBitmap;
using platform::win32::WindowDc;

constexpr COLORREF kNothing = RGB(255, 0, 255);

struct Raster {
    int side = 0;
    std::vector<RGBQUAD> pixels; ///< row by row from the top
    const RGBQUAD& At(int x, int y) const { return pixels[static_cast<std::size_t>(y * side + x)]; }
};

BITMAPINFO InfoOf(int side) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = side;
    info.bmiHeader.biHeight = -side;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    return info;
}

bool IsNothing(const RGBQUAD& pixel) {
    return RGB(pixel.rgbRed, pixel.rgbGreen, pixel.rgbBlue) == kNothing;
}

std::optional<Raster> Read(HINSTANCE module, const std::wstring& name) {
    const OwnedBitmap bitmap(
        static_cast<HBITMAP>(LoadImageW(module, name.c_str(), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    BITMAP size{};
    if (!bitmap || GetObjectW(bitmap.Get(), sizeof size, &size) == 0)
        return std::nullopt;
    Raster raster{static_cast<int>(std::min(size.bmWidth, size.bmHeight)), {}};
    raster.pixels.resize(static_cast<std::size_t>(raster.side * raster.side));
    BITMAPINFO info = InfoOf(raster.side);
    const WindowDc dc(nullptr);
    if (GetDIBits(dc.Get(), bitmap.Get(), 0, static_cast<UINT>(raster.side), raster.pixels.data(), &info,
                  DIB_RGB_COLORS) == 0)
        return std::nullopt;
    return raster;
}

/// Mean of a square of `from` whose sides are counted in parts of a pixel, `parts` to each. Only what is seen is
/// counted, for the system's own shrinking would draw a rim of magenta; a square less than half filled is nothing.
RGBQUAD Mean(const Raster& from, int left, int top, int width, int parts) {
    std::int64_t red = 0;
    std::int64_t green = 0;
    std::int64_t blue = 0;
    std::int64_t seen = 0;
    for (int y = top / parts; y * parts < top + width; ++y) {
        const std::int64_t high = std::min((y + 1) * parts, top + width) - std::max(y * parts, top);
        for (int x = left / parts; x * parts < left + width; ++x) {
            const RGBQUAD& pixel = from.At(x, y);
            if (IsNothing(pixel))
                continue;
            const std::int64_t area = high * (std::min((x + 1) * parts, left + width) - std::max(x * parts, left));
            red += area * pixel.rgbRed;
            green += area * pixel.rgbGreen;
            blue += area * pixel.rgbBlue;
            seen += area;
        }
    }
    if (seen * 2 < static_cast<std::int64_t>(width) * width)
        return {GetBValue(kNothing), GetGValue(kNothing), GetRValue(kNothing), 0};
    const auto mean = [seen](std::int64_t sum) { return static_cast<BYTE>(sum / seen); };
    return {mean(blue), mean(green), mean(red), 0};
}

Raster Scaled(const Raster& from, int side) {
    if (from.side == side)
        return from;
    Raster to{side, {}};
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            to.pixels.push_back(Mean(from, x * from.side, y * from.side, from.side, side));
    return to;
}

int Append(HIMAGELIST list, Raster raster) {
    const int stride = (raster.side + 15) / 16 * 2;
    std::vector<BYTE> mask(static_cast<std::size_t>(stride * raster.side));
    for (int i = 0; i < raster.side * raster.side; ++i) {
        RGBQUAD& pixel = raster.pixels[static_cast<std::size_t>(i)];
        if (!IsNothing(pixel))
            continue;
        const int x = i % raster.side;
        mask[static_cast<std::size_t>(i / raster.side * stride + x / 8)] |= static_cast<BYTE>(0x80 >> (x % 8));
        pixel = {};
    }
    const WindowDc dc(nullptr);
    BITMAPINFO info = InfoOf(raster.side);
    const OwnedBitmap colours(
        CreateDIBitmap(dc.Get(), &info.bmiHeader, CBM_INIT, raster.pixels.data(), &info, DIB_RGB_COLORS));
    const OwnedBitmap shape(CreateBitmap(raster.side, raster.side, 1, 1, mask.data()));
    return ImageList_Add(list, colours.Get(), shape.Get());
}

} // namespace

void Pictures::Refresh(int dpi) {
    side_ = kSide * dpi / 96;
    known_.clear();
    list_.Reset(ImageList_Create(side_, side_, ILC_COLOR24 | ILC_MASK, 16, 16));
}

int Pictures::IndexOf(const std::wstring& key) {
    if (key.empty() || !list_)
        return -1;
    const auto [place, added] = known_.try_emplace(key, -1);
    if (added)
        place->second = Load(key);
    return place->second;
}

int Pictures::Load(const std::wstring& key) {
    std::wstring name = key;
    CharUpperBuffW(name.data(), static_cast<DWORD>(name.size()));
    std::optional<Raster> picture = Read(module_, side_ == kSide ? name : name + L"32");
    if (!picture)
        picture = Read(module_, side_ == kSide ? name + L"32" : name);
    return picture && picture->side > 0 ? Append(list_.Get(), Scaled(*picture, side_)) : -1;
}

void Pictures::Draw(HDC dc, const std::wstring& key, POINT at, bool faint) {
    const int index = IndexOf(key);
    // Without a colour it may be the context's own for texts that a faint picture is mixed with: black, at times.
    if (index >= 0)
        ImageList_DrawEx(list_.Get(), index, dc, at.x, at.y, 0, 0, CLR_NONE, GetSysColor(COLOR_BTNFACE),
                         ILD_TRANSPARENT | (faint ? ILD_BLEND50 : 0));
}

} // namespace orv::controls::win32
