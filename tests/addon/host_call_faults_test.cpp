// Each host call of a whole life made to fail in turn. What the user was told varies; what must hold does not.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

#include "tests/addon/session.h"

namespace orv::addon {
namespace {

using test::Session;

constexpr std::int32_t kFailure = static_cast<std::int32_t>(0x80004005);

void Live(Session& session) {
    session.Start();
    session.Select(L"FormatDef");
    // A life whose load failed has no node to select and nothing to edit; the rest of it runs all the same.
    if (session.Widget(L"fraFormatDef").EffectivelyVisible()) {
        session.Type(L"mbeHeader", L"\x02");
        session.Type(L"mbeTerminator", L"\r\n");
    }
    session.Press(L"cmdApply");
    session.addOn->CurrentDeviceIndex(0);
    session.addOn->Activate();
    session.Type(L"mbeSeparator", L"|");
    session.Press(L"cmdOK");
    session.Press(L"cmdCancel");
}

/// What has to hold after every life, whatever failed in it.
void CheckRestored(Session& session, bool configurationSwitch) {
    EXPECT_EQ(session.bench.host.AccessLevel(), 3) << "access level";
    EXPECT_EQ(session.bench.host.ConfigurationInteractive(), configurationSwitch) << "interactive switch";
    EXPECT_TRUE(session.container.enabled) << "control";
    EXPECT_TRUE(session.container.visible) << "control";
    EXPECT_EQ(session.bench.state.cache, nullptr);
    EXPECT_EQ(session.bench.platform.pump.Depth(), 0);
    for (const auto& box : session.Boxes())
        EXPECT_TRUE(box.text.starts_with(L"AddOnControl.") || box.title == L"Error") << "a box that names nobody";
}

/// Calls whose own failure is what cannot be put right: the restore itself was refused, or is swallowed by request.
bool IsRestore(const std::string& name) {
    return name == "Configuration.SetAccessLevel" || name == "Configuration.SetInteractiveMode" ||
           name == "SupportObject.HideProgress";
}

std::vector<std::string> CallsOfALife(std::int16_t device, bool configurationSwitch) {
    Session session(device == 0 ? "tiny.json" : "tunnel.json", {}, device);
    session.bench.host.SetConfigurationInteractive(configurationSwitch);
    session.bench.host.Gate().KeepLog(true);
    Live(session);
    session.addOn->Terminate();
    std::vector<std::string> names;
    for (const auto& call : session.bench.host.Gate().Log())
        names.push_back(call.name);
    return names;
}

/// Most calls of a life are the same few of a read or a write again and again. Unless ORV_EXHAUSTIVE is set, the first
/// of each name are taken and of the rest every so many-th, which meets each place of the loops sooner or later.
std::vector<std::size_t> Picked(const std::vector<std::string>& calls) {
    constexpr int kOfEachName = 12;
    constexpr std::size_t kStride = 23;
    std::map<std::string, int> seen;
    std::vector<std::size_t> picked;
    for (std::size_t k = 1; k <= calls.size(); ++k)
        if (++seen[calls[k - 1]] <= kOfEachName || k % kStride == 0 || std::getenv("ORV_EXHAUSTIVE") != nullptr)
            picked.push_back(k);
    return picked;
}

class HostCallFaults : public testing::TestWithParam<bool> {};

TEST_P(HostCallFaults, EachCallOfALifeInTurn) {
    const bool configurationSwitch = GetParam();
    const std::vector<std::string> calls = CallsOfALife(0, configurationSwitch);
    ASSERT_GT(calls.size(), 300U);
    const std::vector<std::size_t> picked = Picked(calls);
    int told = 0;
    for (const std::size_t k : picked) {
        SCOPED_TRACE(testing::Message() << "call " << k << " " << calls[k - 1]);
        Session session("tiny.json");
        session.bench.host.SetConfigurationInteractive(configurationSwitch);
        session.bench.host.Gate().FailCall(static_cast<std::int64_t>(k), kFailure, L"the host refused");
        Live(session);
        session.addOn->Terminate();
        EXPECT_TRUE(session.addOn->Terminated());
        EXPECT_FALSE(session.bench.host.Gate().FailurePending()) << "the life took another way before the failure";
        if (!IsRestore(calls[k - 1]))
            CheckRestored(session, configurationSwitch);
        if (calls[k - 1] != "SupportObject.HideProgress") {
            EXPECT_FALSE(session.bench.host.Progress().shown);
        }
        EXPECT_EQ(session.bench.host.OpenConfigurations(),
                  calls[k - 1] == "ConfigurationManager.ReleaseConfiguration" ? 1 : 0);
        told += session.Boxes().empty() ? 0 : 1;
    }
    // Most failures are told; the silent ones are reads of strings, ornaments and the releases of the end.
    EXPECT_GT(told, static_cast<int>(picked.size()) / 3);
}

INSTANTIATE_TEST_SUITE_P(BothSwitches, HostCallFaults, testing::Bool());

TEST(HostCallFaultsNamed, SayWhoFailed) {
    const struct {
        const char* call;
        const wchar_t* box;
    } cases[] = {
        {"HostFactory.CreateConfigurationManager", L"AddOnControl.UserControl_Show"},
        {"ConfigurationManager.GetConfiguration", L"AddOnControl.UserControl_Show"},
        {"HostApplication.SetCaption", L"AddOnControl.UserControl_Show"},
        {"DeviceRecords.Record", L"AddOnControl.IAddOnGUI_Activate"},
        {"HostApplication.PrepareProgress", L"AddOnControl.cmdApply_Click"},
        {"SupportObject.CommitPanel", L"AddOnControl.cmdApply_Click"},
        {"Configuration.GetMibSapService", L"AddOnControl.cmdApply_Click"},
        {"SupportObject.SetProgress", L"AddOnControl.cmdApply_Click"},
        {"HostApplication.CloseAddOn", L"AddOnControl.cmdOK_Click"},
    };
    for (const auto& c : cases) {
        Session session;
        session.bench.host.Gate().FailNamed(c.call, 1, kFailure, L"the host refused");
        Live(session);
        ASSERT_FALSE(session.Boxes().empty()) << c.call;
        EXPECT_EQ(session.Boxes()[0].text, std::wstring(c.box) + L"\n-2147467259: the host refused") << c.call;
    }
}

} // namespace
} // namespace orv::addon
