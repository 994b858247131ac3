#include "platform/win32/system.h"

#include "platform/win32/debug_output.h"

namespace orv::platform::win32 {

void SystemDebugOutput::Line(std::wstring_view line) {
    std::string narrow;
    const int count = static_cast<int>(line.size());
    if (count > 0) {
        const int size = WideCharToMultiByte(CP_ACP, 0, line.data(), count, nullptr, 0, nullptr, nullptr);
        narrow.resize(static_cast<std::size_t>(size));
        WideCharToMultiByte(CP_ACP, 0, line.data(), count, narrow.data(), size, nullptr, nullptr);
    }
    narrow += '\n';
    OutputDebugStringA(narrow.c_str());
}

} // namespace orv::platform::win32
