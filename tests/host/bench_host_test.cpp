#include <gtest/gtest.h>

#include "host/sim/bench_host.h"
#include "host/sim/local_service.h"
#include "sim_fixture.h"
#include "text/error.h"

namespace orv::sim::testing {
namespace {

template <typename Action>
std::int32_t ErrorOf(const Action& action) {
    try {
        action();
        return 0;
    } catch (const Error& error) {
        return error.Number();
    }
}

class BenchHostTest : public ::testing::Test {
  protected:
    BenchHost host_{SmallSystem()};
    std::shared_ptr<device::Configuration> configuration_ = host_.CreateConfigurationManager()->GetConfiguration();
    std::shared_ptr<device::ParameterTable> table_ =
        configuration_->GetDeviceRecords()->Record(1, 2)->GetParameterTable(0);
};

TEST_F(BenchHostTest, NamesOfEntriesLeadBackToTheirElements) {
    const device::EntryHandle flags = table_->FindByNumber(10);
    EXPECT_EQ(table_->EntryName(flags, 2, 3), L"/Flags[2]");
    EXPECT_EQ(table_->EntryName(table_->FindByNumber(11), 0, 3), L"/Count");
    EXPECT_EQ(ErrorOf([&] { table_->EntryName(flags, 3, 3); }), 9);

    const device::EntryHandle second = table_->FindByPath(L"/Flags[1]", 3);
    table_->SetValue(second, std::wstring(L"-5"));
    EXPECT_EQ(table_->GetValue(flags, 1), device::Value(std::int16_t{-5}));
    EXPECT_EQ(table_->GetValue(second, 0), device::Value(std::int16_t{-5}));
    EXPECT_EQ(table_->GetValue(flags, 0), device::Value(std::int16_t{1}));
    EXPECT_EQ(table_->EntryName(second, 0, 3), L"/Flags[1]");
    EXPECT_NE(table_->FindByPath(L"/Count[0]", 3), 0);
    for (const wchar_t* unknown : {L"", L"/Nothing", L"/Flags[3]", L"/Flags[]", L"/Flags[-1]", L"/Flags[1", L"]",
                                   L"/Flags[1]]", L"/Flags[99999999999]"})
        EXPECT_EQ(table_->FindByPath(unknown, 3), 0) << ToUtf8(unknown);
}

TEST_F(BenchHostTest, LevelsHideEntries) {
    const device::EntryHandle raw = table_->FindByNumber(14);
    EXPECT_EQ(table_->EntryName(raw, 0, 2), L"");
    EXPECT_EQ(table_->FindByPath(L"/Raw", 2), 0);
    EXPECT_EQ(table_->FindByPath(L"/Raw", 3), raw);
    configuration_->SetAccessLevel(2);
    EXPECT_EQ(table_->FindByNumber(14), 0);
    EXPECT_NE(table_->FindByNumber(12), 0);
    EXPECT_EQ(table_->FindByNumber(999), 0);
}

TEST_F(BenchHostTest, KeepsTheOldValueWhenTheNewOneDoesNotFit) {
    const device::EntryHandle level = table_->FindByNumber(12);
    EXPECT_EQ(ErrorOf([&] { table_->SetValue(level, std::int32_t{256}); }), 6);
    EXPECT_EQ(ErrorOf([&] { table_->SetValue(level, Bytes{1}); }), 13);
    EXPECT_EQ(table_->GetValue(level, 0), device::Value(std::uint8_t{200}));
    EXPECT_EQ(ErrorOf([&] { table_->GetValue(0, 0); }), 5);
    EXPECT_EQ(ErrorOf([&] { table_->GetValue(INT32_MAX, 0); }), 5);
    EXPECT_EQ(ErrorOf([&] { table_->GetValue(-1, 0); }), 5);
}

TEST_F(BenchHostTest, EveryObjectFailsOnRequest) {
    host_.Gate().FailNamed("ParameterTable.SetInteractiveMode", 1, static_cast<std::int32_t>(0x8004040A), L"in use");
    EXPECT_EQ(ErrorOf([&] { table_->SetInteractiveMode(false); }), static_cast<std::int32_t>(0x8004040A));
    EXPECT_TRUE(host_.TableInteractive()) << "a failed call changes nothing";
    EXPECT_EQ(ErrorOf([&] { configuration_->GetDeviceRecords()->Record(1, 3); }), 9);
    EXPECT_EQ(ErrorOf([&] { configuration_->GetMibSapService(); }), 91);
    EXPECT_EQ(ErrorOf([&] { host_.CreateSupportObject()->ComboValue(1); }), 5);
    EXPECT_EQ(ErrorOf([&] { host_.CreateSupportObject()->TextToBytes(L"a", 128, 1031); }), 5);
    EXPECT_EQ(ErrorOf([&] { host_.CreateSupportObject()->BytesToText({}, 128, 1033); }), 5);
}

TEST_F(BenchHostTest, ServicePassesTheGateWithoutItsPassword) {
    const auto device = std::make_shared<SimDevice>(SmallDevice());
    host_.SetService(std::make_shared<LocalMibSapService>(std::vector{device}, nullptr));
    host_.Gate().KeepLog(true);
    const auto events = std::make_shared<EventLog>();
    const auto service = configuration_->GetMibSapService();
    service->Connect(34, events);
    service->StartSession(L"2", L"RRNN");
    EXPECT_EQ(events->events, (Events{"connected", "answer OK"}));
    for (const CallGate::Call& call : host_.Gate().Log())
        EXPECT_EQ(call.arguments.find(L"RRNN"), std::wstring::npos);
    EXPECT_EQ(host_.Gate().Count("MibSapService.StartSession"), 1);
}

TEST_F(BenchHostTest, ConfigurationsAreCountedUntilReleased) {
    const auto manager = host_.CreateConfigurationManager();
    const auto second = manager->GetConfiguration();
    EXPECT_EQ(host_.OpenConfigurations(), 2);
    manager->ReleaseConfiguration(second);
    EXPECT_EQ(ErrorOf([&] { manager->ReleaseConfiguration(second); }), 5) << "released twice";
    EXPECT_EQ(host_.OpenConfigurations(), 1);
}

TEST_F(BenchHostTest, ContentsHoldWhatWasWritten) {
    table_->SetValue(table_->FindByPath(L"/Raw[1]", 3), Bytes{1, 2});
    SystemDescription expected = SmallSystem();
    expected.devices[0].parameters[4].values[1] = Bytes{1, 2};
    EXPECT_EQ(host_.Contents(), expected);
}

} // namespace
} // namespace orv::sim::testing
