#include "tests/com/component.h"

#include <stdexcept>

namespace orv::tests {
namespace {

template <typename Function>
Function Entry(HMODULE module, const char* name) {
    const FARPROC found = GetProcAddress(module, name);
    if (!found)
        throw std::runtime_error(name);
    return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

} // namespace

std::wstring Component::Path() {
    wchar_t full[MAX_PATH] = {};
    GetFullPathNameW(ORV_COMPONENT, MAX_PATH, full, nullptr);
    return full;
}

Component::Component() : module_(LoadLibraryW(Path().c_str())) {
    if (!module_)
        throw std::runtime_error("component does not load");
}

HRESULT Component::GetClass(REFCLSID classId, REFIID id, void** object) const {
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    return Entry<GetClassObject>(Module(), "DllGetClassObject")(classId, id, object);
}

ComPtr<IClassFactory> Component::Factory() const {
    ComPtr<IClassFactory> factory;
    if (FAILED(GetClass(CLSID_AddOnControl, IID_IClassFactory, factory.PutVoid())))
        throw std::runtime_error("no class factory");
    return factory;
}

ComPtr<IUnknown> Component::Create() const {
    ComPtr<IUnknown> made;
    if (FAILED(Factory()->CreateInstance(nullptr, IID_IUnknown, made.PutVoid())))
        throw std::runtime_error("no control");
    return made;
}

HRESULT Component::Call(const char* entry) const {
    return Entry<HRESULT(STDAPICALLTYPE*)()>(Module(), entry)();
}

} // namespace orv::tests
