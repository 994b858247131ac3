// What the integrator's guide shows is run as it stands.
#include <string>

#include <gtest/gtest.h>

#include "tests/com/component.h"
#include "text/version.h"

namespace orv::tests {
namespace {

constexpr DWORD kPatience = 60'000;

struct Outcome {
    DWORD code = static_cast<DWORD>(-1);
    std::string output; ///< lines end with '\n' alone
};

std::string ReadAll(HANDLE pipe) {
    std::string text;
    char buffer[512];
    for (DWORD count = 0; ReadFile(pipe, buffer, sizeof buffer, &count, nullptr) && count > 0;)
        text.append(buffer, count);
    std::erase(text, '\r');
    return text;
}

/// A program that writes less than a pipe holds.
Outcome RunProgram(std::wstring command) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE reading = nullptr;
    HANDLE writing = nullptr;
    if (!CreatePipe(&reading, &writing, &inherited, 0))
        return {};
    const platform::win32::OwnedHandle reader(reading);
    platform::win32::OwnedHandle writer(writing);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = writing;
    PROCESS_INFORMATION made{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &made))
        return {};
    const platform::win32::OwnedHandle process(made.hProcess);
    const platform::win32::OwnedHandle thread(made.hThread);
    if (WaitForSingleObject(process.Get(), kPatience) != WAIT_OBJECT_0)
        TerminateProcess(process.Get(), 99);
    Outcome outcome;
    GetExitCodeProcess(process.Get(), &outcome.code);
    writer.Reset();
    outcome.output = ReadAll(reader.Get());
    return outcome;
}

std::string Version() {
    return std::to_string(text::kVersionMajor) + "." + std::to_string(text::kVersionMinor) + "." +
           std::to_string(text::kVersionRevision);
}

class Examples : public testing::Test {
  protected:
    Examples() { EXPECT_EQ(component.Register(), S_OK); }
    ~Examples() override { EXPECT_EQ(component.Unregister(), S_OK); }
    Component component;
};

TEST_F(Examples, TheMinimalContainerShowsTheControlAndLetsGoOfIt) {
    const std::wstring command = L"\"" ORV_MINIMAL_CONTAINER L"\" --close";
    const Outcome shown = RunProgram(command);
    EXPECT_EQ(shown.code, 0u);
    EXPECT_EQ(shown.output, "shown 1, keyboard 1\nProgID OrvOutFormat.AddOnControl\nVersion " + Version() +
                                "\nGetResult -1\nreferences left 0\n");
    ASSERT_EQ(component.Unregister(), S_OK);
    const Outcome missing = RunProgram(command);
    EXPECT_EQ(missing.code, 1u);
    EXPECT_EQ(missing.output, "failed with 800401f3\n") << "CO_E_CLASSSTRING";
}

TEST_F(Examples, TheScriptTriesTheMembers) {
    // A path from the build machine's root would pass for an option.
    wchar_t file[MAX_PATH] = {};
    GetFullPathNameW(ORV_TRY_COMPONENT, MAX_PATH, file, nullptr);
    const Outcome outcome = RunProgram(std::wstring(L"cscript //nologo \"") + file + L"\"");
    EXPECT_EQ(outcome.code, 0u);
    EXPECT_EQ(outcome.output, "OrvOutFormat.AddOnControl " + Version() +
                                  "\ncluster 1, device 0\ntoo large: error 6\nresult -1\nleast size -1 by -1\n"
                                  "several at once: False\nmay be unloaded: True\npicture: Picture\n");
}

} // namespace
} // namespace orv::tests
