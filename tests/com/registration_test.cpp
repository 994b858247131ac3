// The component's registration of itself, and what others find by it.
#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "tests/com/component.h"

#include <oleidl.h>

namespace orv::tests {
namespace {

using platform::win32::OwnedKey;

void Dump(HKEY parent, const std::wstring& path, std::vector<std::wstring>& lines) {
    HKEY raw = nullptr;
    if (RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ, &raw) != ERROR_SUCCESS)
        return;
    const OwnedKey key(raw);
    lines.push_back(path);
    wchar_t name[512];
    BYTE data[4096];
    for (DWORD i = 0;; ++i) {
        DWORD length = ARRAYSIZE(name);
        DWORD size = sizeof data;
        if (RegEnumValueW(raw, i, name, &length, nullptr, nullptr, data, &size) != ERROR_SUCCESS)
            break;
        lines.push_back(path + L"|" + name + L"=" + std::wstring(data, data + size));
    }
    for (DWORD i = 0;; ++i) {
        DWORD length = ARRAYSIZE(name);
        if (RegEnumKeyExW(raw, i, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        Dump(parent, path + L"\\" + name, lines);
    }
}

std::vector<std::wstring> Classes() {
    std::vector<std::wstring> lines;
    Dump(HKEY_LOCAL_MACHINE, L"Software\\Classes", lines);
    Dump(HKEY_CURRENT_USER, L"Software\\Classes", lines);
    std::sort(lines.begin(), lines.end());
    return lines;
}

class Registered : public testing::Test {
  protected:
    Registered() { component.Unregister(); }
    ~Registered() override { component.Unregister(); }
    Component component;
};

TEST_F(Registered, ThereAndBackLeavesTheRegistryAsFound) {
    const auto before = Classes();
    ASSERT_GT(before.size(), 100u);
    EXPECT_EQ(component.Register(), S_OK);
    EXPECT_EQ(component.Register(), S_OK);
    EXPECT_NE(Classes(), before);
    EXPECT_EQ(component.Unregister(), S_OK);
    const auto after = Classes();
    EXPECT_EQ(after.size(), before.size());
    EXPECT_TRUE(after == before);
    EXPECT_EQ(component.Unregister(), S_OK);
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
    const std::wstring server = L"Software\\Classes\\CLSID\\" + [] {
        wchar_t text[40];
        StringFromGUID2(CLSID_AddOnControl, text, ARRAYSIZE(text));
        return std::wstring(text);
    }() + L"\\InprocServer32";
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
