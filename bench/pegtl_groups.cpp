#include "bench/pegtl_groups.h"

#include <tao/pegtl.hpp>
#include <tao/pegtl/contrib/utf32.hpp>

#include "model/group.h"

namespace orv::bench {
namespace {

namespace peg = tao::pegtl;
namespace wide = tao::pegtl::utf32;

static_assert(sizeof(wchar_t) == 4, "the grammar reads wide characters as they lie in memory");

struct And : wide::one<U'&'> {};
struct Or : wide::one<U'|'> {};
struct Xor : wide::one<U'^'> {};
struct Open : wide::one<U'['> {};
struct Close : wide::one<U']'> {};
struct Run : peg::plus<wide::not_one<U'&', U'|', U'^', U'[', U']'>> {};
/// One blank by itself counts for nothing, but for the first one of an expression.
struct Blank : peg::seq<wide::one<U' '>, peg::sor<peg::at<wide::one<U'&', U'|', U'^', U'[', U']'>>, peg::eof>> {};
struct Gap : peg::opt<Blank> {};
struct Code : peg::seq<Run> {};

template <typename Join>
struct Joined : peg::plus<Join, Gap, Code> {};
struct Choices : peg::seq<Code, peg::sor<Joined<Or>, Joined<Xor>, peg::success>> {};
struct Optional : peg::seq<Open, Gap, Choices, Close, Gap> {};
struct Group : peg::sor<Optional, Choices> {};
struct Expression : peg::seq<Group, peg::star<And, Gap, Group>, peg::eof> {};

using Input = peg::memory_input<peg::tracking_mode::lazy, peg::eol::lf_crlf, const char*>;
using Groups = std::vector<PegtlGroup>;

template <typename Rule>
struct Action {};

template <>
struct Action<Code> {
    template <typename Matched>
    static void apply(const Matched& in, Groups& groups) {
        const auto* text = reinterpret_cast<const wchar_t*>(in.begin());
        std::size_t begin = 0;
        std::size_t end = in.size() / sizeof(wchar_t);
        while (begin < end && text[begin] == L' ')
            ++begin;
        while (end > begin && text[end - 1] == L' ')
            --end;
        groups.back().codes.emplace_back(text + begin, end - begin);
    }
};
template <>
struct Action<Or> {
    static void apply0(Groups& groups) { groups.back().multiple = model::kJoinedByOr; }
};
template <>
struct Action<Open> {
    static void apply0(Groups& groups) { groups.back().isOptional = true; }
};
template <>
struct Action<And> {
    static void apply0(Groups& groups) {
        const auto next = static_cast<std::int16_t>(groups.size() + 1);
        groups.emplace_back().index = next;
    }
};

} // namespace

bool ParseByPegtl(std::wstring_view expression, std::vector<PegtlGroup>& groups) {
    groups.clear();
    if (expression.find_first_not_of(L' ') == std::wstring_view::npos)
        return true;
    const auto* bytes = reinterpret_cast<const char*>(expression.data());
    Input input(bytes, bytes + expression.size() * sizeof(wchar_t), "");
    groups.emplace_back().index = 1; // joined by XOR, as long as nothing else is said
    const bool parsed = peg::parse<Expression, Action>(input, groups);
    if (!parsed)
        groups.clear();
    return parsed;
}

std::wstring Print(const std::vector<PegtlGroup>& groups) {
    std::wstring text;
    for (const PegtlGroup& group : groups) {
        const std::size_t before = text.size();
        if (before > 0)
            text += L'&';
        if (group.isOptional)
            text += L'[';
        const std::size_t inner = text.size();
        for (std::size_t i = 0; i < group.codes.size(); ++i) {
            if (i > 0)
                text += group.multiple == model::kJoinedByOr ? L'|' : L'^';
            text += group.codes[i];
        }
        if (text.size() == inner)
            text.resize(before);
        else if (group.isOptional)
            text += L']';
    }
    return text;
}

} // namespace orv::bench
