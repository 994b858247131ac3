#include "host/app/orvhost/workspace.h"

#include <gtest/gtest.h>

#include "host/sim/portable_platform.h"

namespace orv::host {
namespace {

struct Sink final : device::MibSapEvents {
    void Connected() override { ++connected; }
    void Error(std::int32_t number) override { code = number; }
    void ResponseReceived(const std::wstring&) override { ++responses; }
    int connected = 0;
    int responses = 0;
    std::int32_t code = 0;
};

struct WorkspaceTest : testing::Test {
    sim::PortablePump pump;
    std::vector<std::wstring> traffic;
    std::filesystem::path sample = ORV_SOURCE_DIR "/samples/tiny.json";

    Workspace Open(const Options& options) {
        return Workspace(options, sample, pump, [this](std::wstring_view line) { traffic.emplace_back(line); });
    }
};

TEST_F(WorkspaceTest, HostAndDeviceHoldTheirOwnValues) {
    auto workspace = Open({});
    EXPECT_EQ(workspace.HostValue(0, 0, 7, 0), L"0D0A");
    workspace.Bench()->Store(0, 0)->Set(7, 0, Bytes{0x03});
    EXPECT_EQ(workspace.HostValue(0, 0, 7, 0), L"03");
    EXPECT_EQ(workspace.DeviceValue(0, 0, 7, 0), L"0D0A") << "what the configuration holds is not on the device yet";
    EXPECT_THROW(workspace.HostValue(0, 0, 7, 1), Error);
    EXPECT_THROW(workspace.HostValue(0, 5, 7, 0), Error);
    EXPECT_THROW(workspace.DeviceValue(1, 0, 7, 0), Error);
}

TEST_F(WorkspaceTest, OptionsSetLevelAndFaults) {
    Options options;
    options.level = 1;
    options.faults.push_back({"Configuration.AccessLevel", 2, 5, L"asked for"});
    auto workspace = Open(options);
    EXPECT_EQ(workspace.Bench()->AccessLevel(), 1);
    const auto configuration = workspace.Bench()->CreateConfigurationManager()->GetConfiguration();
    EXPECT_EQ(configuration->AccessLevel(), 1);
    EXPECT_THROW(configuration->AccessLevel(), Error);
    EXPECT_EQ(configuration->AccessLevel(), 1);
}

TEST_F(WorkspaceTest, ACutConnectionIsToldOnceAndCanBeMadeAnew) {
    auto workspace = Open({});
    EXPECT_FALSE(workspace.Service().Drop()) << "nothing to cut";
    const auto sink = std::make_shared<Sink>();
    workspace.Service().Connect(0, sink);
    pump.SetLimit(std::chrono::seconds(5));
    pump.PumpUntil([&] { return sink->connected == 1; });
    EXPECT_TRUE(workspace.Service().Drop());
    EXPECT_NE(sink->code, 0);
    EXPECT_FALSE(workspace.Service().Drop());
    workspace.Service().Connect(0, sink);
    pump.PumpUntil([&] { return sink->connected == 2; });
    workspace.Service().Disconnect();
    EXPECT_FALSE(workspace.Service().Drop()) << "a closed connection cannot be lost";
}

TEST_F(WorkspaceTest, SavingNeverNamesAFileThatItCouldNotWrite) {
    auto workspace = Open({});
    EXPECT_THROW(workspace.Save(std::filesystem::path("no such folder") / "x.json"), sim::FileError);
    EXPECT_EQ(workspace.File(), sample);
    EXPECT_THROW(Workspace(Options{}, "missing.json", pump, {}), sim::FileError);
}

} // namespace
} // namespace orv::host
