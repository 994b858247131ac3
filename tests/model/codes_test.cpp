// The code slots and what belongs to all of them.
#include "model/codes.h"

#include <gtest/gtest.h>

#include "tests/model/fixture.h"
#include "tests/model/wire.h"

namespace orv::model {
namespace {

using device::Value;

class CodesTest : public test::ModelTest {};

TEST_F(CodesTest, EveryPropertyComesFromItsOwnParameter) {
    const struct {
        std::int32_t parameter;
        std::int32_t value;
        std::int32_t (*property)(const CodeDef&);
    } numbers[] = {
        {2, 70001, [](const CodeDef& c) { return c.CodeType(); }},
        {3, 103, [](const CodeDef& c) { return std::int32_t{c.MinLength()}; }},
        {4, 104, [](const CodeDef& c) { return std::int32_t{c.MaxLength()}; }},
        {70, 170, [](const CodeDef& c) { return std::int32_t{c.Length()}; }},
        {382, 70382, [](const CodeDef& c) { return c.StartCharTX(); }},
        {383, 70383, [](const CodeDef& c) { return c.StopCharTX(); }},
        {527, 527, [](const CodeDef& c) { return std::int32_t{c.CheckDigitType39()}; }},
        {526, 526, [](const CodeDef& c) { return std::int32_t{c.CheckDigitType25IL()}; }},
        {32, 32, [](const CodeDef& c) { return std::int32_t{c.EANAddon()}; }},
        {3002, 202, [](const CodeDef& c) { return std::int32_t{c.DMColumns()}; }},
        {3003, 203, [](const CodeDef& c) { return std::int32_t{c.DMRows()}; }},
        {3004, 3004, [](const CodeDef& c) { return std::int32_t{c.ModuleSize()}; }},
        {3007, 3007, [](const CodeDef& c) { return std::int32_t{c.PostalSymbology()}; }},
        {3008, 3008, [](const CodeDef& c) { return std::int32_t{c.PostalDirection()}; }},
        {3009, 209, [](const CodeDef& c) { return std::int32_t{c.PostalMinBarcount()}; }},
        {3010, 210, [](const CodeDef& c) { return std::int32_t{c.PostalMaxBarcount()}; }},
        {3011, 3011, [](const CodeDef& c) { return std::int32_t{c.PostalBarDistance()}; }},
        {3012, -3012, [](const CodeDef& c) { return std::int32_t{c.RssType()}; }},
    };
    for (const auto& c : numbers)
        Set(c.parameter, c.value, 6);
    Set(18, Bytes{0, 1, 0xFF}, 6);
    Set(328, Bytes{'m'}, 6);
    root.Reload();
    const CodeDef& slot = *root.Codes().Code(7);
    for (const auto& c : numbers)
        EXPECT_EQ(c.property(slot), c.value) << c.parameter;
    EXPECT_EQ(slot.NoReadString(), std::wstring(L"\0\x01\xFF", 3));
    EXPECT_EQ(slot.MultipleReadString(), L"m");
    EXPECT_EQ(root.Codes().Code(6)->DMColumns(), 0) << "its neighbour";
}

TEST_F(CodesTest, EverySwitchIsItsOwnAndAnyNumberButZeroIsOn) {
    const std::int32_t parameters[] = {1, 5, 3005, 3006, 3013, 3014, 3015, 3016, 3017, 3018, 3019};
    const auto switches = [](const CodeDef& code) {
        std::vector<bool> all = {code.Enabled(), code.CheckDigit(), code.DMRectangular(), code.DMFastImprove()};
        for (int mode = 0; mode < 7; ++mode)
            all.push_back(code.MaxicodeEnable(mode));
        return all;
    };
    const std::int16_t kOn[] = {1, -1, 2, -32768};
    for (std::size_t on = 0; on < std::size(parameters); ++on) {
        for (std::size_t i = 0; i < std::size(parameters); ++i)
            Set(parameters[i], i == on ? kOn[on % 4] : std::int16_t{0}, 3);
        root.Reload();
        std::vector<bool> expected(std::size(parameters));
        expected[on] = true;
        EXPECT_EQ(switches(*root.Codes().Code(4)), expected) << parameters[on];
        root.Save(false);
        EXPECT_EQ(Get(parameters[on], 3), Value(std::int16_t{1}));
    }
}

TEST_F(CodesTest, WhatBelongsToAllCodesComesFromItsOwnParameter) {
    Set(72, 1);
    Set(14, 140014);
    Set(15, 150015);
    Set(9, Bytes{'n'});
    Set(16, Bytes{'m'});
    const Codes& codes = LoadedCodes();
    EXPECT_EQ(codes.Combination(), 1);
    EXPECT_EQ(codes.NoReadMessage(), 140014);
    EXPECT_EQ(codes.MultiReadMessage(), 150015);
    EXPECT_EQ(codes.NoReadString(), L"n");
    EXPECT_EQ(codes.MultiReadString(), L"m");
}

TEST_F(CodesTest, TheCaptionNamesTheSymbologyOfASlotInUse) {
    const struct {
        std::int16_t enabled;
        std::int32_t type;
        const wchar_t* caption;
    } cases[] = {
        {1, 3, L"4 - Code 128"},
        {1, 77, L"4 - UNKNOWN SYMBOLOGY (77)"},
        {1, 255, L"4 - UNKNOWN SYMBOLOGY (255)"},
        {0, 3, L"4 - (None)"},
        {0, 256, L"4 - (None)"},
    };
    for (const auto& c : cases) {
        Set(1, c.enabled, 3);
        Set(2, c.type, 3);
        EXPECT_EQ(LoadedCodes().Code(4)->Description(), c.caption);
    }
    EXPECT_EQ(root.Codes().CodeDescription(18), L"MaxiCode");
    EXPECT_EQ(root.Codes().CodeDescription(77), L"");
    CodeDef& slot = *root.Codes().Code(4);
    slot.Enabled(true);
    for (const std::int32_t type : {-1, 256, 2147483647}) {
        slot.CodeType(type);
        EXPECT_EQ(test::ErrorOf([&] { slot.SymbologyID(); }), 6);
        EXPECT_EQ(test::ErrorOf([&] { slot.Description(); }), 6);
        EXPECT_EQ(test::ErrorOf([&] { root.Codes().CodeDescription(type); }), 6);
    }
    EXPECT_EQ(test::ErrorOf([&] { slot.MaxicodeEnable(7); }), 9);
    EXPECT_EQ(test::ErrorOf([&] { slot.MaxicodeEnable(-1, true); }), 9);
}

TEST_F(CodesTest, TheSymbologyIsNamedBelowTheLevelOfItsParameter) {
    bench.host.SetAccessLevel(0);
    bench.state.current.accessLevel = 0;
    ASSERT_EQ(LoadedCodes().Count(), 10);
    EXPECT_EQ(root.Codes().Code(1)->Description(), L"1 - Code 128");
    EXPECT_EQ(bench.host.AccessLevel(), 0);
}

TEST_F(CodesTest, AFixedLengthBecomesMinimumAndMaximum) {
    const struct {
        std::int16_t length, minimum, maximum; ///< given
        std::int16_t least, most;              ///< expected of a slot that had 5 and 6
    } cases[] = {
        {12, 1, 40, 12, 12}, {0, 0, 30, 5, 30},           {0, 4, 0, 4, 6},  {0, 0, 0, 5, 6}, {-1, -1, -1, 5, 6},
        {0, 9, 3, 9, 3},     {32767, 0, 0, 32767, 32767}, {-5, 7, 8, 7, 8},
    };
    CodeDef& slot = *LoadedCodes().Code(1);
    for (const auto& c : cases) {
        slot.Length(99);
        slot.MinLength(5);
        slot.MaxLength(6);
        slot.SetLength(c.length, c.minimum, c.maximum);
        EXPECT_EQ(slot.Length(), 0);
        EXPECT_EQ(slot.MinLength(), c.least) << c.length << ' ' << c.minimum;
        EXPECT_EQ(slot.MaxLength(), c.most) << c.length << ' ' << c.maximum;
    }
}

TEST_F(CodesTest, SlotsAreFoundByPositionAndKeyAndAnUnknownOneIsNull) {
    Codes& codes = LoadedCodes();
    EXPECT_EQ(codes.Count(), 10);
    EXPECT_EQ(codes.Code(L"Code10"), codes.Code(10));
    EXPECT_EQ(codes.Code(10)->Index(), 10);
    EXPECT_EQ(codes.EnabledCount(), 4);
    EXPECT_EQ(codes.Code(0), nullptr);
    EXPECT_EQ(codes.Code(11), nullptr);
    EXPECT_EQ(codes.Code(L"Code11"), nullptr);
    EXPECT_EQ(codes.Code(L""), nullptr);
    codes.Remove(L"Code3");
    EXPECT_EQ(codes.Code(L"Code3"), nullptr);
    EXPECT_EQ(codes.Code(3)->Index(), 4);
    codes.Remove(9);
    EXPECT_EQ(test::ErrorOf([&] { codes.Remove(9); }), 5);
    CodeDef& keyless = codes.Add(20, L"");
    EXPECT_EQ(codes.Code(9), &keyless);
    EXPECT_EQ(keyless.Index(), 20);
    for (CodeDef& code : codes)
        code.Enabled(false);
    EXPECT_EQ(codes.EnabledCount(), 0);
    root.Reload();
    EXPECT_EQ(codes.Count(), 10);
    EXPECT_EQ(codes.Code(L"Code3")->Index(), 3);
}

TEST_F(CodesTest, ASlotWhoseReadFailsKeepsWhatItHadAndTheNextGoesOn) {
    const auto slotReads = static_cast<std::int64_t>(wire::kCodeSlot.size());
    // The root's and those of all codes.
    const auto readsBefore = 2 + 19 + static_cast<std::int64_t>(wire::kCodes.size());
    Set(3, std::int16_t{33}, 1);
    Set(70, std::int16_t{77}, 1);
    // The fifth read of the second slot.
    bench.host.Gate().FailNamed("ParameterTable.GetValue", readsBefore + slotReads + 5, -7, L"gone");
    const Codes& codes = LoadedCodes();
    EXPECT_FALSE(bench.host.Gate().FailurePending());
    EXPECT_EQ(codes.Code(2)->MinLength(), 33);
    EXPECT_EQ(codes.Code(2)->Length(), 0) << "the read that failed";
    EXPECT_FALSE(codes.Code(2)->CheckDigit()) << "one that was not made any more";
    EXPECT_FALSE(codes.Code(2)->MaxicodeEnable(2));
    EXPECT_TRUE(codes.Code(1)->MaxicodeEnable(2));
    EXPECT_TRUE(codes.Code(3)->MaxicodeEnable(2));
    EXPECT_EQ(codes.Count(), 10);
    // A failed string read is an empty string and no reason to stop: 18 is the ninth.
    bench.host.Gate().FailNamed("ParameterTable.GetValue", readsBefore + slotReads + 9, -7, L"gone");
    root.Reload();
    EXPECT_EQ(codes.Code(2)->NoReadString(), L"");
    EXPECT_TRUE(codes.Code(2)->MaxicodeEnable(2));
    root.Reload();
    EXPECT_EQ(codes.Code(2)->NoReadString(), L"N2");
    EXPECT_EQ(codes.Code(2)->Length(), 77);
}

TEST(CodesOfAnotherKind, AParameterOfAWrongKindStopsItsSlotOnly) {
    sim::SystemDescription system = test::Sample("conveyor.json");
    auto& columns = test::Parameter(system.devices.front(), 3002);
    columns.type = device::WireType::Int32; // some firmwares keep it wider
    for (Value& value : columns.values)
        value = std::int32_t{24};
    columns.values[4] = std::int32_t{256};
    test::Bench bench(system, {}, 0);
    bench.Open(3);
    OutFormatConfig root(bench.state);
    root.Reload();
    for (std::int32_t slot = 1; slot <= 10; ++slot) {
        EXPECT_EQ(root.Codes().Code(slot)->DMColumns(), slot == 5 ? 0 : 24) << slot;
        EXPECT_EQ(root.Codes().Code(slot)->MaxicodeEnable(2), slot != 5) << slot;
    }
}

TEST_F(CodesTest, TheExpressionCountsWithItsCombinationOnly) {
    for (const std::int32_t other : {0, 1, 3, -2}) {
        Set(72, other);
        const Codes& codes = LoadedCodes();
        EXPECT_EQ(codes.Groups().Count(), 0) << other;
        EXPECT_EQ(codes.Groups().MaxCount(), 10) << other;
        root.Save(false);
        EXPECT_EQ(Get(191), Value(std::wstring(L"1|2&[3]"))) << other;
    }
    // Chosen by the user afterwards, it is written from the groups, of which there are none.
    root.Codes().Combination(2);
    root.Save(false);
    EXPECT_EQ(Get(191), Value(std::wstring()));
}

TEST_F(CodesTest, GroupsHaveTheirStringsByTheirIndex) {
    Set(191, std::wstring(L"1&2&3"));
    Set(17, Bytes{'c'}, 2);
    Set(327, Bytes{'C'}, 2);
    Groups& groups = LoadedCodes().Groups();
    EXPECT_EQ(groups.Item(1).NoReadString(), L"G1?");
    EXPECT_EQ(groups.Item(2).MultipleReadString(), L"G2+");
    EXPECT_EQ(groups.Item(3).NoReadString(), L"c");
    EXPECT_EQ(groups.Item(3).MultipleReadString(), L"C");
    groups.Remove(2);
    root.Save(false);
    EXPECT_EQ(Get(191), Value(std::wstring(L"1&3")));
    EXPECT_EQ(Get(17, 1), Value(Bytes{'c'}));
    EXPECT_EQ(Get(327, 1), Value(Bytes{'C'}));
    EXPECT_EQ(Get(17, 2), Value(Bytes{'c'})) << "no group, no write";
    // Even where another combination is chosen, groups that are there keep their strings on the device.
    root.Codes().Combination(0);
    groups.Item(1).NoReadString(L"still");
    root.Save(false);
    EXPECT_EQ(Get(17, 0), Value(Bytes{'s', 't', 'i', 'l', 'l'}));
    EXPECT_EQ(Get(191), Value(std::wstring(L"1&3")));
}

TEST_F(CodesTest, ABadExpressionHasNoGroupsReadsNoGroupStringsAndStays) {
    Set(191, std::wstring(L"1|2^3"));
    bench.host.Gate().KeepLog(true);
    const Codes& codes = LoadedCodes();
    EXPECT_EQ(codes.Groups().Count(), 0);
    for (const auto& call : bench.host.Gate().Log())
        if (call.name == "ParameterTable.FindByNumber") {
            EXPECT_NE(call.arguments, L"17");
            EXPECT_NE(call.arguments, L"327");
        }
    root.Save(false);
    EXPECT_EQ(Get(191), Value(std::wstring(L"1|2^3"))) << "what nobody understood is not written over";
}

} // namespace
} // namespace orv::model
