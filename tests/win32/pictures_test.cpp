#include "controls/win32/pictures.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace orv::tests {
namespace {

using controls::win32::Pictures;
using platform::win32::OwnedBitmap;

constexpr COLORREF kMagenta = RGB(255, 0, 255);
constexpr COLORREF kGround = RGB(10, 200, 30);

struct CloseDc {
    void operator()(HDC dc) const { DeleteDC(dc); }
};
using OwnedDc = platform::win32::Owned<HDC, CloseDc>;

std::vector<COLORREF> PixelsOf(HDC dc, int side) {
    std::vector<COLORREF> pixels;
    for (int i = 0; i < side * side; ++i)
        pixels.push_back(GetPixel(dc, i % side, i / side));
    return pixels;
}

/// A picture drawn over a ground of one colour.
std::vector<COLORREF> Drawn(Pictures& pictures, const std::wstring& key, bool faint = false, COLORREF text = 0) {
    const int side = pictures.Side();
    const platform::win32::WindowDc screen(nullptr);
    const OwnedBitmap bitmap(CreateCompatibleBitmap(screen.Get(), side, side));
    const OwnedDc dc(CreateCompatibleDC(screen.Get()));
    const platform::win32::Selected selected(dc.Get(), bitmap.Get());
    const platform::win32::OwnedBrush brush(CreateSolidBrush(kGround));
    const RECT all{0, 0, side, side};
    FillRect(dc.Get(), &all, brush.Get());
    SetTextColor(dc.Get(), text);
    pictures.Draw(dc.Get(), key, {0, 0}, faint);
    return PixelsOf(dc.Get(), side);
}

/// The resource itself, its magenta replaced by the ground.
std::vector<COLORREF> Stored(const wchar_t* name, int side) {
    const OwnedBitmap bitmap(LoadBitmapW(platform::win32::OwnModule(), name));
    const OwnedDc dc(CreateCompatibleDC(nullptr));
    const platform::win32::Selected selected(dc.Get(), bitmap.Get());
    std::vector<COLORREF> pixels = PixelsOf(dc.Get(), side);
    for (COLORREF& pixel : pixels)
        if (pixel == kMagenta)
            pixel = kGround;
    return pixels;
}

int Seen(const std::vector<COLORREF>& pixels) {
    return static_cast<int>(pixels.size() -
                            static_cast<std::size_t>(std::count(pixels.begin(), pixels.end(), kGround)));
}

TEST(PicturesTest, ShowsTheDrawnSizesAsTheyAre) {
    Pictures pictures;
    pictures.Refresh(96);
    EXPECT_EQ(Drawn(pictures, L"Code"), Stored(L"CODE", 16));
    EXPECT_EQ(Drawn(pictures, L"Length"), Stored(L"LENGTH", 16)) << "each key its own";
    pictures.Refresh(192);
    EXPECT_EQ(pictures.Side(), 32);
    EXPECT_EQ(Drawn(pictures, L"Code"), Stored(L"CODE32", 32));
    EXPECT_GT(Seen(Stored(L"CODE32", 32)), 50) << "there is something to compare";
}

TEST(PicturesTest, ShrinksTheLargeOneWithoutARim) {
    Pictures pictures;
    for (const int dpi : {120, 144, 168}) {
        pictures.Refresh(dpi);
        const int side = 16 * dpi / 96;
        ASSERT_EQ(pictures.Side(), side);
        for (const wchar_t* key : {L"Code", L"Length", L"Hours"}) {
            const std::vector<COLORREF> pixels = Drawn(pictures, key);
            const std::vector<COLORREF> large = Stored((std::wstring(key) + L"32").c_str(), 32);
            for (const COLORREF pixel : pixels)
                EXPECT_FALSE(GetRValue(pixel) > GetGValue(pixel) + 60 && GetBValue(pixel) > GetGValue(pixel) + 60)
                    << "a tint of magenta at " << dpi;
            EXPECT_NEAR(static_cast<double>(Seen(pixels)) / (side * side), Seen(large) / 1024.0, 0.12) << dpi;
        }
    }
}

TEST(PicturesTest, KnowsWhatIsNotThere) {
    Pictures pictures;
    EXPECT_EQ(pictures.IndexOf(L"Code"), -1) << "no list yet";
    pictures.Refresh(96);
    const int code = pictures.IndexOf(L"Code");
    EXPECT_GE(code, 0);
    EXPECT_EQ(pictures.IndexOf(L"Nothing of the kind"), -1);
    EXPECT_EQ(pictures.IndexOf(L""), -1);
    EXPECT_NE(pictures.IndexOf(L"Length"), code);
    EXPECT_EQ(pictures.IndexOf(L"Code"), code);
    EXPECT_EQ(ImageList_GetImageCount(pictures.List()), 2);
    EXPECT_EQ(Seen(Drawn(pictures, L"Nothing of the kind")), 0);
    EXPECT_NE(Drawn(pictures, L"Code", true), Drawn(pictures, L"Code"));
    EXPECT_EQ(Drawn(pictures, L"Code", true), Drawn(pictures, L"Code", true, RGB(255, 255, 255)))
        << "whatever the texts";
}

} // namespace
} // namespace orv::tests
