#pragma once
// Reads back the rich text that an edit box hands to its window, the way a window does.
#include <string>
#include <string_view>
#include <vector>

namespace orv::fuzz {

struct RichCharacter {
    wchar_t character = 0;
    int colour = 0;
    bool operator==(const RichCharacter&) const = default;
};

/// The characters outside of the tables of fonts and colours. Ends the program when the text is not well-formed.
std::vector<RichCharacter> ReadRichText(std::string_view text);

} // namespace orv::fuzz
