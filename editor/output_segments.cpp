#include "editor/output_segments.h"

namespace orv::editor {

using controls::OutputStrip;

void AppendContent(std::vector<OutputStrip::Segment>& segments, const controls::MBEditCore& core) {
    const auto& cells = core.Cells();
    bool joins = false;
    for (std::size_t i = 0; i < cells.size();) {
        const auto length = static_cast<std::size_t>(cells[i].tokenLength);
        const std::wstring shown = core.Text().substr(i, length);
        if (length == 1 && joins)
            segments.back().text += shown;
        else
            segments.push_back({length > 1 ? OutputStrip::SegmentKind::Token : OutputStrip::SegmentKind::Plain, shown});
        joins = length == 1;
        i += length;
    }
}

} // namespace orv::editor
