// The component's registration of itself, and what others find by it.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/com/component.h"
#include "tests/com/registry_tree.h"

#include <olectl.h>
#include <oleidl.h>

namespace orv::tests {
namespace {

using platform::win32::OwnedKey;

using Tree = std::vector<std::wstring>;

struct Classes {
    Tree root = RegistryTree(HKEY_CLASSES_ROOT, L"");
    Tree machine = RegistryTree(HKEY_LOCAL_MACHINE, L"Software\\Classes");
    Tree user = RegistryTree(HKEY_CURRENT_USER, L"Software\\Classes");
    bool operator==(const Classes&) const = default;
};

/// What regsvr32 answers.
DWORD RegSvr(const wchar_t* options) {
    std::wstring command = L"regsvr32 /s " + std::wstring(options) + L" \"" + Component::Path() + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
        return GetLastError();
    const platform::win32::OwnedHandle handle(process.hProcess);
    const platform::win32::OwnedHandle thread(process.hThread);
    DWORD code = WAIT_TIMEOUT;
    if (WaitForSingleObject(handle.Get(), 60'000) == WAIT_OBJECT_0)
        GetExitCodeProcess(handle.Get(), &code);
    return code;
}

std::wstring ClassKey() {
    wchar_t text[40];
    StringFromGUID2(CLSID_AddOnControl, text, ARRAYSIZE(text));
    return std::wstring(L"Software\\Classes\\CLSID\\") + text;
}

/// The component's class as somebody else's, taking no lasting keys: registering comes to grief half-way there.
class Obstacle {
  public:
    explicit Obstacle(HKEY hive) : hive_(hive) {
        HKEY made = nullptr;
        EXPECT_EQ(RegCreateKeyExW(hive, ClassKey().c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr,
                                  &made, nullptr),
                  ERROR_SUCCESS);
        const OwnedKey key(made);
        RegSetValueExW(made, L"Foreign", 0, REG_SZ, reinterpret_cast<const BYTE*>(L"1"), 4);
    }
    ~Obstacle() { RegDeleteTreeW(hive_, ClassKey().c_str()); }
    Obstacle(const Obstacle&) = delete;
    Obstacle& operator=(const Obstacle&) = delete;

  private:
    HKEY hive_;
};

class Registered : public testing::Test {
  protected:
    Registered() { component.Unregister(); }
    ~Registered() override { component.Unregister(); }
    Component component;
};

TEST_F(Registered, ThereAndBackLeavesTheRegistryAsFound) {
    const Classes before;
    ASSERT_GT(before.root.size(), 100u);
    ASSERT_GT(before.machine.size(), 100u);
    ASSERT_EQ(RegSvr(L""), 0u);
    ASSERT_EQ(RegSvr(L""), 0u);
    const Classes registered;
    EXPECT_GT(registered.machine.size(), before.machine.size() + 30);
    EXPECT_EQ(registered.user.size(), before.user.size());
    EXPECT_EQ(RegSvr(L"/u"), 0u);
    EXPECT_TRUE(Classes() == before);
    EXPECT_EQ(RegSvr(L"/u"), 0u) << "nothing there to undo";
}

TEST_F(Registered, HalfWayItLeavesNothingOfTheHalf) {
    const Obstacle machine(HKEY_LOCAL_MACHINE);
    const Classes before;
    EXPECT_EQ(component.Register(), S_OK) << "for the user";
    {
        const Classes registered;
        EXPECT_EQ(registered.machine, before.machine) << "half of it is left for the whole machine";
        EXPECT_GT(registered.user.size(), before.user.size() + 30);
    }
    EXPECT_EQ(component.Unregister(), S_OK);
    EXPECT_TRUE(Classes() == before);
    const Obstacle user(HKEY_CURRENT_USER);
    const Classes barred;
    EXPECT_EQ(component.Register(), SELFREG_E_CLASS);
    EXPECT_TRUE(Classes() == barred);
}

TEST_F(Registered, FoundByItsProgIdWithAllThatContainersAsk) {
    ASSERT_EQ(component.Register(), S_OK);
    CLSID id{};
    for (const wchar_t* progId : {L"OrvOutFormat.AddOnControl", L"OrvOutFormat.AddOnControl.1"}) {
        ASSERT_EQ(CLSIDFromProgID(progId, &id), S_OK);
        EXPECT_EQ(id, CLSID_AddOnControl);
    }
    ComPtr<IAddOn> made;
    ASSERT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IAddOn, made.PutVoid()), S_OK);
    BSTR answered = nullptr;
    ASSERT_EQ(made->get_ProgID(&answered), S_OK);
    LPOLESTR registered = nullptr;
    ASSERT_EQ(ProgIDFromCLSID(id, &registered), S_OK);
    EXPECT_STREQ(answered, registered);
    SysFreeString(answered);
    CoTaskMemFree(registered);
    DWORD status = 0;
    ASSERT_EQ(OleRegGetMiscStatus(id, DVASPECT_CONTENT, &status), S_OK);
    DWORD own = 1;
    ASSERT_EQ(Query<IOleObject>(made.Get())->GetMiscStatus(DVASPECT_CONTENT, &own), S_OK);
    EXPECT_EQ(status, own);
    ComPtr<ITypeLib> library;
    EXPECT_EQ(LoadRegTypeLib(LIBID_OrvOutFormat, 1, 0, 0, library.Put()), S_OK);
}

TEST_F(Registered, MovedFileRepairsItsPath) {
    ASSERT_EQ(component.Register(), S_OK);
    const std::wstring server = ClassKey() + L"\\InprocServer32";
    const std::wstring stale = L"c:\\nowhere\\OrvOutFormat.ocx";
    ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, server.c_str(), nullptr, REG_SZ, stale.c_str(),
                              static_cast<DWORD>((stale.size() + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
    ComPtr<IUnknown> made;
    EXPECT_TRUE(
        FAILED(CoCreateInstance(CLSID_AddOnControl, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, made.PutVoid())));
    ASSERT_EQ(component.Register(), S_OK);
    EXPECT_EQ(CoCreateInstance(CLSID_AddOnControl, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, made.PutVoid()), S_OK);
}

} // namespace
} // namespace orv::tests
