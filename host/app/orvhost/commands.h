#pragma once
// Ids of the frame's commands.

namespace orv::host {

enum Command : int {
    kOpen = 100,
    kSave,
    kSaveAs,
    kExit,
    kShow,
    kActivate,
    kHide,
    kCloseAddOn,
    kDropConnection,
    kClearLog,
    kNextPane,
    kShowLog,
    kLevelFirst = 200, ///< plus the level
    kClusterFirst = 1000,
    kDeviceFirst = 3000,
    kTargetEnd = 5000
};

} // namespace orv::host
