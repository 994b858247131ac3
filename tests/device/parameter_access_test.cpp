#include "device/parameter_access.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/bench.h"

namespace orv::device {
namespace {

using test::Bench;

class ParameterAccessTest : public testing::Test {
  protected:
    ParameterAccessTest() { bench.Open(2); }

    Bench bench{"conveyor.json"};
    ParameterAccess access{bench.state};
};

TEST_F(ParameterAccessTest, PutsTheAccessLevelBackOnEveryWayOut) {
    bench.host.Store(0, 0)->Set(330, 0, std::int16_t{1});
    std::int32_t during = -1;
    bench.host.Gate().Before("ParameterTable.GetValue", [&] { during = bench.host.AccessLevel(); });
    EXPECT_EQ(ToInt32(access.Read(330, 0, 3)), 1);
    EXPECT_EQ(during, 3);
    EXPECT_EQ(bench.host.AccessLevel(), 2);
    for (const char* call : {"DeviceRecords.Record", "ParameterTable.FindByNumber", "ParameterTable.GetValue"}) {
        bench.host.Gate().FailNamed(call, 1, -7, L"no");
        EXPECT_THROW(access.Read(330, 0, 3), Error) << call;
        EXPECT_EQ(bench.host.AccessLevel(), 2) << call;
    }
}

TEST_F(ParameterAccessTest, ResolvesNumbersAndPathsAndAnswersEmptyForNeither) {
    EXPECT_EQ(access.Read(999999), Value());
    EXPECT_EQ(access.Read(std::wstring(L"/No/Such")), Value());
    EXPECT_GT(ToInt32(access.Read(std::wstring(L"/SystemInfo/Model/ModelIndex"))), 0);
    const auto before = bench.state.common->calls.Count();
    access.Read(330);
    access.Read(std::wstring(L"/Cluster/Descr"));
    EXPECT_EQ(bench.state.common->calls.Count(), before + 1);
}

TEST_F(ParameterAccessTest, AStringReadSwallowsFailuresAndAByteStringDoesNot) {
    bench.host.Store(0, 0)->Set(6, 0, Bytes{65, 66});
    EXPECT_EQ(access.ReadString(6), L"AB");
    EXPECT_EQ(access.StringToBytes(L"AB"), (Bytes{65, 66}));
    bench.host.Gate().FailNamed("ParameterTable.GetValue", 1, -7, L"no", 2);
    EXPECT_EQ(access.ReadString(6), L"");
    EXPECT_THROW(access.ReadByteString(6), Error);
    // A number where bytes are expected is a failure like any other.
    EXPECT_EQ(access.ReadString(330), L"");
    EXPECT_THROW(access.ReadByteString(330), Error);
}

TEST_F(ParameterAccessTest, WritesAtOnceBetweenItsTwoLogLines) {
    access.Write(bench.host.Store(0, 0)->Name(*bench.host.Store(0, 0)->FindNumber(6)), Bytes{2, 65});
    EXPECT_EQ(bench.host.Store(0, 0)->Get(6), Value(Bytes{2, 65}));
    ASSERT_EQ(bench.platform.debug.lines.size(), 2U);
    EXPECT_THAT(bench.platform.debug.lines[0], testing::StartsWith(L"  Writing /"));
    EXPECT_THAT(bench.platform.debug.lines[0], testing::EndsWith(L" = <STX>A..."));
    EXPECT_EQ(bench.platform.debug.lines[1], L"  Write OK!");
    EXPECT_THROW(access.Write(L"/No/Such", std::int16_t{1}), Error);
    EXPECT_EQ(bench.platform.debug.lines.size(), 3U) << "a write that failed must not be logged as done";
}

TEST_F(ParameterAccessTest, WritesTheElementThatTheEntryNames) {
    const std::wstring entry = access.EntryName(17, 4, bench.state.current);
    EXPECT_THAT(entry, testing::EndsWith(L"[4]"));
    access.Write(entry, Bytes{'x'});
    EXPECT_EQ(bench.host.Store(0, 0)->Get(17, 4), Value(Bytes{'x'}));
    EXPECT_NE(bench.host.Store(0, 0)->Get(17, 3), Value(Bytes{'x'}));
    EXPECT_EQ(access.EntryName(999999, 0, bench.state.current), L"");
}

TEST(DeviceAddress, IsSixteenBitArithmetic) {
    EXPECT_EQ(ParameterAccess::DeviceAddress({1, 3, 0}), 35);
    EXPECT_EQ(ParameterAccess::DeviceAddress({1023, 31, 0}), 32767);
    EXPECT_THROW(ParameterAccess::DeviceAddress({1023, 32, 0}), Error);
    EXPECT_THROW(ParameterAccess::DeviceAddress({1024, -32, 0}), Error);
}

TEST_F(ParameterAccessTest, DescribesWhatAControlNeeds) {
    EXPECT_EQ(access.ElementCount(1), 10);
    EXPECT_EQ(access.ElementCount(999999), 0);
    const ControlSetup setup = access.SetupFor(72);
    ASSERT_TRUE(setup.present);
    ASSERT_GE(setup.description.choices.size(), 3U);
    for (const Choice& choice : setup.description.choices)
        EXPECT_EQ(access.ValueLabel(72, choice.value), choice.label);
    EXPECT_EQ(access.ValueLabel(72, 12345), L"");
    EXPECT_FALSE(access.SetupFor(999999).present);
    EXPECT_GT(access.SetupFor(6).description.maximumStringLength, 0);
}

TEST_F(ParameterAccessTest, ShowsBytesInBothForms) {
    EXPECT_EQ(access.BytesToDisplayText(std::int16_t{5}, BytesForm::Display), L"????");
    EXPECT_EQ(access.BytesToDisplayText(Value(), BytesForm::Hexadecimal), L"????");
    EXPECT_EQ(access.BytesToDisplayText(Bytes{5, 13, 200}, BytesForm::Hexadecimal), L"05 0D C8");
    EXPECT_EQ(access.BytesToDisplayText(Bytes{13, 32, 65, 200}, BytesForm::Display), L"<CR><Space>A<$C8>");
    EXPECT_EQ(access.ByteToDisplayText(200, false, false), L"$C8");
    EXPECT_EQ(access.ByteToDisplayText(32, true, false), L" ");
}

TEST_F(ParameterAccessTest, NamesClusterAndDevice) {
    const sim::SystemDescription tunnel = test::Sample("tunnel.json");
    Bench slaves(tunnel, {}, 2);
    slaves.Open(3);
    ParameterAccess there(slaves.state);
    EXPECT_NE(there.ClusterOrDeviceDescription(0), L"");
    EXPECT_NE(there.ClusterOrDeviceDescription(1), there.ClusterOrDeviceDescription(2));
    EXPECT_EQ(slaves.state.current.device, 2);
}

} // namespace
} // namespace orv::device
