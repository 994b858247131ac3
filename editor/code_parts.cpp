#include "editor/code_parts.h"

namespace orv::editor {

CodeParts PartsOf(std::int32_t codeType) {
    CodeParts parts{.length = codeType < 4 || codeType > 8, .addon = codeType >= 4 && codeType <= 8};
    parts.interleavedType = codeType == 1;
    parts.code39Type = codeType == 2;
    parts.startStop = codeType == 9;
    parts.checkDigit = parts.interleavedType || parts.code39Type || parts.startStop;
    parts.matrix = codeType == 12;
    parts.postal = codeType == 14;
    parts.moduleSize = codeType == 15;
    parts.rss = codeType == 16;
    parts.maxicode = codeType == 18;
    return parts;
}

bool HasLocalNoRead(const model::Codes& codes) {
    return codes.Combination() != 2 && codes.Combination() != 3;
}

bool HasLocalMultipleRead(const model::Codes& codes) {
    return codes.Combination() == 1;
}

bool UsesNoReadText(const model::Codes& codes) {
    return codes.NoReadMessage() != 2;
}

bool UsesMultipleReadText(const model::Codes& codes) {
    // Not the counterpart of the no-read text: both messages have to agree before this one is out of use. Meant.
    return !(codes.MultiReadMessage() == 1 && codes.NoReadMessage() == 2);
}

} // namespace orv::editor
