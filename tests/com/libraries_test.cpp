// Where the component takes the system's libraries from.
#include "tests/com/running.h"

namespace orv::tests {
namespace {

std::wstring FileOf(HMODULE module) {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(module, path, MAX_PATH);
    return path;
}

std::wstring FolderOf(const std::wstring& path) {
    return path.substr(0, path.find_last_of(L'\\'));
}

/// A library of that name where the application's own files are. Any will do.
class Planted {
  public:
    explicit Planted(const wchar_t* name) : path_(FolderOf(FileOf(nullptr)) + L"\\" + name) {
        CopyFileW(Component::Path().c_str(), path_.c_str(), FALSE);
    }
    ~Planted() { DeleteFileW(path_.c_str()); }
    Planted(const Planted&) = delete;
    Planted& operator=(const Planted&) = delete;
    const std::wstring& Path() const { return path_; }

  private:
    std::wstring path_;
};

TEST_F(Running, TakesNoLibraryFromBesideTheApplication) {
    constexpr wchar_t kEditLibrary[] = L"Msftedit.dll";
    ASSERT_EQ(GetModuleHandleW(kEditLibrary), nullptr) << "it is there already, and would be taken as it is";
    const Planted planted(kEditLibrary);
    ASSERT_NE(GetFileAttributesW(planted.Path().c_str()), INVALID_FILE_ATTRIBUTES);
    Start();
    const HMODULE loaded = GetModuleHandleW(kEditLibrary);
    ASSERT_NE(loaded, nullptr);
    wchar_t system[MAX_PATH] = {};
    GetSystemDirectoryW(system, MAX_PATH);
    EXPECT_EQ(lstrcmpiW(FolderOf(FileOf(loaded)).c_str(), system), 0) << testing::PrintToString(FileOf(loaded));
    container.reset();
    EXPECT_EQ(GetModuleHandleW(kEditLibrary), nullptr) << "a library stays behind";
}

} // namespace
} // namespace orv::tests
