#pragma once
// Late-bound calls, held against the description of their interface before a member runs. The system's own dispatcher
// hands an argument by value on as a place to be filled, fills a place of another type with nothing, and lets surplus
// arguments pass; releases of the system differ in the rest.
#include "platform/win32/system.h"

#include <oaidl.h>

namespace orv::platform::win32 {

/// What a caller hands to IDispatch::Invoke.
struct LateArguments {
    DISPID member;
    REFIID reserved;
    LCID locale;
    WORD flags;
    DISPPARAMS* given;
    VARIANT* result;
    EXCEPINFO* failure;
    UINT* wrong; ///< number of the argument that did not fit
};

/// Runs a member of `object`. Arguments reach it converted to the types of `description`, as copies; what it fills
/// comes back converted into what the caller refers to, all of it or none. Raises only for want of memory.
HRESULT InvokeLate(ITypeInfo& description, void* object, const LateArguments& arguments);

/// IDispatch::GetIDsOfNames.
HRESULT NamesLate(ITypeInfo& description, REFIID reserved, LPOLESTR* names, UINT count, DISPID* ids);

/// For a caller's variable that is to take `value`: what it can take, in `ready`, which is empty before and cleared by
/// the caller. A variable that refers to another takes that one's type.
HRESULT Prepare(const VARIANT& variable, const VARIANT& value, VARIANT& ready);
/// Moves what was prepared into it.
void Store(VARIANT& variable, VARIANT& ready);

} // namespace orv::platform::win32
