#include "host/app/orvhost/debug_lines.h"

#include <algorithm>

namespace orv::host {
namespace {

constexpr DWORD kNarrow = 0x40010006; // what OutputDebugStringA raises
constexpr DWORD kWide = 0x4001000A;   // and OutputDebugStringW, on some systems

std::wstring FromSystemCodePage(const char* text, std::size_t length) {
    std::wstring wide(length, L'\0');
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_ACP, 0, text, static_cast<int>(length), wide.data(), static_cast<int>(length))));
    return wide;
}

} // namespace

DebugLines* DebugLines::instance_ = nullptr;

DebugLines::DebugLines(std::function<void(const std::wstring&)> listener) : listener_(std::move(listener)) {
    instance_ = this;
    handler_ = AddVectoredExceptionHandler(1, &DebugLines::Catch);
}

DebugLines::~DebugLines() {
    RemoveVectoredExceptionHandler(handler_);
    instance_ = nullptr;
}

LONG CALLBACK DebugLines::Catch(EXCEPTION_POINTERS* pointers) {
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    const bool ours = record.ExceptionCode == kNarrow || record.ExceptionCode == kWide;
    if (!ours || record.NumberParameters < 2 || instance_ == nullptr)
        return EXCEPTION_CONTINUE_SEARCH;
    try {
        instance_->Take(record);
    } catch (...) {
        // A line is lost; the caller must not notice.
    }
    return EXCEPTION_CONTINUE_EXECUTION;
}

void DebugLines::Take(const EXCEPTION_RECORD& record) {
    const auto length = static_cast<std::size_t>(record.ExceptionInformation[0]);
    std::wstring text = record.ExceptionCode == kWide
                            ? std::wstring(reinterpret_cast<const wchar_t*>(record.ExceptionInformation[1]), length)
                            : FromSystemCodePage(reinterpret_cast<const char*>(record.ExceptionInformation[1]), length);
    while (!text.empty() && (text.back() == L'\0' || text.back() == L'\n' || text.back() == L'\r'))
        text.pop_back();
    {
        const std::lock_guard guard(lock_);
        lines_.push_back(std::move(text));
    }
    if (GetCurrentThreadId() == thread_)
        Drain();
}

void DebugLines::Drain() {
    std::vector<std::wstring> lines;
    {
        const std::lock_guard guard(lock_);
        lines.swap(lines_);
    }
    std::for_each(lines.begin(), lines.end(), listener_);
}

} // namespace orv::host
