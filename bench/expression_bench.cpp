// Parsing and printing of combination expressions against the same grammar by a parser library.
#include <algorithm>
#include <string>
#include <vector>

#include "bench/pair.h"
#include "bench/pegtl_groups.h"
#include "model/groups.h"

namespace orv::bench {
namespace {

using model::Groups;

constexpr Aim kTwiceAsFast{Ratio::SpeedAtLeast, 2.0};

std::wstring Long(int groups) {
    std::wstring text;
    for (int i = 1; i <= groups; ++i) {
        const std::wstring n = std::to_wstring(i);
        text += i > 1 ? L"&" : L"";
        text += i % 4 == 0 ? L"[" + n + L"^" + n + L"7^3]" : i % 4 == 1 ? n : n + L"|" + n + L"5";
    }
    return text;
}

const std::vector<std::wstring>& Expressions() {
    static const std::vector<std::wstring> all = {
        L"1",
        L"12",
        L"[3]",
        L"1&2",
        L"1|2",
        L"1^2^3",
        L"1 & 2",
        L"[1|2]&3",
        L"1|2|3&[4^5]&6",
        L"[1]&[2]&[3]&[4]",
        L"10|11|12|13|14|15|16|17|18|19",
        L"Code 39 | EAN-13 & [Data Matrix ^ QR Code] & Pharmacode",
        L"1&2&3&4&5&6&7&8&9&10&11&12&13&14&15&16",
        L"1|2&3|4&5|6&[7|8]&[9^10]&11^12&13^14&15",
        Long(64),
        Long(64),
        Long(500),
    };
    return all;
}

constexpr const wchar_t* kRefused[] = {
    L"&1",  L"1&",    L"1|",      L"|1",     L"1||2",  L"1|2^3", L"1^2|3", L"[1",      L"1]",
    L"[]",  L"[[1]]", L"[1]2",    L"1[2]",   L"[1]|2", L"1|[2]", L"[1&2]", L"[1|2^3]", L"1&&2",
    L"1& ", L" [1]",  L"[1] [2]", L"[1]&[2", L"^",     L"]",     L"[1]  ",
};
constexpr const wchar_t* kOdd[] = {L"", L" ", L"   ", L" &1", L"1&  ", L"[ 1 ] & [2] ", L" 1", L"1|  ", L"[  ]"};

bool Same(const Groups& ours, const std::vector<PegtlGroup>& theirs) {
    return std::equal(ours.begin(), ours.end(), theirs.begin(), theirs.end(), [](const auto& a, const auto& b) {
        return a.Index() == b.index && a.IsOptional() == b.isOptional && a.Multiple() == b.multiple &&
               a.NoReadString() == b.noReadString && a.MultipleReadString() == b.multipleReadString &&
               std::ranges::equal(a.Codes(), b.codes);
    });
}

/// Whether both make the same of a text; `taken` tells whether they took it.
bool Agree(const std::wstring& text, bool& taken) {
    Groups ours;
    std::vector<PegtlGroup> theirs;
    taken = ours.ParseExpression(text);
    return ParseByPegtl(text, theirs) == taken && Same(ours, theirs) && ours.GetExpression(false) == Print(theirs);
}

/// Empty when both parsers agree, else what they disagree about.
std::string Disagreement() {
    bool taken = false;
    for (const std::wstring& text : Expressions())
        if (!Agree(text, taken) || !taken)
            return "an expression of " + std::to_string(text.size()) + " characters is taken differently";
    for (const wchar_t* text : kRefused)
        if (!Agree(text, taken) || taken)
            return "refused text " + std::to_string(&text - kRefused) + " is taken, or taken differently";
    for (const wchar_t* text : kOdd)
        if (!Agree(text, taken))
            return "odd text " + std::string(text, text + std::wstring_view(text).size()) + " is taken differently";
    return {};
}

void ParseOurs(bool print) {
    for (const std::wstring& text : Expressions()) {
        Groups groups;
        benchmark::DoNotOptimize(groups.ParseExpression(text));
        if (print)
            benchmark::DoNotOptimize(groups.GetExpression(false));
    }
}

void ParseTheirs(bool print) {
    for (const std::wstring& text : Expressions()) {
        std::vector<PegtlGroup> groups;
        benchmark::DoNotOptimize(ParseByPegtl(text, groups));
        if (print)
            benchmark::DoNotOptimize(Print(groups));
    }
}

void Parse(benchmark::State& state, bool print) {
    static const std::string disagreement = Disagreement();
    if (!disagreement.empty()) {
        state.SkipWithError(disagreement.c_str());
        return;
    }
    MeasurePair(
        state, "PEGTL, same grammar", kTwiceAsFast, [print] { ParseOurs(print); }, [print] { ParseTheirs(print); });
}
BENCHMARK_CAPTURE(Parse, parse, false)->Name("parse expressions")->UseManualTime();
BENCHMARK_CAPTURE(Parse, print, true)->Name("parse and print expressions")->UseManualTime();

} // namespace
} // namespace orv::bench
