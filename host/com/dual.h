#pragma once
// What every COM face shares: counting, late binding through the type library, error information.
#include <atomic>

#include "host/com/failure.h"
#include "host/com/owned.h"
#include "host/com/type_library.h"
#include "platform/win32/late_call.h"

namespace orv::host {

/// Faces alive in the process.
inline std::atomic<long>& LiveFaces() {
    static std::atomic<long> count = 0;
    return count;
}

template <typename Interface>
class Dual : public Interface, public ISupportErrorInfo {
  public:
    Dual() { ++LiveFaces(); }
    Dual(const Dual&) = delete;
    Dual& operator=(const Dual&) = delete;
    virtual ~Dual() { --LiveFaces(); }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr)
            return E_POINTER;
        *object = Find(iid);
        if (*object == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references_); }
    STDMETHODIMP_(ULONG) Release() override {
        const long left = --references_;
        if (left == 0)
            delete this;
        return static_cast<ULONG>(left);
    }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (count == nullptr)
            return E_POINTER;
        *count = 1;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        if (info == nullptr)
            return E_POINTER;
        *info = nullptr;
        if (index != 0)
            return DISP_E_BADINDEX;
        return Answer(__uuidof(Interface), [&] { *info = DescriptionOf(__uuidof(Interface)).Detach(); });
    }
    STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        HRESULT found = E_FAIL;
        const HRESULT loaded = Answer(__uuidof(Interface), [&] {
            found = platform::win32::NamesLate(*DescriptionOf(__uuidof(Interface)).Get(), reserved, names, count, ids);
        });
        return FAILED(loaded) ? loaded : found;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* wrong) override {
        HRESULT called = E_FAIL;
        const HRESULT loaded = Answer(__uuidof(Interface), [&] {
            const auto description = DescriptionOf(__uuidof(Interface));
            called = platform::win32::InvokeLate(*description.Get(), static_cast<Interface*>(this),
                                                 {id, reserved, locale, flags, arguments, result, exception, wrong});
        });
        return FAILED(loaded) ? loaded : called;
    }

    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override { return iid == __uuidof(Interface) ? S_OK : S_FALSE; }

  protected:
    /// Not counted; null when the interface is not offered.
    virtual void* Find(REFIID iid) {
        if (iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(Interface))
            return static_cast<Interface*>(this);
        if (iid == IID_ISupportErrorInfo)
            return static_cast<ISupportErrorInfo*>(this);
        return nullptr;
    }
    template <typename Action>
    HRESULT Try(Action&& action) noexcept {
        return Answer(__uuidof(Interface), action);
    }
    /// For a method with a result: the pointer is checked, and what `action` answers is stored.
    template <typename Result, typename Action>
    HRESULT Give(Result* result, Action&& action) noexcept {
        return Answer(__uuidof(Interface), [&] {
            Require(result);
            *result = Result{};
            *result = action();
        });
    }

  private:
    std::atomic<long> references_ = 1;
};

} // namespace orv::host
