#include "model/expression_fault.h"

#include <algorithm>
#include <vector>

#include "model/expression_tokenizer.h"
#include "model/groups.h"

namespace orv::model {
namespace {

/// Whether something can follow `prefix` so that the whole parses.
bool CanGoOn(std::wstring_view prefix) {
    Groups scratch;
    for (const wchar_t* rest : {L"", L"1", L"]", L"1]"})
        if (scratch.ParseExpression(std::wstring(prefix) + rest))
            return true;
    return false;
}

} // namespace

std::optional<ExpressionFault> FindFault(std::wstring_view expression) {
    if (Groups().ParseExpression(expression))
        return std::nullopt;
    std::vector<std::wstring_view> tokens;
    ExpressionTokenizer tokenizer(expression);
    for (std::wstring_view token = tokenizer.Next().text; !token.empty(); token = tokenizer.Next().text)
        tokens.push_back(token);
    // No text that cannot go on becomes better by going on.
    const auto wrong = std::partition_point(tokens.begin(), tokens.end(), [&](std::wstring_view token) {
        return CanGoOn(expression.substr(0, static_cast<std::size_t>(token.data() + token.size() - expression.data())));
    });
    if (wrong == tokens.end())
        return ExpressionFault{expression.size() + 1, {}};
    return ExpressionFault{static_cast<std::size_t>(wrong->data() - expression.data()) + 1, std::wstring(*wrong)};
}

} // namespace orv::model
