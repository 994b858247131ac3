#include "platform/win32/late_call.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include <oleauto.h>

namespace orv::platform::win32 {
namespace {

constexpr int kDeepest = 8;                 ///< references to references; a ring of them has no end
constexpr MEMBERID kInherited = 0x60000000; ///< from here on: members of IUnknown and IDispatch

class Value {
  public:
    Value() { VariantInit(&held); }
    Value(Value&& other) noexcept : held(other.held) { VariantInit(&other.held); }
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;
    ~Value() { VariantClear(&held); }
    VARIANT held;
};

/// One parameter, in the order of the description.
struct Slot {
    VARIANT* given = nullptr; ///< null when it was left out
    UINT number = 0;          ///< the caller's, who counts from the last
    Value value;
    bool fills = false;
};

bool LeftOut(const VARIANT* given) {
    return given == nullptr || (given->vt == VT_ERROR && given->scode == DISP_E_PARAMNOTFOUND);
}

/// What a chain of references leads to; null where it leads nowhere.
VARIANT* Target(VARIANT* variable) {
    for (int depth = 0; depth < kDeepest && variable != nullptr; ++depth) {
        if (variable->vt != (VT_BYREF | VT_VARIANT))
            return (variable->vt & VT_BYREF) != 0 && variable->byref == nullptr ? nullptr : variable;
        variable = variable->pvarVal;
    }
    return nullptr;
}

/// Failures of conversions as a caller of IDispatch knows them.
HRESULT AsMismatch(HRESULT result) {
    return SUCCEEDED(result) || result == DISP_E_OVERFLOW || result == E_OUTOFMEMORY ? result : DISP_E_TYPEMISMATCH;
}

std::size_t SizeOf(VARTYPE type) {
    switch (type) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
        return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
        return 8;
    case VT_BSTR:
        return sizeof(BSTR);
    default:
        return 0;
    }
}

class LateCall {
  public:
    LateCall(ITypeInfo& description, const LateArguments& arguments)
        : description_(description), arguments_(arguments) {}
    LateCall(const LateCall&) = delete;
    LateCall& operator=(const LateCall&) = delete;
    ~LateCall() {
        if (function_ != nullptr)
            description_.ReleaseFuncDesc(function_);
    }

    HRESULT Find();
    HRESULT Arrange();
    HRESULT Convert();
    HRESULT Run(void* object);
    HRESULT GiveBack();

