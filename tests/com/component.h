#pragma once
// The component's file, loaded as a container without registration would.
#include <string>

#include "platform/win32/owned.h"

#include <OrvOutFormat.h>

#include "addon/com/com_ptr.h"

namespace orv::tests {

using addon::com::ComPtr;
using addon::com::Query;

class Component {
  public:
    Component();

    static std::wstring Path();
    HMODULE Module() const { return module_.Get(); }
    ComPtr<IClassFactory> Factory() const;
    ComPtr<IUnknown> Create() const;
    HRESULT GetClass(REFCLSID classId, REFIID id, void** object) const;
    HRESULT Register() const { return Call("DllRegisterServer"); }
    HRESULT Unregister() const { return Call("DllUnregisterServer"); }
    bool CanUnload() const { return Call("DllCanUnloadNow") == S_OK; }

  private:
    HRESULT Call(const char* entry) const;
    platform::win32::OwnedModule module_;
};

} // namespace orv::tests
