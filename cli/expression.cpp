#include "cli/expression.h"

#include <algorithm>
#include <vector>

#include "cli/values.h"
#include "model/expression_fault.h"
#include "text/excerpt.h"

namespace orv::cli {
namespace {

struct OldGroup {
    std::wstring text;
    model::Group strings{0};
    bool taken = false;
};

std::vector<OldGroup> Remember(const model::Groups& groups) {
    std::vector<OldGroup> old;
    for (const model::Group& group : groups) {
        old.push_back({group.Text(false)});
        old.back().strings.TakeStrings(group);
    }
    return old;
}

void Take(model::Group& group, OldGroup& old) {
    group.TakeStrings(old.strings);
    old.taken = true;
}

void HandStringsOver(std::vector<OldGroup> old, model::Groups& groups) {
    std::vector<model::Group*> fresh;
    for (model::Group& group : groups) {
        const auto same = std::find_if(old.begin(), old.end(), [text = group.Text(false)](const OldGroup& candidate) {
            return !candidate.taken && candidate.text == text;
        });
        if (same != old.end())
            Take(group, *same);
        else
            fresh.push_back(&group);
    }
    for (model::Group* group : fresh) {
        const auto position = static_cast<std::size_t>(group->Index()) - 1;
        if (position < old.size() && !old[position].taken)
            Take(*group, old[position]);
    }
}

} // namespace

std::wstring ExpressionFault(std::wstring_view expression) {
    const auto fault = model::FindFault(expression);
    if (!fault)
        return {};
    if (fault->token.empty())
        return L"it ends too early";
    return L"character " + std::to_wstring(fault->character) + L", \"" + text::Excerpt(fault->token) + L"\"";
}

void SetExpression(model::Codes& codes, const std::wstring& expression) {
    if (const std::wstring fault = ExpressionFault(expression); !fault.empty())
        throw ValueError(L"\"" + text::Excerpt(expression) + L"\" is no expression: " + fault);
    std::vector<OldGroup> old = Remember(codes.Groups());
    codes.Groups().ParseExpression(expression);
    HandStringsOver(std::move(old), codes.Groups());
    codes.GroupsChanged();
}

} // namespace orv::cli
