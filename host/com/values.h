#pragma once
// Parameter values as automation carries them.
#include "host/com/owned.h"
#include "host/sim/bench_host.h"

namespace orv::host {

/// Byte arrays are VT_ARRAY | VT_UI1.
ComVariant ToVariant(const device::Value& value);

/// References are followed. Numbers of other widths, booleans and reals become 32-bit integers; raises 13 for what no
/// parameter can hold, 6 for a number that does not fit.
device::Value FromVariant(const VARIANT& variant);

ComVariant ToVariant(const Bytes& bytes);
/// Raises 13 for anything but a one-dimensional array of bytes.
Bytes BytesOf(const VARIANT& variant);

inline std::wstring TextOf(BSTR text) {
    return std::wstring(ComText::ViewOf(text));
}
inline BSTR ToBstr(const std::wstring& text) {
    return ComText(text).Detach();
}
inline VARIANT_BOOL ToVariantBool(bool value) {
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

} // namespace orv::host
