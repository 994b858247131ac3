// What the component's file carries beside its code.
#include <gtest/gtest.h>

#include <set>

#include "tests/com/component.h"
#include "text/texts.h"
#include "text/version.h"

#include <winver.h>

namespace orv::tests {
namespace {

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
