#pragma once
// The component's file while it is loaded.
#include <string>

#include "addon/com/com_ptr.h"
#include "platform/win32/system.h"

#include <oaidl.h>

namespace orv::addon::com {

/// Keeps the module loaded: one for each object and each lock of a client.
class ModuleLock {
  public:
    ModuleLock();
    ~ModuleLock();
    ModuleLock(const ModuleLock&) = delete;
    ModuleLock& operator=(const ModuleLock&) = delete;
};

/// While the host runs on our behalf on this thread. It may let go of the control from there, with the control's
/// handlers still on the stack below; whoever destroys the control asks first.
class HostCallScope {
  public:
    HostCallScope();
    ~HostCallScope();
    HostCallScope(const HostCallScope&) = delete;
    HostCallScope& operator=(const HostCallScope&) = delete;
    static bool Running();
};

void LockModule(bool lock);
bool ModuleInUse();

std::wstring ModulePath();

/// From the type library in the component's own file, registered or not. Raises where the file has none.
ComPtr<ITypeInfo> ComponentTypeInfo(REFGUID id);

} // namespace orv::addon::com
