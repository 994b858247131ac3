#include "addon/com/values.h"

#include <algorithm>
#include <new>

#include "addon/com/failure.h"

namespace orv::addon::com {
namespace {

class ArrayAccess {
  public:
    explicit ArrayAccess(SAFEARRAY* array) : array_(array) {
        const HRESULT result = SafeArrayAccessData(array_, &data_);
        if (FAILED(result))
            throw SystemError(result);
    }
    ArrayAccess(const ArrayAccess&) = delete;
    ArrayAccess& operator=(const ArrayAccess&) = delete;
    ~ArrayAccess() { SafeArrayUnaccessData(array_); }
    std::uint8_t* Data() const { return static_cast<std::uint8_t*>(data_); }

  private:
    SAFEARRAY* array_;
    void* data_ = nullptr;
};

Bytes BytesOf(SAFEARRAY* array) {
    if (!array)
        return {};
    LONG lower = 0;
    LONG upper = -1;
    if (SafeArrayGetDim(array) != 1 || FAILED(SafeArrayGetLBound(array, 1, &lower)) ||
        FAILED(SafeArrayGetUBound(array, 1, &upper)))
        throw Error(error_number::kTypeMismatch);
    const auto count = static_cast<std::size_t>(static_cast<std::int64_t>(upper) - lower + 1);
    const ArrayAccess access(array);
    return Bytes(access.Data(), access.Data() + count);
}

device::Value Converted(const VARIANT& variant) {
    Variant number;
    if (FAILED(VariantChangeType(number.Put(), const_cast<VARIANT*>(&variant), 0, VT_I4)))
        throw Error(error_number::kTypeMismatch);
    return static_cast<std::int32_t>(number.Get().lVal);
}

} // namespace

device::Value ToValue(const VARIANT& given) {
    if (given.vt & VT_BYREF) {
        Variant direct;
        const HRESULT result = VariantCopyInd(direct.Put(), const_cast<VARIANT*>(&given));
        if (FAILED(result))
            throw SystemError(result);
        return ToValue(direct.Get());
    }
    switch (given.vt) {
    case VT_EMPTY:
    case VT_NULL:
        return {};
    case VT_I2:
        return static_cast<std::int16_t>(given.iVal);
    case VT_I4:
    case VT_INT:
        return static_cast<std::int32_t>(given.lVal);
    case VT_UI1:
        return static_cast<std::uint8_t>(given.bVal);
    case VT_BSTR:
        return FromBstr(given.bstrVal);
    case VT_BOOL:
        return static_cast<std::int16_t>(given.boolVal != VARIANT_FALSE ? 1 : 0);
    case VT_ARRAY | VT_UI1:
        return BytesOf(given.parray);
    case VT_I1:
    case VT_UI2:
    case VT_UI4:
    case VT_UINT:
    case VT_I8:
    case VT_UI8:
    case VT_R4:
    case VT_R8:
        return Converted(given);
    default:
        throw Error(error_number::kTypeMismatch);
    }
}

Variant FromByteArray(const Bytes& bytes) {
    Variant made;
    made.Get().parray = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    if (!made.Get().parray)
        throw std::bad_alloc();
    made.Get().vt = VT_ARRAY | VT_UI1;
    if (!bytes.empty())
        std::copy(bytes.begin(), bytes.end(), ArrayAccess(made.Get().parray).Data());
    return made;
}

Variant ToVariant(const device::Value& value) {
    struct Maker {
        Variant operator()(std::monostate) const { return {}; }
        Variant operator()(std::int16_t number) const {
            Variant made;
            made.Get().vt = VT_I2;
            made.Get().iVal = number;
            return made;
        }
        Variant operator()(std::int32_t number) const {
            Variant made;
            made.Get().vt = VT_I4;
            made.Get().lVal = number;
            return made;
        }
        Variant operator()(std::uint8_t number) const {
            Variant made;
            made.Get().vt = VT_UI1;
            made.Get().bVal = number;
            return made;
        }
        Variant operator()(const std::wstring& text) const {
            Variant made;
            made.Get().bstrVal = Bstr(text).Detach();
            made.Get().vt = VT_BSTR;
            return made;
        }
        Variant operator()(const Bytes& bytes) const { return FromByteArray(bytes); }
    };
    return std::visit(Maker(), value);
}

Bytes ToByteArray(const VARIANT& variant) {
    const device::Value value = ToValue(variant);
    if (std::holds_alternative<std::monostate>(value))
        return {};
    if (const auto* bytes = std::get_if<Bytes>(&value))
        return *bytes;
    throw Error(error_number::kTypeMismatch);
}

} // namespace orv::addon::com