  private:
    bool Puts() const { return (function_->invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0; }
    HRESULT Wrong(UINT number, HRESULT result) const {
        if (arguments_.wrong != nullptr)
            *arguments_.wrong = number;
        return result;
    }
    HRESULT PlaceNamed(UINT number);
    HRESULT Take(Slot& slot, const ELEMDESC& parameter) const;

    ITypeInfo& description_;
    const LateArguments& arguments_;
    FUNCDESC* function_ = nullptr;
    std::vector<Slot> slots_;
};

HRESULT LateCall::Find() {
    for (UINT i = 0; arguments_.member < kInherited && SUCCEEDED(description_.GetFuncDesc(i, &function_)); ++i) {
        if (function_->memid == arguments_.member && (function_->invkind & arguments_.flags) != 0)
            return S_OK;
        description_.ReleaseFuncDesc(function_);
        function_ = nullptr;
    }
    function_ = nullptr;
    return DISP_E_MEMBERNOTFOUND;
}

// A name is the place of its parameter, but for the new value of a property, which comes last and has one of its own.
HRESULT LateCall::PlaceNamed(UINT number) {
    const DISPID name = arguments_.given->rgdispidNamedArgs[number];
    const bool isNewValue = Puts() && name == DISPID_PROPERTYPUT;
    const std::size_t place = isNewValue ? slots_.size() - 1 : static_cast<std::size_t>(name);
    if ((name < 0 && !isNewValue) || place >= slots_.size() || slots_[place].given != nullptr)
        return Wrong(number, DISP_E_PARAMNOTFOUND);
    slots_[place].given = &arguments_.given->rgvarg[number];
    slots_[place].number = number;
    return S_OK;
}

HRESULT LateCall::Arrange() {
    const DISPPARAMS& given = *arguments_.given;
    if (given.cNamedArgs > given.cArgs || (given.cArgs != 0 && given.rgvarg == nullptr) ||
        (given.cNamedArgs != 0 && given.rgdispidNamedArgs == nullptr))
        return E_INVALIDARG;
    const auto count = static_cast<UINT>(std::max<SHORT>(function_->cParams, 0));
    if (given.cArgs > count)
        return DISP_E_BADPARAMCOUNT;
    slots_.resize(count);
    for (UINT i = 0; i < given.cArgs - given.cNamedArgs; ++i) {
        slots_[i].number = given.cArgs - 1 - i;
        slots_[i].given = &given.rgvarg[slots_[i].number];
    }
    for (UINT number = 0; number < given.cNamedArgs; ++number)
        if (const HRESULT placed = PlaceNamed(number); FAILED(placed))
            return placed;
    if (Puts() && (given.cNamedArgs == 0 || given.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT))
        return DISP_E_PARAMNOTOPTIONAL;
    return S_OK;
}

HRESULT LateCall::Take(Slot& slot, const ELEMDESC& parameter) const {
    const TYPEDESC& type = parameter.tdesc;
    const bool pointer = type.vt == VT_PTR;
    slot.fills = pointer && type.lptdesc->vt == VT_VARIANT;
    VARIANT* const target = Target(slot.given);
    if (target == nullptr || (slot.fills && (slot.given->vt & VT_BYREF) == 0))
        return DISP_E_TYPEMISMATCH;
    const HRESULT copied = AsMismatch(VariantCopyInd(&slot.value.held, target));
    if (FAILED(copied) || slot.fills || type.vt == VT_VARIANT)
        return copied;
    VARIANT& held = slot.value.held;
    // The dispatcher asks the object for the very interface.
    if (pointer)
        return held.vt == VT_DISPATCH || held.vt == VT_UNKNOWN ? S_OK : DISP_E_TYPEMISMATCH;
    return AsMismatch(VariantChangeTypeEx(&held, &held, arguments_.locale, 0, type.vt));
}

HRESULT LateCall::Convert() {
    for (std::size_t i = 0; i < slots_.size(); ++i) {
        Slot& slot = slots_[i];
        const ELEMDESC& parameter = function_->lprgelemdescParam[i];
        const bool optional = (parameter.paramdesc.wParamFlags & PARAMFLAG_FOPT) != 0;
        if (slot.given == nullptr && !optional)
            return DISP_E_BADPARAMCOUNT;
        if (LeftOut(slot.given) && (optional || parameter.tdesc.vt != VT_VARIANT)) {
            if (!optional)
                return Wrong(slot.number, DISP_E_PARAMNOTOPTIONAL);
            slot.value.held.vt = VT_ERROR;
            slot.value.held.scode = DISP_E_PARAMNOTFOUND;
        } else if (const HRESULT taken = Take(slot, parameter); FAILED(taken)) {
            return taken == E_OUTOFMEMORY ? taken : Wrong(slot.number, taken);
        }
    }
    return S_OK;
}

HRESULT LateCall::Run(void* object) {
    std::vector<VARIANTARG> ordered(slots_.size() + 1); // never without an address
    for (std::size_t i = 0; i < slots_.size(); ++i) {
        VARIANTARG& argument = ordered[slots_.size() - 1 - i];
        argument = slots_[i].value.held;
        if (slots_[i].fills) {
            argument.vt = VT_BYREF | VT_VARIANT;
            argument.pvarVal = &slots_[i].value.held;
        }
    }
    DISPID newValue = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{ordered.data(), &newValue, static_cast<UINT>(slots_.size()), Puts() ? 1u : 0u};
    UINT wrong = 0;
    const HRESULT ran = description_.Invoke(object, arguments_.member, static_cast<WORD>(function_->invkind),
                                            &parameters, arguments_.result, arguments_.failure, &wrong);
    const bool tells = ran == DISP_E_TYPEMISMATCH || ran == DISP_E_OVERFLOW || ran == DISP_E_PARAMNOTFOUND;
    return tells && wrong < slots_.size() ? Wrong(slots_[slots_.size() - 1 - wrong].number, ran) : ran;
}

HRESULT LateCall::GiveBack() {
    std::vector<Value> ready(slots_.size());
    for (std::size_t i = 0; i < slots_.size(); ++i)
        if (slots_[i].fills)
            if (const HRESULT fits = Prepare(*slots_[i].given, slots_[i].value.held, ready[i].held); FAILED(fits))
                return Wrong(slots_[i].number, fits);
    for (std::size_t i = 0; i < slots_.size(); ++i)
        if (slots_[i].fills)
            Store(*slots_[i].given, ready[i].held);
    return S_OK;
}

} // namespace

HRESULT InvokeLate(ITypeInfo& description, void* object, const LateArguments& arguments) {
    if (arguments.reserved != GUID{})
        return DISP_E_UNKNOWNINTERFACE;
    if (arguments.given == nullptr)
        return E_POINTER;
    LateCall call(description, arguments);
    HRESULT result = call.Find();
    if (SUCCEEDED(result))
        result = call.Arrange();
    if (SUCCEEDED(result))
        result = call.Convert();
    if (SUCCEEDED(result))
        result = call.Run(object);
    return SUCCEEDED(result) ? call.GiveBack() : result;
}

HRESULT NamesLate(ITypeInfo& description, REFIID reserved, LPOLESTR* names, UINT count, DISPID* ids) {
    if (reserved != GUID{})
        return DISP_E_UNKNOWNINTERFACE;
    if (names == nullptr || ids == nullptr)
        return E_POINTER;
    if (count == 0 || std::find(names, names + count, nullptr) != names + count)
        return E_INVALIDARG;
    std::fill(ids, ids + count, DISPID_UNKNOWN);
    const HRESULT found = description.GetIDsOfNames(names, count, ids);
    // The members that every dispatch interface has are no business of late-bound callers.
    if (ids[0] < kInherited)
        return found;
    std::fill(ids, ids + count, DISPID_UNKNOWN);
    return DISP_E_UNKNOWNNAME;
}

HRESULT Prepare(const VARIANT& variable, const VARIANT& value, VARIANT& ready) {
    const VARIANT* const target = Target(const_cast<VARIANT*>(&variable));
    if (target == nullptr)
        return DISP_E_TYPEMISMATCH;
    if ((target->vt & VT_BYREF) == 0)
        return VariantCopy(&ready, const_cast<VARIANT*>(&value));
    const auto type = static_cast<VARTYPE>(target->vt & ~VT_BYREF);
    if (SizeOf(type) == 0)
        return DISP_E_TYPEMISMATCH;
    return AsMismatch(VariantChangeType(&ready, const_cast<VARIANT*>(&value), 0, type));
}

void Store(VARIANT& variable, VARIANT& ready) {
    VARIANT& target = *Target(&variable);
    if ((target.vt & VT_BYREF) == 0) {
        VariantClear(&target);
        target = ready;
    } else {
        if (target.vt == (VT_BYREF | VT_BSTR))
            SysFreeString(*target.pbstrVal);
        std::memcpy(target.byref, &ready.byref, SizeOf(static_cast<VARTYPE>(target.vt & ~VT_BYREF)));
    }
    VariantInit(&ready);
}

} // namespace orv::platform::win32
