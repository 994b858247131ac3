// Which entries a file may take away: its own, whatever else stands under the same names.
#include <filesystem>

#include <gtest/gtest.h>

#include "addon/com/component_registration.h"
#include "tests/com/component.h"
#include "tests/com/registry_tree.h"

#include <olectl.h>

namespace orv::tests {
namespace {

using namespace addon::com;
using platform::win32::OwnedKey;

using Tree = std::vector<std::wstring>;

constexpr wchar_t kPlace[] = L"Software\\OrvOwnershipTest";
constexpr wchar_t kElsewhere[] = L"c:\\elsewhere\\OrvOutFormat.ocx";

std::wstring Identifier(REFGUID id) {
    wchar_t text[40] = {};
    StringFromGUID2(id, text, ARRAYSIZE(text));
    return text;
}

const std::wstring kClass = L"CLSID\\" + Identifier(CLSID_AddOnControl);
const std::wstring kServer = kClass + L"\\InprocServer32";
const std::wstring kLibrary = L"TypeLib\\" + Identifier(LIBID_OrvOutFormat) + L"\\1.0";
const std::wstring kName = L"OrvOutFormat.AddOnControl";
#ifdef _WIN64
const std::wstring kOwnFile = kLibrary + L"\\0\\win64";
const std::wstring kOtherFile = kLibrary + L"\\0\\win32";
#else
const std::wstring kOwnFile = kLibrary + L"\\0\\win32";
const std::wstring kOtherFile = kLibrary + L"\\0\\win64";
#endif

void Set(HKEY root, const std::wstring& key, const std::wstring& value, DWORD type = REG_SZ) {
    EXPECT_EQ(RegSetKeyValueW(root, key.c_str(), nullptr, type, value.c_str(),
                              static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
}

/// The same file under another name.
std::wstring InAnotherCase(std::wstring path) {
    CharUpperBuffW(path.data(), static_cast<DWORD>(path.size()));
    return path;
}
std::wstring WithOtherSlashes(std::wstring path) {
    std::replace(path.begin(), path.end(), L'\\', L'/');
    return path;
}
std::wstring OverADetour(const std::wstring& path) {
    const auto cut = path.rfind(L'\\');
    return path.substr(0, cut) + L"\\..\\" + path.substr(path.rfind(L'\\', cut - 1) + 1);
}
std::wstring Short(const std::wstring& path) {
    wchar_t name[MAX_PATH] = {};
    return GetShortPathNameW(path.c_str(), name, MAX_PATH) != 0 ? name : path;
}

class Ownership : public testing::Test {
  protected:
    Ownership() { ComponentTable(path).Apply(root.Get()); }
    ~Ownership() override { RegDeleteTreeW(HKEY_CURRENT_USER, kPlace); }

    static OwnedKey Make(const std::wstring& name) {
        HKEY key = nullptr;
        EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, (kPlace + name).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                  &key, nullptr),
                  ERROR_SUCCESS);
        return OwnedKey(key);
    }
    void Clear() {
        RegDeleteTreeW(HKEY_CURRENT_USER, kPlace);
        root = Make(L"");
    }
    static Tree Now() { return RegistryTree(HKEY_CURRENT_USER, kPlace); }
    bool Has(const std::wstring& key) const { return ReadValue(root.Get(), key).has_value(); }
    LSTATUS TakeBack() {
        return Unregister([this](HKEY under) { return OwnEntries(path, under); }, {root.Get(), nullptr});
    }

    const std::wstring path = Component::Path();
    OwnedKey root = Make(L"");
};

TEST_F(Ownership, AFileIsKnownByWhateverNameItIsRegistered) {
    const std::pair<std::wstring, DWORD> spellings[] = {
        {path, REG_SZ},
        {InAnotherCase(path), REG_SZ},
        {WithOtherSlashes(path), REG_SZ},
        {OverADetour(path), REG_SZ},
        {Short(path), REG_SZ},
        {L"\"" + path + L"\"", REG_SZ},
        {L"\\\\?\\" + path, REG_SZ},
        {L"%ORV_OWNERSHIP%\\" + path.substr(path.rfind(L'\\') + 1), REG_EXPAND_SZ},
    };
    SetEnvironmentVariableW(L"ORV_OWNERSHIP", path.substr(0, path.rfind(L'\\')).c_str());
    for (const auto& [spelling, type] : spellings) {
        SCOPED_TRACE(testing::PrintToString(spelling));
        ComponentTable(path).Apply(root.Get());
        Set(root.Get(), kServer, spelling, type);
        Set(root.Get(), kOwnFile, spelling, type);
        EXPECT_EQ(TakeBack(), ERROR_SUCCESS);
        EXPECT_EQ(Now(), Tree{kPlace});
    }
    SetEnvironmentVariableW(L"ORV_OWNERSHIP", nullptr);
}

TEST_F(Ownership, WhatLeadsToAnotherFileStays) {
    Set(root.Get(), kServer, kElsewhere);
    Set(root.Get(), kOwnFile, kElsewhere);
    const Tree before = Now();
    EXPECT_EQ(TakeBack(), ERROR_SUCCESS) << "nothing of its own is there";
    EXPECT_EQ(Now(), before);
    RegDeleteTreeW(root.Get(), kServer.c_str());
    RegDeleteTreeW(root.Get(), kOwnFile.c_str());
    const Tree nobodys = Now();
    EXPECT_EQ(TakeBack(), ERROR_SUCCESS);
    EXPECT_EQ(Now(), nobodys) << "keys without a file are not known to be its own";
}

TEST_F(Ownership, EachPartGoesByItsOwnFile) {
    const std::wstring face = L"Interface\\" + Identifier(IID_IAddOnControl);
    const std::wstring later = L"{11111111-2222-3333-4444-555555555555}";
    struct Case {
        const char* what;
        std::wstring key;
        std::wstring value;
        std::vector<std::wstring> stays;
        std::vector<std::wstring> goes;
    };
    const Case cases[] = {
        {"the class is another's",
         kServer,
         kElsewhere,
         {kServer, kClass, kName, kName + L".1"},
         {kOwnFile, kLibrary, face}},
        {"the library is another's", kOwnFile, kElsewhere, {kOwnFile, kLibrary, face}, {kServer, kClass, kName}},
        {"the other word size has the library, too",
         kOtherFile,
         kElsewhere,
         {kOtherFile, kLibrary},
         {kOwnFile, face, kServer, kName}},
        {"a later version has the name",
         kName + L"\\CLSID",
         later,
         {kName, kName + L"\\CLSID"},
         {kServer, kName + L".1", kLibrary}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Clear();
        ASSERT_EQ(ComponentTable(path).Apply(root.Get()), ERROR_SUCCESS);
        Set(root.Get(), c.key, c.value);
        EXPECT_EQ(TakeBack(), ERROR_SUCCESS);
        for (const std::wstring& key : c.stays)
            EXPECT_TRUE(Has(key)) << testing::PrintToString(key);
        for (const std::wstring& key : c.goes)
            EXPECT_FALSE(Has(key)) << testing::PrintToString(key);
        EXPECT_EQ(ReadValue(root.Get(), c.key), c.value);
    }
}

TEST_F(Ownership, MachineAndUserAreLookedAtEachByItself) {
    Clear();
    const OwnedKey machine = Make(L"\\Machine");
    const OwnedKey user = Make(L"\\User");
    ASSERT_EQ(ComponentTable(kElsewhere).Apply(machine.Get()), ERROR_SUCCESS);
    const Tree before = RegistryTree(machine.Get(), L"");
    ASSERT_EQ(ComponentTable(path).Apply(user.Get()), ERROR_SUCCESS);
    EXPECT_EQ(Unregister([this](HKEY under) { return OwnEntries(path, under); }, {machine.Get(), user.Get()}),
              ERROR_SUCCESS);
    EXPECT_EQ(RegistryTree(machine.Get(), L""), before);
    EXPECT_EQ(RegistryTree(user.Get(), L""), Tree{L""});
}

/// The component's file once more, in a folder of its own.
class Copy {
  public:
    Copy() {
        std::filesystem::create_directories(folder_);
        std::filesystem::copy_file(Component::Path(), file_, std::filesystem::copy_options::overwrite_existing);
        module_ = platform::win32::OwnedModule(LoadLibraryW(file_.c_str()));
    }
    ~Copy() {
        module_.Reset();
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;
    HRESULT Call(const char* entry) const {
        const FARPROC found = GetProcAddress(module_.Get(), entry);
        return found ? reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(reinterpret_cast<void*>(found))() : E_FAIL;
    }

  private:
    std::filesystem::path folder_ = std::filesystem::temp_directory_path() / L"OrvOwnershipTest";
    std::filesystem::path file_ = folder_ / L"OrvOutFormat.ocx";
    platform::win32::OwnedModule module_;
};

TEST(Copies, AnOldCopyTakesNothingFromTheNewOne) {
    const Component component;
    const Copy old;
    ASSERT_EQ(old.Call("DllRegisterServer"), S_OK);
    ASSERT_EQ(component.Register(), S_OK);
    const Tree before = RegistryTree(HKEY_LOCAL_MACHINE, L"Software\\Classes");
    EXPECT_EQ(old.Call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(RegistryTree(HKEY_LOCAL_MACHINE, L"Software\\Classes"), before);
    ComPtr<IUnknown> made;
    EXPECT_EQ(CoCreateInstance(CLSID_AddOnControl, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, made.PutVoid()), S_OK);
    EXPECT_EQ(component.Unregister(), S_OK);
    EXPECT_FALSE(ReadValue(HKEY_LOCAL_MACHINE, L"Software\\Classes\\" + kServer));
}

TEST(Copies, TheNameStaysForTheOtherWordSize) {
    const Component component;
    ASSERT_EQ(component.Register(), S_OK);
    const std::wstring server = L"Software\\Classes\\" + kServer;
    const std::wstring name = L"Software\\Classes\\" + kName;
    constexpr REGSAM kOther = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    HKEY other = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, server.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS | kOther, nullptr,
                              &other, nullptr),
              ERROR_SUCCESS);
    {
        const OwnedKey key(other);
        Set(other, L"", kElsewhere);
    }
    EXPECT_EQ(component.Unregister(), S_OK);
    EXPECT_FALSE(ReadValue(HKEY_LOCAL_MACHINE, server));
    EXPECT_TRUE(ReadValue(HKEY_LOCAL_MACHINE, name));
    ASSERT_EQ(component.Register(), S_OK);
    EXPECT_EQ(RegDeleteKeyExW(HKEY_LOCAL_MACHINE, server.c_str(), kOther, 0), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteKeyExW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + kClass).c_str(), kOther, 0), ERROR_SUCCESS);
    EXPECT_EQ(component.Unregister(), S_OK);
    EXPECT_FALSE(ReadValue(HKEY_LOCAL_MACHINE, name));
}

} // namespace
} // namespace orv::tests
