// A script without types drives the control.
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/com/component.h"

namespace orv::tests {
namespace {

constexpr DWORD kPatience = 60'000;

constexpr char kScript[] = R"(
Sub Expect(step, actual, wanted)
  If actual <> wanted Then WScript.Quit step
End Sub
Set c = CreateObject("OrvOutFormat.AddOnControl")
Expect 1, c.ProgID, "OrvOutFormat.AddOnControl"
Expect 2, c.GetResult, -1
Expect 3, c.MultipleInstances, False
c.Argument = "an argument"
Expect 4, c.Argument, "an argument"
c.CurrentClusterIndex = 2
c.CurrentDeviceIndex = "3"
Expect 5, c.CurrentClusterIndex * 32 + c.CurrentDeviceIndex, 67
c.OrvProtocol = Nothing
Set c.OrvProtocol = Nothing
Expect 6, (c.OrvProtocol Is Nothing), True
c.Enable
Expect 7, c.GetResult, -1
Expect 8, c.GetMenuEntry(1, "a", "b", Empty), False
Expect 9, c.RequestUnload, True
Expect 10, c.MinSupportedVersion, 0
Dim w, h
c.GetMinSize w, h
Expect 11, w + h, -2
Expect 12, IsEmpty(c.SelectedDevicesIndexes), True
c.Modal = True
Expect 13, c.Modal, False
Expect 14, TypeName(c.Picture), "Picture"
c.MenuClicked 1
c.ToolbarButtonClicked 1, "x"
c.Unregister
On Error Resume Next
c.CurrentClusterIndex = 70000
Expect 15, (Err.Number <> 0), True
Err.Clear
c.NoSuchMember
Expect 16, (Err.Number <> 0), True
WScript.Quit 77
)";

DWORD RunScript(const std::wstring& file) {
    std::wstring command = L"cscript //nologo \"" + file + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
        return static_cast<DWORD>(-1);
    const platform::win32::OwnedHandle handle(process.hProcess);
    const platform::win32::OwnedHandle thread(process.hThread);
    if (WaitForSingleObject(handle.Get(), kPatience) != WAIT_OBJECT_0)
        TerminateProcess(handle.Get(), 99);
    DWORD code = 0;
    GetExitCodeProcess(handle.Get(), &code);
    return code;
}

TEST(Script, CreatesTheControlByNameAndUsesEveryKindOfMember) {
    const Component component;
    ASSERT_EQ(component.Register(), S_OK);
    wchar_t folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    const std::wstring file = std::wstring(folder) + L"orv_script_test.vbs";
    {
        std::ofstream out(std::filesystem::path(file), std::ios::binary);
        out << kScript;
    }
    EXPECT_EQ(RunScript(file), 77u) << "the number of the step that failed, or 0 for an error of the script";
    DeleteFileW(file.c_str());
    EXPECT_EQ(component.Unregister(), S_OK);
}

} // namespace
} // namespace orv::tests
