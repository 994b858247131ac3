#pragma once
// A new combination expression for a model's groups.
#include <string>
#include <string_view>

#include "model/codes.h"

namespace orv::cli {

/// Replaces the groups. A group keeps its strings when one of the same text was there, else it takes those of the group
/// at its position when that one is gone. Raises ValueError with the place of the fault, and leaves the groups.
void SetExpression(model::Codes& codes, const std::wstring& expression);

/// What is wrong with an expression, and where: `character 3, "|"`. Empty when it parses.
std::wstring ExpressionFault(std::wstring_view expression);

} // namespace orv::cli
