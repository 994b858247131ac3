#pragma once
// What the progress display and the other recorded services of the bench host were told.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "device/host.h"

namespace orv::sim {

struct ProgressLog {
    int prepareCount = 0;              ///< HostApplication.PrepareProgress
    std::int32_t prepareArgument = -1; ///< of the last one
    int resetCount = 0;                ///< SupportObject.ResetProgress
    device::WindowHandle owner = 0;
    bool shown = false; ///< now
    int showCount = 0;
    int hideCount = 0;
    std::wstring title;
    std::wstring text; ///< the last one
    std::vector<std::wstring> texts;
    float percent = 0; ///< the last one
    std::vector<float> percents;
    std::vector<float> settled;
    std::function<void()> changed; ///< called after each change; for a host that draws the display
};

/// What a host with windows does for the support object. Without one the call raises 5.
struct WindowServices {
    std::function<void(device::WindowHandle)> commitPanel;
    std::function<std::int32_t(device::WindowHandle)> comboValue;
    std::function<void(device::WindowHandle)> editGotFocus;
};

} // namespace orv::sim
