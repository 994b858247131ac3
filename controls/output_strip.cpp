#include "controls/output_strip.h"

namespace orv::controls {

OutputStrip::OutputStrip(std::wstring name, int index) : Widget(Kind::OutputStrip, std::move(name), index) {}

void OutputStrip::SetSegments(std::vector<Segment> segments) {
    if (segments_ == segments)
        return;
    segments_ = std::move(segments);
    Mirror(Aspect::Items);
}

std::wstring OutputStrip::Line() const {
    std::wstring line = PlainCaption();
    SegmentKind previous = SegmentKind::Chip;
    for (const Segment& segment : segments_) {
        // Tokens and characters of one string stand together; a chip stands apart.
        if (!line.empty() && (segment.kind == SegmentKind::Chip || previous == SegmentKind::Chip))
            line += L' ';
        line += segment.kind == SegmentKind::Chip ? L"[" + segment.text + L"]" : segment.text;
        previous = segment.kind;
    }
    return line;
}

Size OutputStrip::MinimumSize(const TextMeasure& measure) const {
    // Room for the caption and a chip: a long output is cut at the right, it never widens the page.
    return {measure.Width(PlainCaption()) + measure.Scale(80), measure.LineHeight() + measure.Scale(8)};
}

} // namespace orv::controls
