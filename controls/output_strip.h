#pragma once
// A line that shows schematically what the device sends.
#include <string>
#include <vector>

#include "controls/widget.h"

namespace orv::controls {

class OutputStrip : public Widget {
  public:
    /// Plain is the device's own characters, Token a control character, Chip something the device fills in.
    enum class SegmentKind { Plain, Token, Chip };
    struct Segment {
        SegmentKind kind = SegmentKind::Plain;
        std::wstring text;
        bool operator==(const Segment&) const = default;
    };

    explicit OutputStrip(std::wstring name, int index = kNoIndex);
    /// Drawn left to right behind the caption; chips with a border, tokens in the colour of tokens.
    const std::vector<Segment>& Segments() const { return segments_; }
    void SetSegments(std::vector<Segment> segments);
    /// Caption and segments in one line, chips in square brackets: for screen readers.
    std::wstring Line() const;
    Size MinimumSize(const TextMeasure& measure) const override;

  private:
    std::vector<Segment> segments_;
};

} // namespace orv::controls
