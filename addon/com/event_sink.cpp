#include "addon/com/event_sink.h"

#include <cwchar>

#include "addon/com/automation.h"
#include "addon/com/failure.h"

namespace orv::addon::com {
namespace {

constexpr const wchar_t* kMembers[] = {L"Connected", L"Error", L"ResponseReceived"};

} // namespace

HRESULT EventSink::QueryInterface(REFIID id, void** object) {
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_IDispatch && id != IID_IOrvMIBSAPEvents)
        return E_NOINTERFACE;
    *object = static_cast<IOrvMIBSAPEvents*>(this);
    AddRef();
    return S_OK;
}

ULONG EventSink::Release() {
    const ULONG left = --references_;
    if (left == 0)
        delete this;
    return left;
}

// Services that fire late bound know the members from the contracts; no type library need be registered for it.
HRESULT EventSink::GetTypeInfoCount(UINT* count) {
    if (!count)
        return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT EventSink::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (!info)
        return E_POINTER;
    *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT EventSink::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (id != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    if (!names || !ids)
        return E_POINTER;
    if (count == 0)
        return E_INVALIDARG;
    HRESULT result = S_OK;
    for (UINT i = 0; i < count; ++i) {
        ids[i] = DISPID_UNKNOWN;
        for (int member = 0; i == 0 && member < 3; ++member)
            if (names[i] && _wcsicmp(names[i], kMembers[member]) == 0)
                ids[i] = member + 1;
        if (ids[i] == DISPID_UNKNOWN)
            result = DISP_E_UNKNOWNNAME;
    }
    return result;
}

HRESULT EventSink::Invoke(DISPID member, REFIID id, LCID, WORD flags, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                          UINT* wrong) {
    if (id != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    if (!parameters)
        return E_POINTER;
    if (!(flags & DISPATCH_METHOD) || member < 1 || member > 3)
        return DISP_E_MEMBERNOTFOUND;
    if (parameters->cNamedArgs != 0)
        return DISP_E_NONAMEDARGS;
    if (parameters->cArgs != (member == 1 ? 0u : 1u))
        return DISP_E_BADPARAMCOUNT;
    if (member == 1)
        return Connected();
    Variant argument;
    const HRESULT converted =
        DispGetParam(parameters, 0, static_cast<VARTYPE>(member == 2 ? VT_I4 : VT_BSTR), argument.Put(), wrong);
    if (FAILED(converted))
        return converted;
    return member == 2 ? Error(argument.Get().lVal) : ResponseReceived(argument.Get().bstrVal);
}

// The receiver is held for the call: what it does may silence the sink.
HRESULT EventSink::Connected() {
    return Guarded([events = events_] {
        if (events)
            events->Connected();
    });
}

HRESULT EventSink::Error(LONG code) {
    return Guarded([events = events_, code] {
        if (events)
            events->Error(code);
    });
}

HRESULT EventSink::ResponseReceived(BSTR text) {
    return Guarded([events = events_, text] {
        if (events)
            events->ResponseReceived(FromBstr(text));
    });
}

} // namespace orv::addon::com
