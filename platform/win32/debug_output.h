#pragma once
#include "platform/services.h"

namespace orv::platform::win32 {

/// One call of the system's debug output a line, in the system's code page, closed by a line feed.
class SystemDebugOutput final : public DebugOutput {
  public:
    void Line(std::wstring_view line) override;
};

} // namespace orv::platform::win32
