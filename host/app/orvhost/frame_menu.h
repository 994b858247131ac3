#pragma once
// The frame's menu and its shortcuts.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/app/orvhost/system.h"

namespace orv::host {

/// What the frame shows of the host's state.
struct FrameState {
    struct Place {
        std::int16_t index = 0;
        std::wstring label;
    };
    std::wstring caption; ///< set by the add-on
    std::wstring file;
    std::vector<Place> clusters;
    std::vector<Place> devices; ///< of the current cluster
    std::int16_t cluster = 0;
    std::int16_t device = 0;
    std::int32_t level = 0;
    std::wstring link; ///< how the device is reached
    bool hasFile = false;
    bool hasAddOn = false; ///< created
    bool log = true;       ///< the log pane is shown
    bool modeless = true;  ///< false while the control shows something modal
};

OwnedMenu MakeMenu(const FrameState& state);
OwnedAccelerators MakeAccelerators();

/// Id of the command with that caption, shortcuts and marks left out; 0 when there is none or it is grey.
int FindCommand(HMENU menu, std::wstring_view caption);

} // namespace orv::host
