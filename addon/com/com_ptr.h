#pragma once
// Owning interface pointer.
#include <utility>

#include <unknwn.h>

namespace orv::addon::com {

template <typename I>
class ComPtr {
  public:
    ComPtr() = default;
    ComPtr(std::nullptr_t) {}
    /// Shares: takes a reference of its own.
    explicit ComPtr(I* object) : object_(object) {
        if (object_)
            object_->AddRef();
    }
    ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
    ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ComPtr() {
        if (object_)
            object_->Release();
    }

    I* Get() const { return object_; }
    I* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }
    I* Detach() { return std::exchange(object_, nullptr); }
    /// For an out parameter; lets go of what was held.
    I** Put() {
        *this = ComPtr();
        return &object_;
    }
    void** PutVoid() { return reinterpret_cast<void**>(Put()); }

    /// Empty when the object does not have the interface.
    template <typename J>
    ComPtr<J> As() const {
        return QueryFor<J>(object_);
    }
    template <typename J>
    static ComPtr<J> QueryFor(IUnknown* object) {
        ComPtr<J> found;
        if (object && FAILED(object->QueryInterface(__uuidof(J), found.PutVoid())))
            found.Detach();
        return found;
    }

  private:
    I* object_ = nullptr;
};

template <typename J>
ComPtr<J> Query(IUnknown* object) {
    return ComPtr<IUnknown>::QueryFor<J>(object);
}

} // namespace orv::addon::com
