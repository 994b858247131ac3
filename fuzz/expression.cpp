// The parser of combination expressions: what it takes, it prints, and takes again as the same groups.
#include <algorithm>
#include <iterator>
#include <string_view>

#include "fuzz/fuzz.h"
#include "model/groups.h"
#include "text/error.h"

namespace orv::fuzz {
namespace {

using model::Group;
using model::Groups;

constexpr std::uint8_t kRepeat = 0xF0;

/// A first byte of F0 and above repeats the rest up to 2^15 times: as many groups as overflow the count come from three
/// bytes. Longer parts stay short as a whole, or the fuzzer would do little else.
std::wstring Expression(const std::uint8_t* data, std::size_t size) {
    if (size == 0 || data[0] < kRepeat)
        return Widened(data, size);
    const std::wstring part = Widened(data + 1, size - 1);
    const std::size_t limit = part.size() <= 2 ? 70000 : 2000;
    std::wstring text;
    for (int count = 1 << (data[0] - kRepeat); count > 0 && text.size() + part.size() <= limit; --count)
        text += part;
    return text;
}

bool HasBlankCode(const Groups& groups) {
    return std::any_of(groups.begin(), groups.end(), [](const Group& group) {
        return std::any_of(group.Codes().begin(), group.Codes().end(), [](const auto& code) { return code.empty(); });
    });
}

/// The text without the blanks that stand at an operator or at an end.
std::wstring WithoutOuterBlanks(const std::wstring& text) {
    const auto isOperator = [](wchar_t c) { return std::wstring_view(L"&|^[]").find(c) != std::wstring_view::npos; };
    std::wstring kept;
    std::wstring blanks;
    for (const wchar_t c : text) {
        if (c == L' ') {
            blanks += c;
            continue;
        }
        const bool inner = !kept.empty() && !isOperator(kept.back()) && !isOperator(c);
        kept += inner ? blanks + c : std::wstring(1, c);
        blanks.clear();
    }
    return kept;
}

bool Same(const Groups& a, const Groups& b) {
    return a.Count() == b.Count() && std::equal(a.begin(), a.end(), b.begin(), [](const Group& x, const Group& y) {
               return x.Index() == y.Index() && x.IsOptional() == y.IsOptional() && x.Multiple() == y.Multiple() &&
                      x.Codes() == y.Codes();
           });
}

/// False when the expression is refused.
bool Parse(Groups& groups, const std::wstring& text) {
    try {
        const bool parsed = groups.ParseExpression(text);
        Require(parsed || groups.Count() == 0, "a refused expression leaves no groups");
        return parsed;
    } catch (const Error& error) {
        Require(error.Number() == error_number::kOverflow, "only too many groups raise an error");
        Require(std::count(text.begin(), text.end(), L'&') >= 32767, "there were too many groups");
        Require(groups.Count() == 0, "an error leaves no groups");
        return false;
    }
}

void Check(const std::wstring& text) {
    Groups groups;
    if (!Parse(groups, text))
        return;
    const std::wstring printed = groups.GetExpression(false);
    Require(groups.GetExpression(true).size() >= printed.size(), "the readable form spells out what the other says");
    if (HasBlankCode(groups))
        return;
    Require(printed == WithoutOuterBlanks(text), "nothing but blanks is lost");
    Groups again;
    Require(Parse(again, printed), "what is printed parses");
    Require(Same(groups, again), "what is printed parses to the same groups");
    Require(again.GetExpression(false) == printed, "printing is a fixed point");
    ++Accepted();
}

} // namespace
} // namespace orv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orv::fuzz::Check(orv::fuzz::Expression(data, size));
    return 0;
}
