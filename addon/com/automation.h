#pragma once
// Owning automation types.
#include <string>
#include <string_view>
#include <utility>

#include "platform/win32/system.h"

#include <oleauto.h>

namespace orv::addon::com {

std::wstring FromBstr(BSTR text);

class Bstr {
  public:
    Bstr() = default;
    explicit Bstr(std::wstring_view text);
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    ~Bstr() { SysFreeString(text_); }

    BSTR Get() const { return text_; }
    BSTR Detach() { return std::exchange(text_, nullptr); }
    BSTR* Put() {
        SysFreeString(Detach());
        return &text_;
    }
    std::wstring Text() const { return FromBstr(text_); }

  private:
    BSTR text_ = nullptr;
};

class Variant {
  public:
    Variant() { VariantInit(&value_); }
    Variant(Variant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(&value_); }

    /// What stands for an optional argument that is left out.
    static Variant Missing();

    VARIANT& Get() { return value_; }
    const VARIANT& Get() const { return value_; }
    VARIANT* Put() {
        VariantClear(&value_);
        return &value_;
    }
    VARIANT Detach() {
        const VARIANT value = value_;
        VariantInit(&value_);
        return value;
    }

  private:
    VARIANT value_;
};

inline VARIANT_BOOL FromBool(bool value) {
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

} // namespace orv::addon::com
