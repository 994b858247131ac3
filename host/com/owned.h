#pragma once
// Owners of what COM hands out: interface pointers, texts and variants.
#include <windows.h>

#include <ole2.h>

#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace orv::host {

template <typename T>
class ComPtr {
  public:
    ComPtr() = default;
    /// Shares `pointer`.
    explicit ComPtr(T* pointer) : pointer_(pointer) {
        if (pointer_ != nullptr)
            pointer_->AddRef();
    }
    ComPtr(const ComPtr& other) : ComPtr(other.pointer_) {}
    ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(pointer_, other.pointer_);
        return *this;
    }
    ~ComPtr() {
        if (pointer_ != nullptr)
            pointer_->Release();
    }
    /// Takes over a reference that is already counted.
    static ComPtr Adopt(T* pointer) {
        ComPtr owner;
        owner.pointer_ = pointer;
        return owner;
    }

    T* Get() const { return pointer_; }
    T* operator->() const { return pointer_; }
    explicit operator bool() const { return pointer_ != nullptr; }
    /// For out parameters; lets go of what was held.
    T** Receive() {
        Reset();
        return &pointer_;
    }
    void** ReceiveVoid() { return reinterpret_cast<void**>(Receive()); }
    T* Detach() { return std::exchange(pointer_, nullptr); }
    /// The member is empty before the release runs, which may come back to the owner.
    void Reset() {
        if (T* const held = Detach())
            held->Release();
    }
    /// Empty when the object does not offer the interface.
    template <typename Other>
    ComPtr<Other> As() const {
        ComPtr<Other> other;
        if (pointer_ == nullptr || FAILED(pointer_->QueryInterface(__uuidof(Other), other.ReceiveVoid())))
            other.Detach();
        return other;
    }

  private:
    T* pointer_ = nullptr;
};

template <typename T, typename... Arguments>
ComPtr<T> Make(Arguments&&... arguments) {
    return ComPtr<T>::Adopt(new T(std::forward<Arguments>(arguments)...));
}

/// A BSTR. Empty texts are a null pointer until they are handed out.
class ComText {
  public:
    ComText() = default;
    explicit ComText(std::wstring_view text) : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
        if (text_ == nullptr)
            throw std::bad_alloc();
    }
    ComText(const ComText&) = delete;
    ComText& operator=(const ComText&) = delete;
    ~ComText() { SysFreeString(text_); }

    BSTR Get() const { return text_; }
    BSTR* Receive() {
        SysFreeString(std::exchange(text_, nullptr));
        return &text_;
    }
    BSTR Detach() { return std::exchange(text_, nullptr); }
    std::wstring_view View() const { return ViewOf(text_); }
    /// A null BSTR is an empty text.
    static std::wstring_view ViewOf(BSTR text) {
        return text == nullptr ? std::wstring_view() : std::wstring_view(text, SysStringLen(text));
    }

  private:
    BSTR text_ = nullptr;
};

class ComVariant {
  public:
    ComVariant() { VariantInit(&value_); }
    explicit ComVariant(std::int32_t number) : ComVariant() {
        value_.vt = VT_I4;
        value_.lVal = number;
    }
    explicit ComVariant(std::wstring_view text) : ComVariant() {
        value_.bstrVal = ComText(text).Detach();
        value_.vt = VT_BSTR;
    }
    ComVariant(ComVariant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
    ComVariant(const ComVariant&) = delete;
    ComVariant& operator=(const ComVariant&) = delete;
    ~ComVariant() { VariantClear(&value_); }

    const VARIANT& Get() const { return value_; }
    VARIANT& Get() { return value_; }
    VARIANT* Receive() {
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

} // namespace orv::host
