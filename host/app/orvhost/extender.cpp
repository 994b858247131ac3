#include "host/app/orvhost/extender.h"

#include <array>

namespace orv::host {
namespace {

enum Property : DISPID { Name = 1, Visible, Enabled, Left, Top, Width, Height, Object };

struct Entry {
    const wchar_t* name;
    Property id;
};
constexpr std::array kEntries = {Entry{L"Name", Name},     Entry{L"Visible", Visible}, Entry{L"Enabled", Enabled},
                                 Entry{L"Left", Left},     Entry{L"Top", Top},         Entry{L"Width", Width},
                                 Entry{L"Height", Height}, Entry{L"Object", Object}};

DISPID IdOf(const wchar_t* name) {
    for (const Entry& entry : kEntries) {
        if (lstrcmpiW(name, entry.name) == 0)
            return entry.id;
    }
    return DISPID_UNKNOWN;
}

void SetBool(VARIANT& result, bool value) {
    result.vt = VT_BOOL;
    result.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

void SetNumber(VARIANT& result, LONG value) {
    result.vt = VT_I4;
    result.lVal = value;
}

} // namespace

STDMETHODIMP Extender::GetTypeInfoCount(UINT* count) {
    if (count == nullptr)
        return E_POINTER;
    *count = 0;
    return S_OK;
}

STDMETHODIMP Extender::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info != nullptr)
        *info = nullptr;
    return DISP_E_BADINDEX;
}

STDMETHODIMP Extender::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (names == nullptr || ids == nullptr)
        return E_POINTER;
    HRESULT result = S_OK;
    for (UINT i = 0; i < count; ++i) {
        ids[i] = i == 0 ? IdOf(names[i]) : DISPID_UNKNOWN;
        if (ids[i] == DISPID_UNKNOWN)
            result = DISP_E_UNKNOWNNAME;
    }
    return result;
}

STDMETHODIMP Extender::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO*,
                              UINT*) {
    if (events_ == nullptr)
        return E_FAIL;
    if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
        if (arguments == nullptr || arguments->cArgs != 1)
            return DISP_E_BADPARAMCOUNT;
        return Put(id, arguments->rgvarg[0]);
    }
    if (result == nullptr)
        return DISP_E_MEMBERNOTFOUND; // every member is a property
    VariantInit(result);
    return Get(id, *result);
}

HRESULT Extender::Get(DISPID id, VARIANT& result) {
    RECT area{};
    GetClientRect(events_->Area(), &area);
    switch (id) {
    case Name:
        result.vt = VT_BSTR;
        result.bstrVal = SysAllocString(L"AddOn1");
        return result.bstrVal != nullptr ? S_OK : E_OUTOFMEMORY;
    case Visible:
        SetBool(result, events_->ControlVisible());
        return S_OK;
    case Enabled:
        SetBool(result, events_->ControlEnabled());
        return S_OK;
    case Left:
    case Top:
        SetNumber(result, 0);
        return S_OK;
    case Width:
        SetNumber(result, area.right);
        return S_OK;
    case Height:
        SetNumber(result, area.bottom);
        return S_OK;
    case Object:
        result.vt = VT_DISPATCH;
        result.pdispVal = ComPtr<IDispatch>(events_->Control()).Detach();
        return S_OK;
    default:
        return DISP_E_MEMBERNOTFOUND;
    }
}

HRESULT Extender::Put(DISPID id, const VARIANT& value) {
    ComVariant flag;
    switch (id) {
    case Visible:
    case Enabled: {
        const HRESULT changed = VariantChangeType(&flag.Get(), const_cast<VARIANT*>(&value), 0, VT_BOOL);
        if (FAILED(changed))
            return changed;
        const bool on = flag.Get().boolVal != VARIANT_FALSE;
        if (id == Visible)
            events_->SetControlVisible(on);
        else
            events_->SetControlEnabled(on);
        return S_OK;
    }
    default:
        return DISP_E_MEMBERNOTFOUND; // the host places the control itself
    }
}

} // namespace orv::host
