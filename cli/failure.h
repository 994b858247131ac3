#pragma once
// How a command ends: its exit status, and the one line that says why.
#include <stdexcept>
#include <string>

namespace orv::cli {

namespace status {
inline constexpr int kDone = 0;
inline constexpr int kFound = 1;  ///< concerns, or differences
inline constexpr int kUsage = 2;  ///< wrong options, names or values
inline constexpr int kFile = 3;   ///< a file that cannot be read or written, or is not valid
inline constexpr int kDevice = 4; ///< the device, or a call of the host
} // namespace status

/// Ends a command. what() is one line of UTF-8 without the program's name.
class Failure : public std::runtime_error {
  public:
    Failure(int code, const std::string& line) : std::runtime_error(line), status_(code) {}
    int Status() const { return status_; }

  private:
    int status_;
};

} // namespace orv::cli
