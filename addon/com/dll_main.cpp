// The four entry points.
#include "addon/com/class_factory.h"
#include "addon/com/component_registration.h"
#include "addon/com/failure.h"

#include <OrvOutFormat.h>
#include <olectl.h>

using namespace orv::addon::com;

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, LPVOID* object) {
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (classId != CLSID_AddOnControl)
        return CLASS_E_CLASSNOTAVAILABLE;
    return Guarded([&] { return ComPtr<ClassFactory>(new ClassFactory)->QueryInterface(id, object); });
}

STDAPI DllCanUnloadNow() {
    return ModuleInUse() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
    return Guarded([] {
        const ClassesRoots roots;
        Scope scope = Scope::None;
        const LSTATUS status = Register(ComponentTable(ModulePath()), roots.View(), scope);
        return status == ERROR_SUCCESS ? S_OK : SELFREG_E_CLASS;
    });
}

STDAPI DllUnregisterServer() {
    return Guarded([] {
        const ClassesRoots roots;
        const auto own = [path = ModulePath()](HKEY root) { return OwnEntries(path, root); };
        return Unregister(own, roots.View()) == ERROR_SUCCESS ? S_OK : SELFREG_E_CLASS;
    });
}
