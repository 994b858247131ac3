#include "addon/com/automation.h"

#include <new>

namespace orv::addon::com {

std::wstring FromBstr(BSTR text) {
    return text ? std::wstring(text, SysStringLen(text)) : std::wstring();
}

Bstr::Bstr(std::wstring_view text) : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
    if (!text_)
        throw std::bad_alloc();
}

Variant Variant::Missing() {
    Variant missing;
    missing.value_.vt = VT_ERROR;
    missing.value_.scode = DISP_E_PARAMNOTFOUND;
    return missing;
}

} // namespace orv::addon::com
