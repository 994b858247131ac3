#pragma once
// A fuzzer's input as a row of decisions. What is asked for behind its end is 0, so 0 must mean "as usual".
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "text/bytes.h"

namespace orv::fuzz {

class Source {
  public:
    Source(const std::uint8_t* data, std::size_t size) : at_(data), left_(size) {}

    bool Empty() const { return left_ == 0; }
    std::uint8_t Byte() {
        if (left_ == 0)
            return 0;
        --left_;
        return *at_++;
    }
    std::uint32_t Word() {
        const std::uint32_t low = Byte();
        return low | static_cast<std::uint32_t>(Byte()) << 8;
    }
    std::int32_t Number() {
        const std::uint32_t low = Word();
        return static_cast<std::int32_t>(low | Word() << 16);
    }
    /// 0 up to `end`, which is at most 256 and not among them.
    std::size_t Below(std::size_t end) { return Byte() % end; }
    bool Flag() { return (Byte() & 1) != 0; }
    /// One in so many, which are two at least; never behind the end.
    bool OneIn(std::size_t times) { return Below(times) == 1; }

    /// A byte says how many follow.
    Bytes Some(std::size_t most) {
        const std::size_t count = std::min(Below(most + 1), left_);
        const Bytes bytes(at_, at_ + count);
        at_ += count;
        left_ -= count;
        return bytes;
    }
    /// Mostly characters of one byte; 0xFF takes two more for one of the others. No halves of surrogate pairs.
    std::wstring Text(std::size_t most) {
        std::wstring text;
        for (std::size_t count = Below(most + 1); count > 0 && !Empty(); --count) {
            const std::uint32_t unit = Byte();
            const std::uint32_t code = unit == 0xFF ? Word() : unit;
            text += code >= 0xD800 && code < 0xE000 ? L'?' : static_cast<wchar_t>(code);
        }
        return text;
    }

  private:
    const std::uint8_t* at_;
    std::size_t left_;
};

} // namespace orv::fuzz
