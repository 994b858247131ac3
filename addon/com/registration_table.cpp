#include "addon/com/registration_table.h"

#include <algorithm>
#include <set>

namespace orv::addon::com {
namespace {

using platform::win32::OwnedKey;

OwnedKey Open(HKEY root, const std::wstring& path, REGSAM access, LSTATUS* status = nullptr) {
    HKEY key = nullptr;
    const LSTATUS opened = RegOpenKeyExW(root, path.c_str(), 0, access, &key);
    if (status)
        *status = opened;
    return OwnedKey(opened == ERROR_SUCCESS ? key : nullptr);
}

// Places for the environment in a value are filled in on the way.
std::optional<std::wstring> Read(HKEY key, const std::wstring& name) {
    DWORD size = 0;
    if (RegGetValueW(key, nullptr, name.c_str(), RRF_RT_REG_SZ, nullptr, nullptr, &size) != ERROR_SUCCESS)
        return std::nullopt;
    std::wstring text(size / sizeof(wchar_t) + 1, L'\0');
    size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    if (RegGetValueW(key, nullptr, name.c_str(), RRF_RT_REG_SZ, nullptr, text.data(), &size) != ERROR_SUCCESS)
        return std::nullopt;
    text.resize(wcslen(text.c_str()));
    return text;
}

bool Holds(HKEY root, const RegistryEntry& entry) {
    const OwnedKey key = Open(root, entry.key, KEY_QUERY_VALUE);
    return key && Read(key.Get(), entry.name) == entry.value;
}

LSTATUS Write(HKEY root, const RegistryEntry& entry) {
    HKEY raw = nullptr;
    LSTATUS status = RegCreateKeyExW(root, entry.key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                     KEY_SET_VALUE | KEY_QUERY_VALUE, nullptr, &raw, nullptr);
    if (status != ERROR_SUCCESS)
        return status;
    const OwnedKey key(raw);
    const auto size = static_cast<DWORD>((entry.value.size() + 1) * sizeof(wchar_t));
    status =
        RegSetValueExW(raw, entry.name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(entry.value.c_str()), size);
    if (status != ERROR_SUCCESS)
        return status;
    return Holds(root, entry) ? ERROR_SUCCESS : ERROR_REGISTRY_IO_FAILED;
}

bool Absent(LSTATUS status) {
    return status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND;
}

LSTATUS DeleteValue(HKEY root, const RegistryEntry& entry) {
    LSTATUS status = ERROR_SUCCESS;
    const OwnedKey key = Open(root, entry.key, KEY_SET_VALUE, &status);
    if (key)
        status = RegDeleteValueW(key.Get(), entry.name.c_str());
    return Absent(status) ? ERROR_SUCCESS : status;
}

std::wstring ParentOf(const std::wstring& path) {
    const auto cut = path.rfind(L'\\');
    return cut == std::wstring::npos ? std::wstring() : path.substr(0, cut);
}

bool Empty(HKEY root, const std::wstring& path) {
    const OwnedKey key = Open(root, path, KEY_READ);
    DWORD keys = 0;
    DWORD values = 0;
    return key &&
           RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr, nullptr,
                            nullptr, nullptr) == ERROR_SUCCESS &&
           keys == 0 && values == 0;
}

/// What stood where an entry is written, to be put back when a later one fails.
class Former {
  public:
    Former(HKEY root, const RegistryEntry& entry) : root_(root), entry_(entry) {
        for (std::wstring key = entry.key; !key.empty() && !Open(root, key, KEY_READ); key = ParentOf(key))
            newKeys_.push_back(key);
        const OwnedKey key = Open(root, entry.key, KEY_QUERY_VALUE);
        DWORD size = 0;
        if (!key || RegQueryValueExW(key.Get(), entry.name.c_str(), nullptr, &type_, nullptr, &size) != ERROR_SUCCESS)
            return;
        data_.resize(size);
        had_ = RegQueryValueExW(key.Get(), entry.name.c_str(), nullptr, &type_, data_.data(), &size) == ERROR_SUCCESS;
    }

