// The four entry points, and the end of the file.
#include "addon/com/class_factory.h"
#include "addon/com/component_registration.h"
#include "addon/com/failure.h"
#include "addon/com/reaper.h"
#include "platform/win32/window_class.h"

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

// At the end of the process (`reserved` is set) other threads were stopped wherever they were, and all goes anyway.
BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID reserved) {
    if (reason == DLL_PROCESS_DETACH && reserved == nullptr)
        orv::platform::win32::ReturnWindowClasses();
    return TRUE;
}

STDAPI DllCanUnloadNow() {
    Reaper::Look(); // for a thread that has ended with a control behind it
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
