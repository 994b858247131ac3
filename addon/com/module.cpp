#include "addon/com/module.h"

#include <atomic>

#include "addon/com/failure.h"
#include "platform/win32/module.h"

namespace orv::addon::com {
namespace {

std::atomic<long> locks = 0; ///< of the file, by whichever thread
// What the host does for one thread keeps nothing on another thread's stack.
thread_local int hostCalls = 0;

} // namespace

ModuleLock::ModuleLock() {
    ++locks;
}

ModuleLock::~ModuleLock() {
    --locks;
}

HostCallScope::HostCallScope() {
    ++hostCalls;
}

HostCallScope::~HostCallScope() {
    --hostCalls;
}

bool HostCallScope::Running() {
    return hostCalls != 0;
}

void LockModule(bool lock) {
    lock ? ++locks : --locks;
}

bool ModuleInUse() {
    return locks != 0;
}

std::wstring ModulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(platform::win32::OwnModule(), path.data(), static_cast<DWORD>(path.size()));
        if (length == 0)
            throw SystemError(HRESULT_FROM_WIN32(GetLastError()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

ComPtr<ITypeInfo> ComponentTypeInfo(REFGUID id) {
    ComPtr<ITypeLib> library;
    HRESULT result = LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, library.Put());
    if (FAILED(result))
        throw SystemError(result);
    ComPtr<ITypeInfo> info;
    result = library->GetTypeInfoOfGuid(id, info.Put());
    if (FAILED(result))
        throw SystemError(result);
    return info;
}

} // namespace orv::addon::com
