#pragma once
// Writes the structure of the advanced formats to a file that the user chooses.
#include "editor/context.h"

namespace orv::editor {

/// Asks for the file; nothing happens when the user cancels. Raises what the host and the file raise.
void ExportFormats(const Context& context);

} // namespace orv::editor
