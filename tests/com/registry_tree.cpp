#include "tests/com/registry_tree.h"

#include <algorithm>

namespace orv::tests {
namespace {

using platform::win32::OwnedKey;

constexpr DWORD kLongestName = 16384;

struct Limits {
    DWORD keys = 0;
    DWORD values = 0;
    DWORD data = 0;
};

void AddValues(HKEY key, const Limits& limits, const std::wstring& path, std::vector<std::wstring>& lines) {
    std::vector<BYTE> data(limits.data + 2);
    std::wstring name(kLongestName, L'\0');
    for (DWORD i = 0; i < limits.values; ++i) {
        DWORD length = kLongestName;
        auto size = static_cast<DWORD>(data.size());
        DWORD type = REG_NONE;
        const LSTATUS status = RegEnumValueW(key, i, name.data(), &length, nullptr, &type, data.data(), &size);
        lines.push_back(path + L"|" + name.substr(0, length) + L"=" + std::to_wstring(status) + L":" +
                        std::to_wstring(type) + L":" +
                        std::wstring(data.begin(), data.begin() + std::min<std::ptrdiff_t>(size, limits.data)));
    }
}

void Add(HKEY parent, const std::wstring& path, std::vector<std::wstring>& lines) {
    HKEY raw = nullptr;
    if (const LSTATUS status = RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ, &raw)) {
        lines.push_back(path + L"|cannot be opened: " + std::to_wstring(status));
        return;
    }
    const OwnedKey key(raw);
    Limits limits;
    RegQueryInfoKeyW(raw, nullptr, nullptr, nullptr, &limits.keys, nullptr, nullptr, &limits.values, nullptr,
                     &limits.data, nullptr, nullptr);
    lines.push_back(path);
    AddValues(raw, limits, path, lines);
    wchar_t name[256];
    for (DWORD i = 0; i < limits.keys; ++i) {
        DWORD length = ARRAYSIZE(name);
        if (RegEnumKeyExW(raw, i, name, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS)
            Add(parent, (path.empty() ? L"" : path + L"\\") + name, lines);
    }
}

} // namespace

std::vector<std::wstring> RegistryTree(HKEY root, const std::wstring& path) {
    std::vector<std::wstring> lines;
    Add(root, path, lines);
    std::sort(lines.begin(), lines.end());
    return lines;
}

} // namespace orv::tests
