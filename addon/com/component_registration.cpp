#include "addon/com/component_registration.h"

#include <OrvOutFormat.h>

namespace orv::addon::com {
namespace {

using platform::win32::OwnedKey;

constexpr wchar_t kName[] = L"Output Format Addon";
constexpr wchar_t kLibraryVersion[] = L"1.0";
// Marshals automation interfaces by their type library.
constexpr wchar_t kAutomationMarshaler[] = L"{00020424-0000-0000-C000-000000000046}";

#ifdef _WIN64
constexpr wchar_t kPlatform[] = L"win64";
#else
constexpr wchar_t kPlatform[] = L"win32";
#endif

std::wstring Text(REFGUID id) {
    wchar_t buffer[40] = {};
    StringFromGUID2(id, buffer, ARRAYSIZE(buffer));
    return buffer;
}

std::wstring FolderOf(const std::wstring& path) {
    return path.substr(0, path.find_last_of(L"\\/"));
}

std::wstring MiscStatus() {
    return std::to_wstring(OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
                           OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST);
}

} // namespace

RegistrationTable ComponentTable(const std::wstring& path) {
    const std::wstring id = Text(CLSID_AddOnControl);
    const std::wstring library = Text(LIBID_OrvOutFormat);
    const std::wstring progId = kProgId;
    const std::wstring cls = L"CLSID\\" + id;
    const std::wstring lib = L"TypeLib\\" + library + L"\\" + kLibraryVersion;
    const std::wstring face = L"Interface\\" + Text(IID_IAddOnControl);
    // The class says the plain ProgID, which is what the component answers when the host asks for it.
    return RegistrationTable({
        {progId, L"", kName},
        {progId + L"\\CLSID", L"", id},
        {progId + L"\\CurVer", L"", progId + L".1"},
        {progId + L".1", L"", kName},
        {progId + L".1\\CLSID", L"", id},
        {cls, L"", kName},
        {cls + L"\\ProgID", L"", progId},
        {cls + L"\\VersionIndependentProgID", L"", progId},
        {cls + L"\\InprocServer32", L"", path},
        {cls + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
        {cls + L"\\Control", L"", L""},
        {cls + L"\\Programmable", L"", L""},
        {cls + L"\\MiscStatus", L"", L"0"},
        {cls + L"\\MiscStatus\\1", L"", MiscStatus()},
        {cls + L"\\TypeLib", L"", library},
        {cls + L"\\Version", L"", kLibraryVersion},
        {lib, L"", kName},
        {lib + L"\\FLAGS", L"", L"2"}, // LIBFLAG_FCONTROL
        {lib + L"\\0\\" + kPlatform, L"", path},
        {lib + L"\\HELPDIR", L"", FolderOf(path)},
        {face, L"", L"IAddOnControl"},
        {face + L"\\ProxyStubClsid32", L"", kAutomationMarshaler},
        {face + L"\\TypeLib", L"", library},
        {face + L"\\TypeLib", L"Version", kLibraryVersion},
    });
}

ClassesRoots::ClassesRoots() {
    const auto open = [](HKEY hive, REGSAM access) {
        HKEY key = nullptr;
        return OwnedKey(RegCreateKeyExW(hive, L"Software\\Classes", 0, nullptr, 0, access, nullptr, &key, nullptr) ==
                                ERROR_SUCCESS
                            ? key
                            : nullptr);
    };
    machine_ = open(HKEY_LOCAL_MACHINE, KEY_READ | KEY_WRITE);
    user_ = open(HKEY_CURRENT_USER, KEY_READ | KEY_WRITE);
}

} // namespace orv::addon::com
