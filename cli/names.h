#pragma once
// From "AdvancedFormats(2).OutItems(1).FormatLength" to the field.
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "cli/fields.h"

namespace orv::cli {

/// What is wrong with an assignment, or with its name alone. The only exception that reading and applying one raises,
/// but for want of memory. what() is one line of UTF-8: name, reason.
class AssignmentError : public std::runtime_error {
  public:
    AssignmentError(std::wstring_view name, std::wstring_view reason);
};

/// A part of a name: "OutItems(1)".
struct NamePart {
    std::wstring name;
    std::optional<std::int32_t> index;
};

/// Raises AssignmentError when the text is no name: empty parts, indices that are no numbers.
std::vector<NamePart> ParseName(std::wstring_view name);

/// Names are taken as they are, else without regard to case. Raises AssignmentError, which names the part that is not
/// known and the valid ones nearest to it.
FieldRef Resolve(model::OutFormatConfig& model, std::wstring_view name);

} // namespace orv::cli
