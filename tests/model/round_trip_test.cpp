// Load, save, fresh load: nothing is lost, and nothing changes but what a save changes on purpose.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/model/fixture.h"
#include "tests/model/random_device.h"
#include "tests/model/snapshot.h"

namespace orv::model {
namespace {

constexpr std::uint32_t kSeed = 20240611;

/// What a save would write now is what is there already.
void ExpectNothingToWrite(OutFormatConfig& root, const sim::ParameterStore& store) {
    const auto plan = root.Plan().writes;
    EXPECT_EQ(plan.size(), root.LastSave().queued);
    for (const auto& write : plan)
        ASSERT_EQ(store.Get(*store.FindName(write.entry)), write.value) << testing::PrintToString(write.entry);
}

void ExpectSame(const sim::DeviceDescription& actual, const sim::DeviceDescription& expected) {
    ASSERT_EQ(actual.parameters.size(), expected.parameters.size());
    for (std::size_t i = 0; i < expected.parameters.size(); ++i)
        ASSERT_EQ(actual.parameters[i].values, expected.parameters[i].values) << expected.parameters[i].number;
}

/// The first line in which two snapshots differ says more than both of them.
void ExpectSameLines(const std::wstring& a, const std::wstring& b) {
    if (a == b)
        return;
    const auto at = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    const auto line = [](const std::wstring& text, std::size_t offset) {
        const std::size_t begin = offset == 0 ? 0 : text.rfind(L'\n', offset - 1) + 1;
        return text.substr(begin, text.find(L'\n', offset) - begin);
    };
    EXPECT_EQ(line(a, static_cast<std::size_t>(at.first - a.begin())),
              line(b, static_cast<std::size_t>(at.second - b.begin())));
}

struct Case {
    sim::SystemDescription system;
    test::ExpressionCase expression;
    std::int16_t device = 0;
    std::int32_t level = 3;
    bool interactive = false;
    bool saveTwice = true;
};

/// Whatever the level: what stands above it stays, what does not is as a save leaves it.
void CheckSave(const Case& c, test::Bench& bench, OutFormatConfig& root) {
    const sim::DeviceDescription before = bench.host.Store(bench.cluster, c.device)->Contents();
    root.Reload();
    ASSERT_TRUE(root.Save(c.interactive));
    const auto after = test::AfterSave(before, c.expression, c.level);
    ExpectSame(bench.host.Store(bench.cluster, c.device)->Contents(), after);
    ExpectSame(bench.device->Store().Contents(), c.interactive ? after : before);
    if (c.saveTwice)
        ExpectNothingToWrite(root, *bench.host.Store(bench.cluster, c.device));
}

/// With every parameter in sight, a fresh model finds what the saved one holds.
void CheckFreshLoad(const Case& c, test::Bench& bench, OutFormatConfig& saved) {
    OutFormatConfig fresh(bench.state);
    fresh.Reload();
    // A code of blanks is printed as nothing, so that its group is gone or the whole does not parse any more; and a
    // device whose expression does not parse is not asked for its number of groups.
    const bool byExpression = saved.Codes().Combination() == kCombinationByExpression;
    test::SnapshotOptions options;
    options.cutItems = true;
    options.groups = !byExpression || c.expression.keepsGroups;
    options.maxCount = options.groups && (!byExpression || c.expression.parses);
    ExpectSameLines(test::Snapshot(fresh, options), test::Snapshot(saved, options));
}

void Check(const Case& c) {
    test::Bench bench(c.system, {}, c.device);
    bench.Open(c.level);
    OutFormatConfig root(bench.state);
    CheckSave(c, bench, root);
    if (c.level == 3 && !testing::Test::HasFailure())
        CheckFreshLoad(c, bench, root);
}

TEST(RoundTrip, EveryDeviceOfEverySample) {
    for (const char* name : {"tiny.json", "conveyor.json", "tunnel.json"})
        for (const auto& device : test::Sample(name).devices)
            for (const bool interactive : {false, true}) {
                SCOPED_TRACE(testing::Message() << name << ' ' << device.device);
                auto copy = device;
                const std::wstring expression = device::ToText(test::Parameter(copy, 191).values.front());
                Check({test::Sample(name), {expression, expression, true, true}, device.device, 3, interactive});
            }
}

TEST(RoundTrip, AThousandDevicesFilledAtRandom) {
    std::mt19937 random(kSeed);
    for (int i = 0; i < 1000 && !HasFailure(); ++i) {
        SCOPED_TRACE(testing::Message() << "seed " << kSeed << ", device " << i);
        auto device = test::MakeRandomDevice(random);
        Check({std::move(device.system), device.expression, 0, 3, i % 40 == 0, i % 4 == 0});
    }
}

TEST(RoundTrip, WhatStandsAboveTheLevelIsNeitherLostNorWritten) {
    std::mt19937 random(kSeed + 1);
    for (int i = 0; i < 90 && !HasFailure(); ++i) {
        SCOPED_TRACE(testing::Message() << "seed " << kSeed + 1 << ", device " << i);
        auto device = test::MakeRandomDevice(random);
        test::ScatterLevels(device.system.devices.front(), random);
        Check({std::move(device.system), device.expression, 0, i % 3, i % 6 < 3});
    }
}

TEST(RoundTrip, AtTheLevelsOfTheSampleTheLowestWritesNothing) {
    for (const std::int32_t level : {0, 1}) {
        test::Bench bench("conveyor.json");
        bench.Open(level);
        OutFormatConfig root(bench.state);
        root.Reload();
        EXPECT_EQ(root.Plan().writes.empty(), level == 0);
        EXPECT_EQ(root.AdvancedFormats().Count(), 4);
        EXPECT_EQ(root.AdvancedFormats().Item(1).OutItems().Count(), level == 0 ? 0 : 5);
    }
}

} // namespace
} // namespace orv::model