    void PutBack() const {
        if (const OwnedKey key = Open(root_, entry_.key, KEY_SET_VALUE); key && had_)
            RegSetValueExW(key.Get(), entry_.name.c_str(), 0, type_, data_.data(), static_cast<DWORD>(data_.size()));
        else
            DeleteValue(root_, entry_);
        for (const std::wstring& key : newKeys_)
            if (Empty(root_, key))
                RegDeleteKeyW(root_, key.c_str());
    }

  private:
    HKEY root_;
    const RegistryEntry& entry_;
    std::vector<std::wstring> newKeys_; ///< innermost first
    bool had_ = false;
    DWORD type_ = REG_NONE;
    std::vector<BYTE> data_;
};

} // namespace

std::optional<std::wstring> ReadValue(HKEY root, const std::wstring& path, const std::wstring& name, REGSAM view) {
    const OwnedKey key = Open(root, path, KEY_QUERY_VALUE | view);
    return key ? Read(key.Get(), name) : std::nullopt;
}

bool RegistrationTable::Applied(HKEY root) const {
    return std::all_of(entries_.begin(), entries_.end(), [root](const RegistryEntry& e) { return Holds(root, e); });
}

bool RegistrationTable::Present(HKEY root) const {
    return std::any_of(entries_.begin(), entries_.end(),
                       [root](const RegistryEntry& e) { return static_cast<bool>(Open(root, e.key, KEY_READ)); });
}

LSTATUS RegistrationTable::Apply(HKEY root) const {
    std::vector<Former> replaced;
    for (const RegistryEntry& entry : entries_) {
        if (Holds(root, entry))
            continue;
        replaced.emplace_back(root, entry);
        const LSTATUS status = Write(root, entry);
        if (status == ERROR_SUCCESS)
            continue;
        // Half a registration may hide a whole one.
        for (auto former = replaced.rbegin(); former != replaced.rend(); ++former)
            former->PutBack();
        return status;
    }
    return ERROR_SUCCESS;
}

LSTATUS RegistrationTable::Undo(HKEY root) const {
    LSTATUS first = ERROR_SUCCESS;
    // Children sort behind their parents, so that walking backwards empties a key before it is looked at.
    std::set<std::wstring> keys;
    for (const RegistryEntry& entry : entries_) {
        const LSTATUS status = DeleteValue(root, entry);
        if (first == ERROR_SUCCESS)
            first = status;
        for (std::wstring key = entry.key; !key.empty(); key = ParentOf(key))
            keys.insert(key);
    }
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
        if (!Empty(root, *key))
            continue;
        const LSTATUS status = RegDeleteKeyW(root, key->c_str());
        if (first == ERROR_SUCCESS && !Absent(status))
            first = status;
    }
    return first;
}

LSTATUS Register(const RegistrationTable& table, const RegistrationRoots& roots, Scope& scope) {
    scope = Scope::None;
    LSTATUS status = ERROR_ACCESS_DENIED;
    if (roots.machine) {
        status = table.Apply(roots.machine);
        if (status == ERROR_SUCCESS) {
            scope = Scope::Machine;
            return roots.user && table.Present(roots.user) ? table.Undo(roots.user) : ERROR_SUCCESS;
        }
    }
    if (!roots.user)
        return status;
    status = table.Apply(roots.user);
    if (status == ERROR_SUCCESS)
        scope = Scope::User;
    return status;
}

LSTATUS Unregister(const std::function<RegistrationTable(HKEY root)>& own, const RegistrationRoots& roots) {
    LSTATUS first = ERROR_SUCCESS;
    for (const HKEY root : {roots.machine, roots.user}) {
        if (!root)
            continue;
        const LSTATUS status = own(root).Undo(root);
        if (first == ERROR_SUCCESS)
            first = status;
    }
    return first;
}

} // namespace orv::addon::com
