#pragma once
// The values of one parameter. Read from a file they are packed into a few bytes each, because a file of megabytes may
// hold tens of millions of them; whoever changes one gets this parameter's as a plain list.
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "device/value.h"

namespace orv::sim {

class ParameterValues {
  public:
    using Value = device::Value;
    /// Goes over copies.
    class ConstIterator {
      public:
        ConstIterator(const ParameterValues& values, std::size_t at) : values_(&values), at_(at) {}
        Value operator*() const { return values_->at(at_); }
        ConstIterator& operator++() {
            ++at_;
            return *this;
        }
        bool operator!=(const ConstIterator& other) const { return at_ != other.at_; }

      private:
        const ParameterValues* values_;
        std::size_t at_;
    };

    ParameterValues() = default;
    // NOLINTBEGIN(google-explicit-constructor): a list is what it stands for.
    ParameterValues(std::vector<Value> values) : plain_(std::move(values)) {}
    ParameterValues(std::initializer_list<Value> values) : plain_(values) {}
    // NOLINTEND(google-explicit-constructor)
    /// Each value is empty or held as `type` asks for it.
    static ParameterValues Packed(const std::vector<Value>& values, device::WireType type);

    std::size_t size() const { return isPacked_ ? count_ : plain_.size(); }
    /// Raises std::out_of_range.
    Value at(std::size_t i) const;
    Value operator[](std::size_t i) const { return at(i); }
    Value front() const { return at(0); }
    bool empty() const { return size() == 0; }
    ConstIterator begin() const { return {*this, 0}; }
    ConstIterator end() const { return {*this, size()}; }
    bool operator==(const ParameterValues& other) const;
    /// Bytes that are allocated, but for the texts of a plain list.
    std::size_t Memory() const { return packed_.capacity() + plain_.capacity() * sizeof(Value); }

    Value& at(std::size_t i) { return Plain().at(i); }
    Value& operator[](std::size_t i) { return Plain()[i]; }
    Value& front() { return Plain().front(); }
    auto begin() { return Plain().begin(); }
    auto end() { return Plain().end(); }
    void push_back(Value value) { Plain().push_back(std::move(value)); }
    void pop_back() { Plain().pop_back(); }
    void resize(std::size_t count, const Value& value) { Plain().resize(count, value); }
    void assign(std::size_t count, const Value& value) { Plain().assign(count, value); }

  private:
    std::vector<Value>& Plain();
    std::uint32_t Word(std::size_t i) const;
    Value Unpacked(std::size_t i) const;

    std::vector<Value> plain_;
    /// A word for each value, then the texts: the number itself, or where the text ends. One bit a value behind them
    /// says which are empty.
    std::string packed_;
    std::uint32_t count_ = 0;
    device::WireType type_ = device::WireType::Int32;
    bool isPacked_ = false;
};

} // namespace orv::sim
