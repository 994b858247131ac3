// A load whose reads fail: which failures end it, which do not, and that the next load is whole.
#include <gtest/gtest.h>

#include <algorithm>
#include <type_traits>
#include <variant>

#include "tests/model/fixture.h"
#include "tests/model/snapshot.h"
#include "tests/model/wire.h"

namespace orv::model {
namespace {

class ReadFaults : public test::ModelTest {
  protected:
    ReadFaults() : ModelTest("tiny.json") {
        Set(191, std::wstring(L"1"));
        Set(72, 2);
    }

    /// Number or path of each value that a load reads, in order.
    std::vector<std::wstring> Reads() {
        bench.host.Gate().KeepLog(true);
        root.Reload();
        bench.host.Gate().KeepLog(false);
        std::vector<std::wstring> reads;
        std::wstring id;
        for (const auto& call : bench.host.Gate().Log()) {
            if (call.name.starts_with("ParameterTable.Find"))
                id = call.arguments.substr(0, call.arguments.find(L','));
            if (call.name == "ParameterTable.GetValue")
                reads.push_back(id);
        }
        return reads;
    }
};

/// Strings that are empty when they cannot be read, and whatever belongs to one code slot.
bool IsForgiven(const std::wstring& id) {
    if (id.starts_with(L'/'))
        return false;
    const int number = std::stoi(id);
    const auto of = [number](const std::vector<wire::Row>& rows) {
        for (const auto& row : rows)
            if (row.number == number)
                return true;
        return false;
    };
    return (number >= 400 && number <= 418) || number == 9 || number == 16 || of(wire::kCodeSlot) || of(wire::kGroup);
}

TEST_F(ReadFaults, AFailedReadEndsTheLoadWhereItsKindSaysSo) {
    const std::vector<std::wstring> reads = Reads();
    ASSERT_GT(reads.size(), 100U);
    const std::wstring whole = test::Snapshot(root);
    for (std::size_t i = 0; i < reads.size(); ++i) {
        SCOPED_TRACE(testing::Message() << "read " << i << " of " << testing::PrintToString(reads[i]));
        bench.host.Gate().FailNamed("ParameterTable.GetValue", static_cast<std::int64_t>(i) + 1, -7, L"gone");
        EXPECT_EQ(test::ErrorOf([&] { root.Reload(); }), IsForgiven(reads[i]) ? 0 : -7);
        EXPECT_FALSE(bench.host.Gate().FailurePending());
        EXPECT_EQ(bench.host.AccessLevel(), 3);
        root.Reload();
        ASSERT_EQ(test::Snapshot(root), whole);
    }
}

/// Every item's values, in the order of their table.
std::wstring ItemsOf(const OutFormatConfig& root) {
    std::wstring text;
    for (const AdvancedFormat& format : root.AdvancedFormats())
        for (const OutItem& item : format.OutItems())
            for (const auto& row : OutItem::Fields()) {
                const auto add = [&](auto member) {
                    if constexpr (std::is_same_v<decltype(member), Property<std::wstring> OutItem::*>)
                        text += (item.*member)() + L",";
                    else if constexpr (!std::is_same_v<decltype(member), SevenFlags OutItem::*>)
                        text += std::to_wstring((item.*member)()) + L",";
                };
                std::visit(add, row.member);
            }
    return text;
}

TEST_F(ReadFaults, AFailedLoadLeavesNothingOfTheItemsBefore) {
    const std::vector<std::wstring> reads = Reads();
    const auto first = std::find(reads.begin(), reads.end(), L"351") - reads.begin();
    const auto end = std::find(reads.begin(), reads.end(), L"370") - reads.begin();
    ASSERT_GT(end, first);
    for (auto i = first; i < end; i += 5) {
        root.Reload();
        for (AdvancedFormat& format : root.AdvancedFormats())
            for (OutItem& item : format.OutItems()) {
                item.StringText(L"old");
                item.DeviceNumber(77);
            }
        OutFormatConfig fresh(bench.state);
        for (OutFormatConfig* loaded : {&fresh, &root}) {
            bench.host.Gate().FailNamed("ParameterTable.GetValue", i + 1, -7, L"gone");
            EXPECT_EQ(test::ErrorOf([&] { loaded->Reload(); }), -7);
        }
        EXPECT_EQ(ItemsOf(root), ItemsOf(fresh)) << "read " << i;
    }
}

TEST_F(ReadFaults, AnyOtherCallThatFailsLeavesTheNextLoadWhole) {
    root.Reload();
    const std::wstring whole = test::Snapshot(root);
    const std::int64_t before = bench.host.Gate().Count();
    root.Reload();
    const std::int64_t calls = bench.host.Gate().Count() - before;
    std::int64_t flown = 0;
    for (std::int64_t k = 1; k <= calls; k += 7) {
        bench.host.Gate().FailCall(k, -7, L"gone");
        const std::int32_t error = test::ErrorOf([&] { root.Reload(); });
        EXPECT_TRUE(error == 0 || error == -7) << error;
        flown += error == -7;
        bench.host.Gate().Reset();
        root.Reload();
        ASSERT_EQ(test::Snapshot(root), whole) << "call " << k;
    }
    EXPECT_GT(flown, calls / 7 / 4);
}

} // namespace
} // namespace orv::model
