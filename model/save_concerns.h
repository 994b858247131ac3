#pragma once
// What a save asks about first.
#include <cstdint>
#include <string>
#include <vector>

#include "model/out_format_config.h"

namespace orv::model {

struct SaveConcern {
    enum class Rule {
        CodeIdentifier, ///< an item sends the code identifier, which is globally disabled
        ReadingMode,    ///< a MaxiCode slot without any reading mode
    };

    Rule rule = Rule::CodeIdentifier;
    std::int32_t format = 0; ///< 1-based, of a CodeIdentifier concern
    std::int32_t item = 0;   ///< 1-based, within the format
    std::int32_t code = 0;   ///< slot number, of a ReadingMode concern
};

/// All of them: formats and their items first, then codes, in order.
std::vector<SaveConcern> SaveConcerns(const OutFormatConfig& root);

/// The text of the one question that a save asks; empty when there is nothing to ask.
std::wstring SaveQuestion(const std::vector<SaveConcern>& concerns);

} // namespace orv::model
