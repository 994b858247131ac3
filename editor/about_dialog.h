#pragma once
// What the add-on is and which version of it runs; a way to the system's own information.
#include "editor/context.h"

namespace orv::editor {

void ShowAbout(Context& context);

} // namespace orv::editor
