#pragma once
// The one exception type of the product: a number and a description, as they are shown to the user.
#include <cstdint>
#include <exception>
#include <string>

namespace orv {

/// Numbers that the product itself raises. A failing host call carries the host's own number (an HRESULT).
namespace error_number {
inline constexpr std::int32_t kInvalidArgument = 5;
inline constexpr std::int32_t kOverflow = 6;
inline constexpr std::int32_t kOutOfMemory = 7;
inline constexpr std::int32_t kSubscript = 9;
inline constexpr std::int32_t kTypeMismatch = 13;
inline constexpr std::int32_t kFileAccess = 75;
inline constexpr std::int32_t kObjectNotSet = 91;
inline constexpr std::int32_t kPropertyArrayIndex = 381;
} // namespace error_number

class Error : public std::exception {
  public:
    Error(std::int32_t number, std::wstring description);
    /// One of the numbers above, with its own description.
    explicit Error(std::int32_t number);

    std::int32_t Number() const noexcept { return number_; }
    const std::wstring& Description() const noexcept { return description_; }
    const char* what() const noexcept override { return narrow_.c_str(); }

  private:
    std::int32_t number_;
    std::wstring description_;
    std::string narrow_;
};

} // namespace orv
