#include "addon/com/class_factory.h"

#include "addon/com/control.h"
#include "addon/com/failure.h"

namespace orv::addon::com {

HRESULT ClassFactory::QueryInterface(REFIID id, void** object) {
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_IClassFactory)
        return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
}

ULONG ClassFactory::Release() {
    const ULONG left = --references_;
    if (left == 0)
        delete this;
    return left;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID id, void** object) {
    if (!object)
        return E_POINTER;
    *object = nullptr;
    // Whoever wraps the object must get hold of its own identity first.
    if (outer && id != IID_IUnknown)
        return CLASS_E_NOAGGREGATION;
    return Guarded([&] { return Control::Create(outer, id, object); });
}

HRESULT ClassFactory::LockServer(BOOL lock) {
    LockModule(lock != FALSE);
    return S_OK;
}

} // namespace orv::addon::com
