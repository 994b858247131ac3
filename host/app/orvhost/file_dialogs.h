#pragma once
// The dialogs that ask for a device description.
#include <filesystem>

#include "host/app/orvhost/system.h"

namespace orv::host {

/// Empty when the user cancels.
std::filesystem::path AskOpenFile(HWND owner);
std::filesystem::path AskSaveFile(HWND owner, const std::filesystem::path& present);

} // namespace orv::host
