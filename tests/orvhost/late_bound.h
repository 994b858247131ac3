#pragma once
// Calls as a script makes them: by name, through IDispatch.
#include <gtest/gtest.h>

#include <vector>

#include "host/com/owned.h"

namespace orv::host {

struct LateResult {
    HRESULT result = E_FAIL;
    ComVariant value;
    HRESULT code = S_OK; ///< of the exception
    std::wstring description;
};

inline LateResult CallLate(IDispatch* object, const wchar_t* name, WORD flags, std::vector<VARIANT> arguments) {
    LateResult outcome;
    DISPID id = DISPID_UNKNOWN;
    std::wstring text = name;
    LPOLESTR names = text.data();
    outcome.result = object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(outcome.result))
        return outcome;
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    DISPID put = DISPID_PROPERTYPUT;
    if ((flags & DISPATCH_PROPERTYPUT) != 0) {
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }
    EXCEPINFO exception{};
    UINT wrong = 0;
    outcome.result =
        object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                       (flags & DISPATCH_PROPERTYPUT) != 0 ? nullptr : outcome.value.Receive(), &exception, &wrong);
    outcome.code = exception.scode;
    outcome.description = ComText::ViewOf(exception.bstrDescription);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrHelpFile);
    return outcome;
}

} // namespace orv::host
