#pragma once
// The box's content as rich text: the one form in which a view takes characters and their colours at once.
#include <span>
#include <string>

#include "controls/mb_edit_look.h"
#include "controls/mb_edit_text.h"

namespace orv::controls {

struct RichTextStyle {
    std::wstring face;
    int halfPoints = 18;
    bool bold = false;
    bool italic = false;
    ColourValue text = 0;
    ColourValue token = 0;
};

/// Tokens longer than 1 in their own colour. Line breaks end paragraphs.
std::string RichText(std::wstring_view text, std::span<const ShadowCell> cells, const RichTextStyle& style);

} // namespace orv::controls
