#include "model/out_format_config.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "device/mib_param_cache.h"
#include "model/list_helpers.h"
#include "tests/support/bench.h"

namespace orv::model {
namespace {

using device::Value;
using testing::ElementsAre;

class RootTest : public testing::Test {
  protected:
    RootTest() { bench.Open(3); }

    sim::ParameterStore& Store() { return *bench.host.Store(0, 0); }
    void Set(std::int32_t number, const Value& value) { Store().Set(number, 0, value); }
    void SetModelIndex(std::int16_t index) { Store().Set(*Store().FindName(L"/SystemInfo/Model/ModelIndex"), index); }

    test::Bench bench{"conveyor.json"};
    OutFormatConfig root{bench.state};
};

TEST_F(RootTest, NamesTransportsByTheDeviceElseByDefault) {
    Set(603, std::wstring());
    root.Reload();
    EXPECT_EQ(root.TransportDesc(3), L"Profibus");
    EXPECT_EQ(root.TransportDesc(15), L"UserSocket3");
    EXPECT_EQ(root.TransportDesc(16), L"");
    Set(603, std::wstring(L"A, B,,D"));
    root.Reload();
    EXPECT_EQ(root.TransportDesc(1), L" B");
    EXPECT_EQ(root.TransportDesc(2), L"DeviceNet");
    EXPECT_EQ(root.TransportDesc(3), L"D");
    EXPECT_EQ(root.TransportDesc(4), L"EmailClient");
    EXPECT_EQ(root.TransportDesc(255), L"");
}

TEST_F(RootTest, TakesTheMaskOfItsModel) {
    const struct {
        const wchar_t* masks;
        std::int16_t model;
        std::int32_t available;
    } cases[] = {
        {L"", 1, -1},
        {L"3,FF", 0, -1},
        {L"3,FF", 1, 3},
        {L"3,ff", 2, 255},
        {L"3,FF", 3, -1},
        {L"FFFFFFFF", 1, -1},
        {L"80000001", 1, -2147483647},
        {L"3,,5", 2, -1},
        {L"xyz", 1, -1},
        {L" 1F ,2", 1, 31},
        {L"123456789", 1, -1},
    };
    for (const auto& c : cases) {
        Set(601, std::wstring(c.masks));
        SetModelIndex(c.model);
        root.Reload();
        EXPECT_EQ(root.AvailableTransports(), c.available) << c.model;
    }
}

TEST_F(RootTest, MatchesNotUsedTypesOnWholeNumbers) {
    Set(370, std::wstring(L" 11 12 "));
    Set(371, std::wstring(L"1 12"));
    root.Reload();
    EXPECT_TRUE(root.SupportedCodeRelItem(1));
    EXPECT_FALSE(root.SupportedCodeRelItem(11));
    EXPECT_FALSE(root.SupportedCodeRelItem(12));
    EXPECT_FALSE(root.SupportedGlobalItem(1));
    EXPECT_TRUE(root.SupportedGlobalItem(2));
}

TEST_F(RootTest, CustomIdentifiersBelongToTheDevice) {
    for (int i = 0; i < 19; ++i)
        Set(400 + i, Bytes{});
    Set(405, Bytes{'A', 2});
    root.Reload();
    EXPECT_EQ(root.CustomCodeID(5), L"A\x02");
    root.CustomCodeID(5, L"B");
    EXPECT_EQ(root.CustomCodeID(5), L"B");
    const auto numberOf = [](const auto& action) {
        try {
            action();
        } catch (const Error& error) {
            return error.Number();
        }
        return 0;
    };
    EXPECT_EQ(root.CustomCodeID(4), L"");
    EXPECT_EQ(numberOf([&] { root.CustomCodeID(4, L"x"); }), 381);
    EXPECT_EQ(numberOf([&] { root.CustomCodeID(19); }), 9);
    EXPECT_EQ(numberOf([&] { root.CustomCodeID(-1, L"x"); }), 9);
    // One that comes back empty keeps what it was.
    Set(405, Bytes{});
    root.Reload();
    EXPECT_EQ(root.CustomCodeID(5), L"B");
}

TEST_F(RootTest, AdvancedIsOneAndNothingElse) {
    for (const auto& [stored, advanced] : {std::pair{1, true}, {0, false}, {-1, false}, {2, false}}) {
        Set(330, std::int16_t(stored));
        root.Reload();
        EXPECT_EQ(root.Advanced(), advanced) << stored;
    }
    root.Advanced(true);
    root.Save(false);
    EXPECT_EQ(Store().Get(330), Value(std::int16_t{1}));
}

TEST_F(RootTest, WritesDefinedIdentifiersOnlyAndKeepsNoCache) {
    for (int i = 0; i < 19; ++i)
        Set(400 + i, i % 7 == 0 ? Bytes{'#'} : Bytes{});
    root.Reload();
    root.Save(false);
    std::vector<std::int32_t> numbers;
    for (const std::wstring& line : bench.platform.debug.lines)
        if (line.starts_with(L"  Writing ")) {
            const std::wstring entry = line.substr(10, line.find(L" = ") - 10);
            const std::int32_t number = Store().Parameter(*Store().FindName(entry)).number;
            if (number >= 400 && number <= 418)
                numbers.push_back(number);
        }
    EXPECT_THAT(numbers, ElementsAre(400, 407, 414));
    EXPECT_EQ(bench.state.cache, nullptr);
}

TEST_F(RootTest, StandardFormatKeepsEveryByteAndMapsForeignCharacters) {
    Bytes every;
    for (int byte = 0; byte < 256; ++byte)
        every.push_back(static_cast<std::uint8_t>(byte));
    Set(6, every);
    Set(7, Bytes{});
    root.Reload();
    root.Save(false);
    EXPECT_EQ(Store().Get(6), Value(every));
    EXPECT_EQ(Store().Get(7), Value(Bytes{}));
    root.StandardFormat().Header(L"\x4e00\x20ac");
    root.Save(false);
    root.Reload();
    EXPECT_EQ(root.StandardFormat().Header(), L"?\x20ac");
}

TEST_F(RootTest, AFailedReadFliesAndLeavesWhatWasRead) {
    root.Reload();
    Set(6, Bytes{'n', 'e', 'w'});
    Set(7, Bytes{'n', 'e', 'w'});
    std::int64_t reads = 0;
    bench.host.Gate().KeepLog(true);
    root.Reload();
    for (const auto& call : bench.host.Gate().Log()) {
        if (call.name == "ParameterTable.FindByNumber" && (call.arguments + L",").starts_with(L"7,"))
            break;
        reads += call.name == "ParameterTable.GetValue";
    }
    Set(6, Bytes{'x'});
    Set(7, Bytes{'y'});
    bench.host.Gate().FailNamed("ParameterTable.GetValue", reads + 1, -7, L"gone");
    EXPECT_THROW(root.Reload(), Error);
    EXPECT_EQ(root.StandardFormat().Header(), L"x");
    EXPECT_EQ(root.StandardFormat().Terminator(), L"new");
}

TEST(ListHelpers, KeyMembersByTheirTextAndComeBackInOrder) {
    const std::vector<Value> values = {std::int16_t{3}, std::wstring(L"a"), std::int32_t{3}};
    auto collection = ToCollection(values);
    EXPECT_EQ(collection.Count(), 3);
    EXPECT_EQ(collection.Item(L"a"), values[1]);
    EXPECT_EQ(collection.Item(L"3"), values[0]);
    EXPECT_EQ(ToArray(collection), values);
    EXPECT_TRUE(ToArray({}).empty());
    EXPECT_THROW(collection.Item(0), Error);
    EXPECT_THROW(collection.Item(4), Error);
    EXPECT_THROW(collection.Item(L"b"), Error);
}

} // namespace
} // namespace orv::model
