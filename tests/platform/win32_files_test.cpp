// Readers in the way, attributes, access lists, devices and long names.
#include <chrono>
#include <thread>
#include <vector>

#include "fixture.h"
#include "platform/temporary_name.h"
#include "platform/win32/file_calls.h"

#include <aclapi.h>

namespace orv::platform::testing {
namespace {

using std::filesystem::path;
using ::testing::UnorderedElementsAre;
using win32::OwnedHandle;

/// A reader that lets nobody take the file away under it.
OwnedHandle Hold(const path& file) {
    return OwnedHandle(CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
}

TEST_F(FilesTest, AReaderDelaysASaveAndOneThatStaysIsNamed) {
    const path file = Make("f.txt");
    OwnedHandle reader = Hold(file);
    ASSERT_NE(reader.Get(), INVALID_HANDLE_VALUE);
    std::thread letGo([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        reader.Reset();
    });
    EXPECT_EQ(ReasonToWrite(file), L"");
    letGo.join();
    EXPECT_EQ(Read(file), "new");

    reader = Hold(file);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_NE(ReasonToWrite(file, "newer"), L"");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
    reader.Reset();
    EXPECT_EQ(Read(file), "new");
    EXPECT_THAT(Names(), UnorderedElementsAre("f.txt"));
}

std::vector<BYTE> AccessOf(const path& file) {
    DWORD size = 0;
    GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<BYTE> security(size);
    EXPECT_TRUE(GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, security.data(), size, &size));
    return security;
}

/// Everyone may read and write it, nobody else is named.
void OpenToEveryone(const path& file) {
    wchar_t everyone[] = L"EVERYONE";
    EXPLICIT_ACCESSW access{};
    BuildExplicitAccessWithNameW(&access, everyone, GENERIC_READ | GENERIC_WRITE | DELETE, SET_ACCESS, NO_INHERITANCE);
    PACL list = nullptr;
    ASSERT_EQ(SetEntriesInAclW(1, &access, nullptr, &list), static_cast<DWORD>(ERROR_SUCCESS));
    std::wstring name = file.native();
    EXPECT_EQ(
        SetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, list, nullptr),
        static_cast<DWORD>(ERROR_SUCCESS));
    LocalFree(list);
}

TEST_F(FilesTest, AttributesTimeAndAccessAreKept) {
    const path file = Make("f.txt");
    const path plain = Make("plain.txt");
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_HIDDEN);
    const DWORD attributes = GetFileAttributesW(file.c_str());
    OpenToEveryone(file);
    ASSERT_NE(AccessOf(file), AccessOf(plain)) << "the system here keeps access lists";
    const std::vector<BYTE> access = AccessOf(file);
    WriteWhole(file.native(), "new");
    EXPECT_EQ(Read(file), "new");
    EXPECT_EQ(AccessOf(file), access);
    EXPECT_EQ(GetFileAttributesW(file.c_str()), attributes);

    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_NE(ReasonToWrite(file, "newer"), L"");
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(Read(file), "new");
}

TEST_F(FilesTest, DevicesPipesAndLongNames) {
    WriteWhole(L"NUL", "new");
    EXPECT_THAT(Names(), ::testing::IsEmpty());
    std::wstring deep = L"\\\\?\\" + folder.wstring();
    for (int i = 0; i < 3; ++i) {
        deep += L"\\" + std::wstring(120, static_cast<wchar_t>(L'a' + i));
        ASSERT_TRUE(CreateDirectoryW(deep.c_str(), nullptr));
    }
    const std::wstring file = deep + L"\\f.txt";
    WriteWhole(file.substr(4), "new"); // without the mark of a long name
    WriteWhole(file.substr(4), "newer");
    WIN32_FILE_ATTRIBUTE_DATA info{};
    EXPECT_TRUE(GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &info));
    EXPECT_EQ(info.nFileSizeLow, 5U);
    for (; deep.size() > folder.wstring().size() + 4; deep.resize(deep.rfind(L'\\'))) {
        DeleteFileW((deep + L"\\f.txt").c_str());
        EXPECT_TRUE(RemoveDirectoryW(deep.c_str())) << "nothing else was left in it";
    }
}

} // namespace
} // namespace orv::platform::testing
