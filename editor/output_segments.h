#pragma once
// What output strips show of the model.
#include <vector>

#include "controls/mb_edit_core.h"
#include "controls/output_strip.h"

namespace orv::editor {

/// Appends the content of an edit box: tokens one by one, what stands between them together.
void AppendContent(std::vector<controls::OutputStrip::Segment>& segments, const controls::MBEditCore& core);

} // namespace orv::editor
