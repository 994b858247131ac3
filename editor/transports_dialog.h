#pragma once
// The user chooses the transports of one advanced format.
#include <cstdint>

#include "editor/context.h"

namespace orv::editor {

/// True when the user confirmed: the transports of format `index` are set. What the caller knows of the root may be
/// out of date then, as after any box.
bool ChooseTransports(Context& context, std::int32_t index);

} // namespace orv::editor
