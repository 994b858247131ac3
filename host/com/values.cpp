#include "host/com/values.h"

#include <algorithm>

#include "host/com/failure.h"

namespace orv::host {
namespace {

/// Access to an array's bytes for as long as it lives.
class ArrayView {
  public:
    explicit ArrayView(SAFEARRAY* array) : array_(array) { Check(SafeArrayAccessData(array, &data_)); }
    ArrayView(const ArrayView&) = delete;
    ArrayView& operator=(const ArrayView&) = delete;
    ~ArrayView() { SafeArrayUnaccessData(array_); }
    std::uint8_t* Data() const { return static_cast<std::uint8_t*>(data_); }

  private:
    SAFEARRAY* array_;
    void* data_ = nullptr;
};

struct Writer {
    ComVariant operator()(std::monostate) const { return ComVariant(); }
    ComVariant operator()(std::int16_t number) const {
        ComVariant variant;
        variant.Get().vt = VT_I2;
        variant.Get().iVal = number;
        return variant;
    }
    ComVariant operator()(std::int32_t number) const { return ComVariant(number); }
    ComVariant operator()(std::uint8_t number) const {
        ComVariant variant;
        variant.Get().vt = VT_UI1;
        variant.Get().bVal = number;
        return variant;
    }
    ComVariant operator()(const std::wstring& text) const { return ComVariant(std::wstring_view(text)); }
    ComVariant operator()(const Bytes& bytes) const { return ToVariant(bytes); }
};

device::Value NumberOf(const VARIANT& variant) {
    ComVariant number;
    const HRESULT changed = VariantChangeType(&number.Get(), const_cast<VARIANT*>(&variant), 0, VT_I4);
    if (changed == DISP_E_OVERFLOW)
        throw Error(error_number::kOverflow);
    if (FAILED(changed))
        throw Error(error_number::kTypeMismatch);
    return static_cast<std::int32_t>(number.Get().lVal);
}

} // namespace

ComVariant ToVariant(const Bytes& bytes) {
    ComVariant variant;
    SAFEARRAY* const array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    if (array == nullptr)
        throw std::bad_alloc();
    variant.Get().vt = VT_ARRAY | VT_UI1;
    variant.Get().parray = array;
    const ArrayView view(array);
    std::copy(bytes.begin(), bytes.end(), view.Data());
    return variant;
}

ComVariant ToVariant(const device::Value& value) {
    return std::visit(Writer{}, value);
}

Bytes BytesOf(const VARIANT& variant) {
    ComVariant plain;
    Check(VariantCopyInd(&plain.Get(), const_cast<VARIANT*>(&variant)));
    if (plain.Get().vt != (VT_ARRAY | VT_UI1) || SafeArrayGetDim(plain.Get().parray) != 1)
        throw Error(error_number::kTypeMismatch);
    LONG lower = 0;
    LONG upper = -1;
    Check(SafeArrayGetLBound(plain.Get().parray, 1, &lower));
    Check(SafeArrayGetUBound(plain.Get().parray, 1, &upper));
    const ArrayView view(plain.Get().parray);
    return Bytes(view.Data(), view.Data() + (upper - lower + 1));
}

device::Value FromVariant(const VARIANT& variant) {
    ComVariant plain;
    Check(VariantCopyInd(&plain.Get(), const_cast<VARIANT*>(&variant)));
    const VARIANT& held = plain.Get();
    switch (held.vt) {
    case VT_EMPTY:
        return std::monostate();
    case VT_I2:
        return held.iVal;
    case VT_I4:
        return static_cast<std::int32_t>(held.lVal);
    case VT_UI1:
        return held.bVal;
    case VT_BSTR:
        return TextOf(held.bstrVal);
    case VT_ARRAY | VT_UI1:
        return BytesOf(held);
    default:
        return NumberOf(held);
    }
}

} // namespace orv::host
