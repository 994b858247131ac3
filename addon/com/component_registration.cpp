#include "addon/com/component_registration.h"

#include <OrvOutFormat.h>

#include "addon/com/same_file.h"

namespace orv::addon::com {
namespace {

using platform::win32::OwnedKey;

constexpr wchar_t kName[] = L"Output Format Addon";
constexpr wchar_t kLibraryVersion[] = L"1.0";
// Marshals automation interfaces by their type library.
constexpr wchar_t kAutomationMarshaler[] = L"{00020424-0000-0000-C000-000000000046}";

#ifdef _WIN64
constexpr wchar_t kPlatform[] = L"win64";
constexpr wchar_t kOtherPlatform[] = L"win32";
#else
constexpr wchar_t kPlatform[] = L"win32";
constexpr wchar_t kOtherPlatform[] = L"win64";
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

/// The keys of one component.
struct Keys {
    std::wstring id = Text(CLSID_AddOnControl);
    std::wstring typeLibrary = Text(LIBID_OrvOutFormat);
    std::wstring progId = kProgId;
    std::wstring progIdOne = progId + L".1";
    std::wstring cls = L"CLSID\\" + id;
    std::wstring server = cls + L"\\InprocServer32";
    std::wstring lib = L"TypeLib\\" + typeLibrary + L"\\" + kLibraryVersion;
    std::wstring file = lib + L"\\0\\" + kPlatform;
    std::wstring otherFile = lib + L"\\0\\" + kOtherPlatform;
    std::wstring face = L"Interface\\" + Text(IID_IAddOnControl);
};

using Entries = std::vector<RegistryEntry>;

// The class says the plain ProgID, which is what the component answers when the host asks for it.
Entries NameEntries(const Keys& keys) {
    return {{keys.progId, L"", kName},
            {keys.progId + L"\\CLSID", L"", keys.id},
            {keys.progId + L"\\CurVer", L"", keys.progIdOne}};
}

Entries VersionNameEntries(const Keys& keys) {
    return {{keys.progIdOne, L"", kName}, {keys.progIdOne + L"\\CLSID", L"", keys.id}};
}

Entries ClassEntries(const Keys& keys, const std::wstring& path) {
    return {{keys.cls, L"", kName},
            {keys.cls + L"\\ProgID", L"", keys.progId},
            {keys.cls + L"\\VersionIndependentProgID", L"", keys.progId},
            {keys.server, L"", path},
            {keys.server, L"ThreadingModel", L"Apartment"},
            {keys.cls + L"\\Control", L"", L""},
            {keys.cls + L"\\Programmable", L"", L""},
            {keys.cls + L"\\MiscStatus", L"", L"0"},
            {keys.cls + L"\\MiscStatus\\1", L"", MiscStatus()},
            {keys.cls + L"\\TypeLib", L"", keys.typeLibrary},
            {keys.cls + L"\\Version", L"", kLibraryVersion}};
}

Entries LibraryEntries(const Keys& keys, const std::wstring& path) {
    return {{keys.lib, L"", kName},
            {keys.lib + L"\\FLAGS", L"", L"2"}, // LIBFLAG_FCONTROL
            {keys.lib + L"\\HELPDIR", L"", FolderOf(path)}};
}

/// What goes by the library in the file: the file's own place in it, and the interface that is marshalled with it.
Entries FileEntries(const Keys& keys, const std::wstring& path) {
    return {{keys.file, L"", path},
            {keys.face, L"", L"IAddOnControl"},
            {keys.face + L"\\ProxyStubClsid32", L"", kAutomationMarshaler},
            {keys.face + L"\\TypeLib", L"", keys.typeLibrary},
            {keys.face + L"\\TypeLib", L"Version", kLibraryVersion}};
}

void Append(Entries& entries, const Entries& more) {
    entries.insert(entries.end(), more.begin(), more.end());
}

bool LeadsTo(HKEY root, const std::wstring& key, const std::wstring& path) {
    const auto registered = ReadValue(root, key);
    return registered && SameFile(*registered, path);
}

bool Says(HKEY root, const std::wstring& key, const std::wstring& id) {
    const auto registered = ReadValue(root, key);
    return registered && CompareStringOrdinal(registered->c_str(), -1, id.c_str(), -1, TRUE) == CSTR_EQUAL;
}

// Names are shared between the word sizes, whose classes are kept apart. A key opened below another one is not looked
// for in the other view by every system; the place where that view keeps its classes is the same everywhere.
bool OtherWordSize(HKEY root, const Keys& keys, const std::wstring& path) {
    const auto another = [&path](const std::optional<std::wstring>& server) {
        return server && !SameFile(*server, path);
    };
    return another(ReadValue(root, keys.server, {}, KEY_WOW64_32KEY)) ||
           another(ReadValue(root, keys.server, {}, KEY_WOW64_64KEY)) ||
           another(ReadValue(root, L"Wow6432Node\\" + keys.server));
}

} // namespace

RegistrationTable ComponentTable(const std::wstring& path) {
    const Keys keys;
    Entries entries;
    for (const Entries& part : {NameEntries(keys), VersionNameEntries(keys), ClassEntries(keys, path),
                                LibraryEntries(keys, path), FileEntries(keys, path)})
        Append(entries, part);
    return RegistrationTable(std::move(entries));
}

RegistrationTable OwnEntries(const std::wstring& path, HKEY root) {
    const Keys keys;
    Entries entries;
    if (LeadsTo(root, keys.server, path)) {
        Append(entries, ClassEntries(keys, path));
        const bool named = !OtherWordSize(root, keys, path);
        // A later version may have taken the name over for a class of its own.
        if (named && Says(root, keys.progId + L"\\CLSID", keys.id))
            Append(entries, NameEntries(keys));
        if (named && Says(root, keys.progIdOne + L"\\CLSID", keys.id))
            Append(entries, VersionNameEntries(keys));
    }
    if (LeadsTo(root, keys.file, path)) {
        Append(entries, FileEntries(keys, path));
        if (!ReadValue(root, keys.otherFile))
            Append(entries, LibraryEntries(keys, path));
    }
    return RegistrationTable(std::move(entries));
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
