#include "platform/win32/registry.h"

#include <cstdint>
#include <cstring>
#include <vector>

#include "platform/win32/owned.h"

namespace orv::platform::win32 {
namespace {

std::wstring HexText(std::uint64_t number) {
    std::wstring digits;
    do {
        digits.insert(digits.begin(), L"0123456789ABCDEF"[number & 15]);
        number >>= 4;
    } while (number != 0);
    return L"&h" + digits;
}

std::uint64_t Number(const std::vector<BYTE>& data) {
    std::uint64_t number = 0;
    std::memcpy(&number, data.data(), data.size() < sizeof number ? data.size() : sizeof number);
    return number;
}

// The stored text need not end in a zero, and may hold several.
std::wstring Text(const std::vector<BYTE>& data) {
    std::wstring text(data.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), data.data(), text.size() * sizeof(wchar_t));
    return text.substr(0, text.find(L'\0'));
}

std::wstring Expanded(const std::wstring& text) {
    const DWORD size = ExpandEnvironmentStringsW(text.c_str(), nullptr, 0);
    std::wstring result(size, L'\0');
    const DWORD written = ExpandEnvironmentStringsW(text.c_str(), result.data(), size);
    if (written == 0 || written > size)
        return text;
    result.resize(written - 1);
    return result;
}

std::optional<std::wstring> AsText(DWORD type, const std::vector<BYTE>& data) {
    switch (type) {
    case REG_SZ:
        return Text(data);
    case REG_EXPAND_SZ:
        return Expanded(Text(data));
    case REG_DWORD:
    case REG_QWORD:
        return HexText(Number(data));
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<std::wstring> SystemRegistry::LocalMachineValue(const std::wstring& key, const std::wstring& value) {
    HKEY handle = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_QUERY_VALUE, &handle) != ERROR_SUCCESS)
        return std::nullopt;
    const OwnedKey owned(handle);
    std::vector<BYTE> data;
    for (;;) {
        DWORD type = REG_NONE;
        DWORD size = static_cast<DWORD>(data.size());
        const LSTATUS status =
            RegQueryValueExW(handle, value.c_str(), nullptr, &type, data.empty() ? nullptr : data.data(), &size);
        if (status != ERROR_MORE_DATA && status != ERROR_SUCCESS)
            return std::nullopt;
        if (status == ERROR_SUCCESS && (size == 0 || !data.empty())) {
            data.resize(size);
            return AsText(type, data);
        }
        data.resize(size); // also when another process made the value longer in between
    }
}

} // namespace orv::platform::win32
