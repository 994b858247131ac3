#include "controls/mb_edit_rtf.h"

namespace orv::controls {
namespace {

constexpr char kDigits[] = "0123456789abcdef";

void AppendCharacter(std::string& out, wchar_t character) {
    const auto code = static_cast<std::uint32_t>(character);
    if (character == TokenText::kLineBreak) {
        out += "\\par ";
    } else if (character == L'\\' || character == L'{' || character == L'}') {
        out += '\\';
        out += static_cast<char>(character);
    } else if (code >= 0x20 && code < 0x7F) {
        out += static_cast<char>(character);
    } else if (code < 0x100) {
        out += "\\'";
        out += kDigits[code >> 4];
        out += kDigits[code & 15];
    } else {
        // Readers want it signed, and skip the one character behind it.
        out += "\\u" + std::to_string(static_cast<std::int16_t>(code)) + "?";
    }
}

std::string ColourEntry(ColourValue colour) {
    return "\\red" + std::to_string(colour & 0xFF) + "\\green" + std::to_string((colour >> 8) & 0xFF) + "\\blue" +
           std::to_string((colour >> 16) & 0xFF) + ";";
}

std::string Heading(const RichTextStyle& style) {
    std::string heading = "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1{\\fonttbl{\\f0\\fnil\\fcharset0 ";
    for (wchar_t character : style.face)
        if (character != L';')
            AppendCharacter(heading, character);
    heading += ";}}{\\colortbl;" + ColourEntry(style.text) + ColourEntry(style.token) + "}";
    heading += "\\f0\\fs" + std::to_string(style.halfPoints);
    return heading + (style.bold ? "\\b" : "") + (style.italic ? "\\i" : "");
}

} // namespace

std::string RichText(std::wstring_view text, std::span<const ShadowCell> cells, const RichTextStyle& style) {
    std::string out = Heading(style);
    out.reserve(out.size() + 2 * text.size());
    int colour = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int wanted = cells[i].tokenLength > 1 ? 2 : 1;
        if (wanted != colour)
            out += wanted == 2 ? "\\cf2 " : "\\cf1 ";
        colour = wanted;
        AppendCharacter(out, text[i]);
    }
    if (colour == 0)
        out += "\\cf1 ";
    return out + "}";
}

} // namespace orv::controls
