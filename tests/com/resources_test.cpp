// What the component's file carries beside its code.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "model/catalogue.h"
#include "tests/com/component.h"
#include "text/texts.h"
#include "text/version.h"

#include <winver.h>

namespace orv::tests {
namespace {

/// A picture as the component's file holds it; no bytes when there is none.
struct Picture {
    long width = 0;
    long height = 0;
    int bits = 0;
    std::vector<BYTE> bytes;
};

Picture LoadPicture(HMODULE module, const std::wstring& name) {
    const HANDLE image = LoadImageW(module, name.c_str(), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION);
    if (!image)
        return {};
    DIBSECTION section{};
    GetObjectW(image, sizeof section, &section);
    const BYTE* bits = static_cast<const BYTE*>(section.dsBm.bmBits);
    Picture picture{section.dsBm.bmWidth, section.dsBm.bmHeight, section.dsBm.bmBitsPixel, {}};
    picture.bytes.assign(bits, bits + section.dsBm.bmWidthBytes * section.dsBm.bmHeight);
    DeleteObject(image);
    return picture;
}

/// Share of pixels in the colour that an image list leaves out. No row of these sizes is padded.
double MaskShare(const Picture& picture) {
    int masked = 0;
    for (std::size_t at = 0; at + 3 <= picture.bytes.size(); at += 3)
        masked += picture.bytes[at] == 255 && picture.bytes[at + 1] == 0 && picture.bytes[at + 2] == 255;
    return masked / static_cast<double>(picture.width * picture.height);
}

std::vector<std::wstring> PictureKeys() {
    std::vector<std::wstring> keys{L"CHECKDIGITID", L"NONE", L"BARCODE", L"IMGPICTURE"};
    for (const model::CatalogueEntry& entry : model::Catalogue())
        keys.emplace_back(entry.key);
    for (std::wstring& key : keys)
        std::ranges::transform(key, key.begin(), towupper);
    return keys;
}

TEST(Resources, EveryItemTypeHasPicturesOfItsOwnInBothSizes) {
    const Component component;
    std::map<std::vector<BYTE>, std::wstring> seen;
    for (const std::wstring& key : PictureKeys())
        for (const long size : {16L, 32L}) {
            const std::wstring name = size == 16 ? key : key + L"32";
            const Picture picture = LoadPicture(component.Module(), name);
            ASSERT_FALSE(picture.bytes.empty()) << name;
            EXPECT_EQ(picture.width, size) << name;
            EXPECT_EQ(picture.height, size) << name;
            EXPECT_EQ(picture.bits, 24) << name;
            EXPECT_GT(MaskShare(picture), 0.05) << name;
            EXPECT_LT(MaskShare(picture), 0.9) << name;
            const auto [first, isNew] = seen.emplace(picture.bytes, name);
            EXPECT_TRUE(isNew) << name << " looks like " << first->second;
        }
}

TEST(Resources, TheStringTableSaysWhatTheListSays) {
    const Component component;
    int seen = 0;
    const auto check = [&](UINT id) {
        wchar_t buffer[1024] = {};
        LoadStringW(component.Module(), id, buffer, ARRAYSIZE(buffer));
        EXPECT_EQ(buffer, text::Load(static_cast<text::Id>(id))) << id;
        ++seen;
    };
#define ORV_TEXT(name, id, english) check(id);
#include "text/texts.def"
#undef ORV_TEXT
    EXPECT_GT(seen, 33);
    std::set<std::wstring> names;
    for (UINT id = 4096; id <= 4128; ++id) {
        wchar_t name[32] = {};
        EXPECT_GT(LoadStringW(component.Module(), id, name, ARRAYSIZE(name)), 1) << id;
        names.insert(name);
    }
    EXPECT_EQ(names.size(), 33u);
}

TEST(Resources, TheVersionRecordIsTheProjects) {
    const std::wstring path = Component::Path();
    DWORD ignored = 0;
    std::vector<BYTE> block(GetFileVersionInfoSizeW(path.c_str(), &ignored));
    ASSERT_FALSE(block.empty());
    ASSERT_TRUE(GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT size = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&fixed), &size));
    EXPECT_EQ(fixed->dwFileVersionMS, static_cast<DWORD>(MAKELONG(text::kVersionMinor, text::kVersionMajor)));
    EXPECT_EQ(fixed->dwFileVersionLS, static_cast<DWORD>(MAKELONG(0, text::kVersionRevision)));
    wchar_t* registers = nullptr;
    EXPECT_TRUE(VerQueryValueW(block.data(), L"\\StringFileInfo\\040904B0\\OLESelfRegister",
                               reinterpret_cast<void**>(&registers), &size));
}

TEST(Resources, ManifestIconAndLibraryAreThere) {
    const Component component;
    EXPECT_NE(FindResourceW(component.Module(), MAKEINTRESOURCEW(2), MAKEINTRESOURCEW(24)), nullptr);
    EXPECT_NE(LoadIconW(component.Module(), MAKEINTRESOURCEW(101)), nullptr);
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadTypeLibEx(Component::Path().c_str(), REGKIND_NONE, library.Put()), S_OK);
    TLIBATTR* attributes = nullptr;
    ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->guid, LIBID_OrvOutFormat);
    library->ReleaseTLibAttr(attributes);
}

} // namespace
} // namespace orv::tests
