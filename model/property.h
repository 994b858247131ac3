#pragma once
// Plain values of the model, read and written by their name: `code.MinLength()`, `code.MinLength(4)`.
#include <array>
#include <cstddef>
#include <utility>

#include "text/error.h"

namespace orv::model {

template <typename T>
class Property {
  public:
    const T& operator()() const noexcept { return value_; }
    void operator()(T value) noexcept { value_ = std::move(value); }
    bool operator==(const Property&) const = default;

  private:
    T value_{};
};

/// N values by a 0-based index; raises 9 (subscript) for any other.
template <typename T, std::size_t N>
class IndexedProperty {
  public:
    static constexpr int kCount = static_cast<int>(N);

    T operator()(int index) const { return values_[Checked(index)]; }
    void operator()(int index, T value) { values_[Checked(index)] = std::move(value); }
    bool operator==(const IndexedProperty&) const = default;

  private:
    static std::size_t Checked(int index) {
        if (index < 0 || index >= kCount)
            throw Error(error_number::kSubscript);
        return static_cast<std::size_t>(index);
    }

    std::array<T, N> values_{};
};

} // namespace orv::model
