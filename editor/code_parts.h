#pragma once
// Which fields a code slot calls for.
#include <cstdint>

#include "model/codes.h"

namespace orv::editor {

/// What of the page is shown for a slot in use.
struct CodeParts {
    bool length = false;
    bool checkDigit = false;
    bool interleavedType = false;
    bool code39Type = false;
    bool addon = false;
    bool startStop = false;
    bool matrix = false;
    bool postal = false;
    bool moduleSize = false;
    bool rss = false;
    bool maxicode = false;
    bool operator==(const CodeParts&) const = default;
};

/// The device's code types count, whatever it calls them.
CodeParts PartsOf(std::int32_t codeType);
/// Of a code type that the device does not list.
inline constexpr CodeParts kPartsOfUnlisted{.length = true};

bool HasLocalNoRead(const model::Codes& codes);
bool HasLocalMultipleRead(const model::Codes& codes);
/// The same for the strings of all codes and of one.
bool UsesNoReadText(const model::Codes& codes);
bool UsesMultipleReadText(const model::Codes& codes);

} // namespace orv::editor
