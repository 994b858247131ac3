#include "platform/win32/window_class.h"

#include <algorithm>
#include <array>
#include <mutex>

#include "platform/win32/module.h"
#include "text/error.h"

namespace orv::platform::win32 {
namespace {

constexpr std::size_t kMost = 8;

// Neither has a destructor that runs: they are used until the very end of the module.
std::mutex lock;
std::array<const wchar_t*, kMost> registered{};

// A name that is taken though it was not registered here is left from an earlier load of the component at this address:
// its procedure need not be ours.
bool Register(const WNDCLASSEXW& type) {
    if (RegisterClassExW(&type))
        return true;
    return GetLastError() == ERROR_CLASS_ALREADY_EXISTS && UnregisterClassW(type.lpszClassName, type.hInstance) &&
           RegisterClassExW(&type);
}

} // namespace

void RequireWindowClass(WNDCLASSEXW type) {
    const std::lock_guard guard(lock);
    if (std::find(registered.begin(), registered.end(), type.lpszClassName) != registered.end())
        return;
    type.cbSize = sizeof type;
    type.hInstance = OwnModule();
    const auto place = std::find(registered.begin(), registered.end(), nullptr);
    if (place == registered.end() || !Register(type))
        throw Error(HRESULT_FROM_WIN32(GetLastError()), type.lpszClassName);
    *place = type.lpszClassName;
}

void ReturnWindowClasses() noexcept {
    for (const wchar_t*& name : registered)
        if (name != nullptr && UnregisterClassW(name, OwnModule()))
            name = nullptr;
}

} // namespace orv::platform::win32
