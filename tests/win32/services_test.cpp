#include <vector>

#include <gtest/gtest.h>

#include "debug_lines.h"
#include "platform/win32/debug_output.h"
#include "platform/win32/system_services.h"
#include "text/error.h"

namespace orv::tests {
namespace {

using platform::win32::OwnedKey;

TEST(DebugOutput, OneCallALine) {
    const DebugLines kept;
    platform::win32::SystemDebugOutput output;
    output.Line(L"set 346 = <CR>");
    output.Line(L"");
    output.Line(L"caf\u00E9 100%s");
    EXPECT_EQ(kept.Lines(), (std::vector<std::string>{"set 346 = <CR>\n", "\n", "caf\xE9 100%s\n"}));
}

struct RegistryTest : testing::Test {
    static constexpr wchar_t kPath[] = L"SOFTWARE\\OrvTests";
    RegistryTest() {
        HKEY made = nullptr;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, kPath, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &made, nullptr);
        key = OwnedKey(made);
    }
    ~RegistryTest() override { RegDeleteTreeW(HKEY_LOCAL_MACHINE, kPath); }
    void Put(const wchar_t* name, DWORD type, const void* data, DWORD size) const {
        RegSetValueExW(key.Get(), name, 0, type, static_cast<const BYTE*>(data), size);
    }
    OwnedKey key;
    platform::win32::SystemRegistry registry;
};

TEST_F(RegistryTest, ValuesAsText) {
    const std::wstring longText(5000, L'x');
    const DWORD number = 0xAB0F;
    const DWORD zero = 0;
    Put(L"text", REG_SZ, longText.c_str(), static_cast<DWORD>((longText.size() + 1) * 2));
    Put(L"open", REG_SZ, L"abcd", 6); // no zero at its end
    Put(L"empty", REG_SZ, L"", 2);
    Put(L"variable", REG_EXPAND_SZ, L"%SystemRoot%\\x", 30);
    Put(L"number", REG_DWORD, &number, sizeof number);
    Put(L"zero", REG_DWORD, &zero, sizeof zero);
    Put(L"binary", REG_BINARY, &number, sizeof number);
    const auto value = [this](const wchar_t* name) { return registry.LocalMachineValue(kPath, name); };
    EXPECT_EQ(value(L"text"), longText);
    EXPECT_EQ(value(L"open"), L"abc");
    EXPECT_EQ(value(L"empty"), L"");
    ASSERT_TRUE(value(L"variable"));
    EXPECT_EQ(value(L"variable")->find(L'%'), std::wstring::npos);
    EXPECT_EQ(value(L"number"), L"&hAB0F");
    EXPECT_EQ(value(L"zero"), L"&h0");
    EXPECT_EQ(value(L"binary"), std::nullopt);
    EXPECT_EQ(value(L"absent"), std::nullopt);
    EXPECT_EQ(registry.LocalMachineValue(L"SOFTWARE\\OrvTests\\None", L"text"), std::nullopt);
}

TEST(Desktop, FilesAndProcesses) {
    platform::win32::SystemServices services({});
    platform::Desktop& desktop = services.View().desktop;
    const std::wstring folder = desktop.ComponentFolder();
    ASSERT_FALSE(folder.empty());
    EXPECT_NE(folder.back(), L'\\');
    EXPECT_TRUE(desktop.FileExists(folder + L"\\orv_win32_tests.exe"));
    EXPECT_FALSE(desktop.FileExists(folder)) << "a folder is no file";
    EXPECT_FALSE(desktop.FileExists(folder + L"\\none.chm"));
    try {
        desktop.StartProcess(folder + L"\\none.exe");
        ADD_FAILURE() << "started a file that is not there";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    }
    EXPECT_THROW(desktop.OpenDocument(folder + L"\\none.chm"), Error);
    // Each of these the system would start, or open, from somewhere.
    for (const wchar_t* path : {L"cmd.exe", L"cmd", L"\\windows\\system32\\cmd.exe", L"C:cmd.exe", L""}) {
        EXPECT_THROW(desktop.StartProcess(path), Error) << path;
        EXPECT_THROW(desktop.OpenDocument(path), Error) << path;
    }
    EXPECT_THROW(desktop.OpenDocument(L"http://127.0.0.1/"), Error);
    EXPECT_THROW(desktop.OpenDocument(folder), Error) << "a folder is no document";
}

TEST(Desktop, ReadsCopiesAndRemovesFiles) {
    platform::win32::SystemServices services({});
    platform::Desktop& desktop = services.View().desktop;
    wchar_t temporary[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temporary);
    const std::wstring copy = std::wstring(temporary) + L"orv copy.pdf";
    const std::wstring own = desktop.ComponentFolder() + L"\\orv_win32_tests.exe";
    for (int i = 0; i < 2; ++i) // an older copy is replaced
        desktop.DuplicateFile(own, copy);
    EXPECT_EQ(desktop.ReadStart(copy, 2), (Bytes{'M', 'Z'}));
    EXPECT_TRUE(desktop.RemoveFile(copy));
    EXPECT_FALSE(desktop.RemoveFile(copy));
    EXPECT_THROW(desktop.ReadStart(copy, 4), Error);
    EXPECT_THROW(desktop.DuplicateFile(copy, own + L".x"), Error);
    EXPECT_EQ(desktop.ComponentVersion().major, 0) << "a program without a record";
}

TEST(Desktop, TheTemporaryFolderIsTheUsersAndCanBeWritten) {
    platform::win32::SystemServices services({});
    platform::Desktop& desktop = services.View().desktop;
    const std::wstring copy = desktop.TemporaryFolder() + L"\\orv guide copy.pdf";
    EXPECT_EQ(copy.find(L"\\\\"), std::wstring::npos) << "a separator at the end";
    desktop.DuplicateFile(desktop.ComponentFolder() + L"\\orv_win32_tests.exe", copy);
    EXPECT_TRUE(desktop.RemoveFile(copy));
    wchar_t before[MAX_PATH] = {};
    const bool isSet = GetEnvironmentVariableW(L"TMP", before, MAX_PATH) != 0;
    SetEnvironmentVariableW(L"TMP", L"C:\\");
    EXPECT_EQ(desktop.TemporaryFolder(), L"C:");
    SetEnvironmentVariableW(L"TMP", isSet ? before : nullptr);
}

constexpr int kFilterListId = 0x470; // of the system's dialogs for files

/// Into a list of texts, those of the list of filters.
BOOL CALLBACK ReadFilters(HWND window, LPARAM list) {
    if (GetDlgCtrlID(window) != kFilterListId)
        return TRUE;
    for (int i = 0; i < static_cast<int>(SendMessageW(window, CB_GETCOUNT, 0, 0)); ++i) {
        wchar_t text[256] = {};
        SendMessageW(window, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
        reinterpret_cast<std::vector<std::wstring>*>(list)->push_back(text);
    }
    return FALSE;
}

BOOL CALLBACK ReadFiltersAndCancel(HWND window, LPARAM list) {
    EnumChildWindows(window, &ReadFilters, list);
    if (!reinterpret_cast<std::vector<std::wstring>*>(list)->empty())
        PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    return TRUE;
}

std::vector<std::wstring> filtersSeen;

void CALLBACK LookForFilters(HWND, UINT, UINT_PTR, DWORD) {
    if (filtersSeen.empty())
        EnumThreadWindows(GetCurrentThreadId(), &ReadFiltersAndCancel, reinterpret_cast<LPARAM>(&filtersSeen));
}

TEST(Desktop, TheSaveDialogShowsTheFilterAsItIsNamed) {
    platform::win32::SystemServices services({});
    const UINT_PTR timer = SetTimer(nullptr, 0, 50, &LookForFilters);
    EXPECT_EQ(services.View().desktop.ChooseSaveFile({.title = L"Export",
                                                      .filterName = L"Text Files (*.txt)",
                                                      .filterPattern = L"*.TXT",
                                                      .defaultExtension = L".txt",
                                                      .suggestedName = L"a.txt"}),
              L"");
    KillTimer(nullptr, timer);
    EXPECT_EQ(filtersSeen, std::vector<std::wstring>{L"Text Files (*.txt)"});
}

TEST(Desktop, StartsAProgramWithABlankInItsPath) {
    platform::win32::SystemServices services({});
    wchar_t windows[MAX_PATH] = {};
    wchar_t temporary[MAX_PATH] = {};
    GetSystemDirectoryW(windows, MAX_PATH);
    GetTempPathW(MAX_PATH, temporary);
    const std::wstring copy = std::wstring(temporary) + L"orv start test.exe";
    ASSERT_TRUE(CopyFileW((std::wstring(windows) + L"\\hostname.exe").c_str(), copy.c_str(), FALSE));
    EXPECT_NO_THROW(services.View().desktop.StartProcess(copy));
    for (int i = 0; i < 100 && !DeleteFileW(copy.c_str()); ++i)
        Sleep(50);
}

} // namespace
} // namespace orv::tests
