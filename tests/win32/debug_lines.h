#pragma once
#include <string>
#include <vector>

namespace orv::tests {

/// Lines that the process sends to the system's debug output while it lives, one a call.
class DebugLines {
  public:
    DebugLines();
    ~DebugLines();
    DebugLines(const DebugLines&) = delete;
    DebugLines& operator=(const DebugLines&) = delete;
    const std::vector<std::string>& Lines() const;

  private:
    void* handler_;
};

} // namespace orv::tests
