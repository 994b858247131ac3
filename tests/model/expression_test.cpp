// Combination expressions, parsed and printed.
#include <algorithm>

#include <gtest/gtest.h>

#include "model/groups.h"
#include "tests/model/fixture.h"

namespace orv::model {
namespace {

constexpr std::int32_t kOr = -1;
constexpr std::int32_t kXor = 0;
constexpr std::int32_t kUndecided = -2;

struct ExpectedGroup {
    bool optional;
    std::int32_t multiple;
    std::vector<std::wstring> codes;
};

struct Good {
    const wchar_t* text;
    std::vector<ExpectedGroup> groups;
    const wchar_t* device;
    const wchar_t* readable;
};

std::string Narrow(const std::wstring& text) {
    return {text.begin(), text.end()};
}

TEST(Expression, GoodOnesMakeTheirGroups) {
    const Good cases[] = {
        {L"", {}, L"", L""},
        {L"   ", {}, L"", L""},
        {L"1", {{false, kXor, {L"1"}}}, L"1", L"(1)"},
        {L"1|2", {{false, kOr, {L"1", L"2"}}}, L"1|2", L"(1 OR 2)"},
        {L"1^2^10", {{false, kXor, {L"1", L"2", L"10"}}}, L"1^2^10", L"(1 XOR 2 XOR 10)"},
        {L"[3]", {{true, kXor, {L"3"}}}, L"[3]", L"([3])"},
        {L"[1|2]", {{true, kOr, {L"1", L"2"}}}, L"[1|2]", L"([1 OR 2])"},
        {L"1|2&[3]", {{false, kOr, {L"1", L"2"}}, {true, kXor, {L"3"}}}, L"1|2&[3]", L"(1 OR 2) AND ([3])"},
        {L"[1^2]&3", {{true, kXor, {L"1", L"2"}}, {false, kXor, {L"3"}}}, L"[1^2]&3", L"([1 XOR 2]) AND (3)"},
        {L"1|2&3^4&5",
         {{false, kOr, {L"1", L"2"}}, {false, kXor, {L"3", L"4"}}, {false, kXor, {L"5"}}},
         L"1|2&3^4&5",
         L"(1 OR 2) AND (3 XOR 4) AND (5)"},
        // Any text is a code, blanks inside of it included; those around it go.
        {L"1 & 2", {{false, kXor, {L"1"}}, {false, kXor, {L"2"}}}, L"1&2", L"(1) AND (2)"},
        {L" a b |\tc", {{false, kOr, {L"a b", L"\tc"}}}, L"a b|\tc", L"(a b OR \tc)"},
        // One blank between two tokens counts for nothing; at the very beginning, or two of them, are a code.
        {L"[1] & [2]", {{true, kXor, {L"1"}}, {true, kXor, {L"2"}}}, L"[1]&[2]", L"([1]) AND ([2])"},
        {L"[1] ", {{true, kXor, {L"1"}}}, L"[1]", L"([1])"},
        {L" &1", {{false, kXor, {L""}}, {false, kXor, {L"1"}}}, L"1", L"(1)"},
        {L"1&  ", {{false, kXor, {L"1"}}, {false, kXor, {L""}}}, L"1", L"(1)"},
        {L"1|  ", {{false, kOr, {L"1", L""}}}, L"1|", L"(1 OR )"},
        {L"[  ]", {{true, kXor, {L""}}}, L"", L""},
    };
    for (const Good& c : cases) {
        SCOPED_TRACE(Narrow(c.text));
        Groups groups;
        groups.ParseExpression(L"7&8&9"); // what was there before goes
        EXPECT_TRUE(groups.ParseExpression(c.text));
        ASSERT_EQ(groups.Count(), static_cast<std::int32_t>(c.groups.size()));
        for (std::size_t i = 0; i < c.groups.size(); ++i) {
            const Group& group = groups.Item(static_cast<std::int32_t>(i) + 1);
            EXPECT_EQ(group.Index(), static_cast<std::int16_t>(i + 1));
            EXPECT_EQ(group.IsOptional(), c.groups[i].optional);
            EXPECT_EQ(group.Multiple(), c.groups[i].multiple);
            EXPECT_TRUE(std::ranges::equal(group.Codes(), c.groups[i].codes));
            EXPECT_EQ(group.NoReadString(), L"");
        }
        EXPECT_EQ(groups.GetExpression(false), c.device);
        EXPECT_EQ(groups.GetExpression(true), c.readable);
    }
}

TEST(Expression, BadOnesLeaveNoGroup) {
    const wchar_t* const cases[] = {
        // Brackets: nested, closed without being open, never closed.
        L"[[1]]",
        L"[1&[2]]",
        L"1]",
        L"]1[",
        L"[1|2",
        L"[",
        L"1&[2",
        // No beginning.
        L"|1",
        L"^1",
        L"&1",
        L"]",
        // Where a group is expected.
        L"1&&2",
        L"1&|2",
        L"1&]",
        L"1&",
        L"1& ",
        // After a code or a closed group.
        L"1[2]",
        L"1 [2]",
        L" [1]",
        L"  [1]",
        L"[1]2",
        L"[1][2]",
        L"[1]  &2",
        // After a separator.
        L"1||2",
        L"1| |2",
        L"1|&2",
        L"1|[2]",
        L"1|",
        L"1^",
        // Inside of brackets.
        L"[]",
        L"[ ]",
        L"[|1]",
        L"[1|]",
        L"[1&2]",
        L"[1||2]",
        // Mixed, or continued.
        L"1|2^3",
        L"1^2|3",
        L"[1|2^3]",
        L"[1^2|3]",
        L"[1]|2",
        L"[1]^2",
        L"1&2|3^4",
    };
    for (const wchar_t* const c : cases) {
        Groups groups;
        groups.ParseExpression(L"7&8&9");
        EXPECT_FALSE(groups.ParseExpression(c)) << Narrow(c);
        EXPECT_EQ(groups.Count(), 0) << Narrow(c);
    }
}

TEST(Expression, LongOnesAreReadWholeAndTooLongOnesOverflow) {
    const auto repeated = [](int count) {
        std::wstring text = L"1";
        for (int i = 1; i < count; ++i)
            text += L"&1";
        return text;
    };
    Groups groups;
    EXPECT_TRUE(groups.ParseExpression(repeated(32767)));
    EXPECT_EQ(groups.Count(), 32767);
    EXPECT_EQ(groups.Item(32767).Index(), 32767);
    EXPECT_EQ(test::ErrorOf([&] { groups.ParseExpression(repeated(32768)); }), 6);
    EXPECT_EQ(groups.Count(), 0);
    std::wstring alternatives = L"[0";
    for (int i = 1; i < 5000; ++i)
        alternatives += L'^' + std::to_wstring(i);
    alternatives += L']';
    EXPECT_TRUE(groups.ParseExpression(alternatives));
    EXPECT_EQ(groups.Item(1).Codes().size(), 5000U);
    EXPECT_EQ(groups.GetExpression(false), alternatives);
}

TEST(GroupText, ShowsAnUndecidedJoinAndLeavesEmptyGroupsOut) {
    Groups groups;
    Group& first = groups.Add();
    EXPECT_EQ(first.Multiple(), kUndecided);
    EXPECT_EQ(first.Text(false), L"");
    first.IsOptional(true);
    EXPECT_EQ(first.Text(true), L"") << "no brackets round nothing";
    first.AddCode(L"4");
    EXPECT_EQ(first.Text(false), L"[4]");
    first.AddCode(L"5");
    for (const std::int32_t undecided : {-2, 1, 7, -3}) {
        first.Multiple(undecided);
        EXPECT_EQ(first.Text(false), L"[4?5]");
        EXPECT_EQ(first.Text(true), L"[4?5]");
    }
    groups.Add();
    groups.Add().AddCode(L"6");
    EXPECT_EQ(groups.GetExpression(false), L"[4?5]&6");
    EXPECT_EQ(groups.GetExpression(true), L"([4?5]) AND (6)");
    first.ClearCodes();
    EXPECT_EQ(groups.GetExpression(false), L"6") << "no joiner before the first that is printed";
}

TEST(GroupCollection, NumbersItsGroupsAnewAndKnowsTheirKeys) {
    Groups groups;
    groups.Add();
    Group& named = groups.Add(L"mine");
    Group& last = groups.Add();
    EXPECT_EQ(last.Index(), 3);
    EXPECT_EQ(last.NoReadString() + last.MultipleReadString(), L"");
    groups.Remove(1);
    EXPECT_EQ(named.Index(), 1);
    EXPECT_EQ(last.Index(), 2);
    EXPECT_EQ(&groups.Item(L"mine"), &named);
    EXPECT_EQ(&groups.Item(2), &last);
    EXPECT_EQ(groups.Add().Index(), 3);
    for (const std::int32_t position : {0, 4, -1}) {
        EXPECT_EQ(test::ErrorOf([&] { groups.Remove(position); }), 5) << position;
        EXPECT_EQ(test::ErrorOf([&] { groups.Item(position); }), 5) << position;
    }
    EXPECT_EQ(test::ErrorOf([&] { groups.Item(L"yours"); }), 5);
    EXPECT_EQ(test::ErrorOf([&] { groups.Add(L"mine"); }), 5) << "the key is taken";
    EXPECT_EQ(groups.Count(), 3);
}

} // namespace
} // namespace orv::model
