#pragma once
// The process's debug output, caught where it is raised: no debugger is needed.
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "host/app/orvhost/system.h"

namespace orv::host {

/// One at a time. Lines of the user-interface thread arrive at once, those of others with the next one or at Drain.
class DebugLines {
  public:
    explicit DebugLines(std::function<void(const std::wstring&)> listener);
    ~DebugLines();
    DebugLines(const DebugLines&) = delete;
    DebugLines& operator=(const DebugLines&) = delete;

    void Drain();

  private:
    static LONG CALLBACK Catch(EXCEPTION_POINTERS* pointers);
    void Take(const EXCEPTION_RECORD& record);

    static DebugLines* instance_;
    std::function<void(const std::wstring&)> listener_;
    DWORD thread_ = GetCurrentThreadId();
    PVOID handler_ = nullptr;
    std::mutex lock_;
    std::vector<std::wstring> lines_;
};

} // namespace orv::host
