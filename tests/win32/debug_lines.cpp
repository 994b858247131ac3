#include "debug_lines.h"

#include "platform/win32/system.h"

namespace orv::tests {
namespace {

constexpr DWORD kDebugPrint = 0x40010006;

std::vector<std::string>& Kept() {
    static std::vector<std::string> lines;
    return lines;
}

LONG CALLBACK Keep(EXCEPTION_POINTERS* pointers) {
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    if (record.ExceptionCode != kDebugPrint)
        return EXCEPTION_CONTINUE_SEARCH;
    const auto length = static_cast<std::size_t>(record.ExceptionInformation[0]);
    Kept().emplace_back(reinterpret_cast<const char*>(record.ExceptionInformation[1]), length > 0 ? length - 1 : 0);
    return EXCEPTION_CONTINUE_EXECUTION;
}

} // namespace

DebugLines::DebugLines() : handler_(AddVectoredExceptionHandler(1, &Keep)) {
    Kept().clear();
}

DebugLines::~DebugLines() {
    RemoveVectoredExceptionHandler(handler_);
}

const std::vector<std::string>& DebugLines::Lines() const {
    return Kept();
}

} // namespace orv::tests
