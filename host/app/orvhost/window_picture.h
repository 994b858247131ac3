#pragma once
// Pictures of the host's windows.
#include <filesystem>

#include "host/app/orvhost/bitmap.h"
#include "host/app/orvhost/system.h"

namespace orv::host {

/// The frame with the windows that it owns on top, as they stand on the screen.
Picture TakePicture(HWND frame);

/// Raises std::runtime_error when the file cannot be written.
void SavePicture(const Picture& picture, const std::filesystem::path& file);

} // namespace orv::host
