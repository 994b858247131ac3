#pragma once
// The progress display: a window of its own, owned by the editor's.
#include "host/app/orvhost/system.h"
#include "host/sim/progress_log.h"

namespace orv::host {

class ProgressWindow {
  public:
    ProgressWindow() = default;
    ~ProgressWindow();
    ProgressWindow(const ProgressWindow&) = delete;
    ProgressWindow& operator=(const ProgressWindow&) = delete;

    /// Makes the window look like what the display was told; it exists only while it is shown.
    void Follow(const sim::ProgressLog& progress);
    HWND Window() const { return window_; }

  private:
    void Create(const sim::ProgressLog& progress);
    void Layout(UINT dpi);
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

    HWND window_ = nullptr; // goes with its owner, too
    HWND text_ = nullptr;
    HWND percent_ = nullptr;
    HWND bar_ = nullptr;
    OwnedFont font_;
};

} // namespace orv::host
