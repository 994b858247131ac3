// Each host call of a whole life made to fail in turn. What the user was told varies; what must hold does not.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>

#include "tests/addon/whole_life.h"

namespace orv::addon {
namespace {

using test::Session;

constexpr std::int32_t kFailure = static_cast<std::int32_t>(0x80004005);

/// What has to hold after every life, whatever failed in it.
void CheckRestored(Session& session, bool configurationSwitch) {
    EXPECT_EQ(session.bench.host.AccessLevel(), 3) << "access level";
    EXPECT_EQ(session.bench.host.ConfigurationInteractive(), configurationSwitch) << "interactive switch";
    EXPECT_TRUE(session.container.enabled) << "control";
    EXPECT_TRUE(session.container.visible) << "control";
    EXPECT_EQ(session.bench.state.cache, nullptr);
    EXPECT_EQ(session.bench.platform.pump.Depth(), 0);
    for (const auto& box : session.Boxes()) {
        if (box.icon != platform::Icon::Critical || box.title == L"Error")
            continue;
        bool named = false;
        for (const wchar_t* owner : {L"AddOnControl.", L"frmTransports.", L"MBEdit.", L"Error in "})
            named = named || box.text.starts_with(owner);
        EXPECT_TRUE(named) << "a box that names nobody: " << std::string(box.text.begin(), box.text.end());
    }
}

/// Calls whose own failure is what cannot be put right: the restore itself was refused, or is swallowed by request.
bool IsRestore(const std::string& name) {
    return name == "Configuration.SetAccessLevel" || name == "Configuration.SetInteractiveMode" ||
           name == "SupportObject.HideProgress";
}

/// From Initialize to Terminate.
void Live(Session& session) {
    test::WholeLife(session).Run();
    session.addOn->Terminate();
}

std::vector<std::string> CallsOfALife(bool configurationSwitch) {
    Session session;
    session.bench.host.SetConfigurationInteractive(configurationSwitch);
    session.bench.host.Gate().KeepLog(true);
    Live(session);
    std::vector<std::string> names;
    for (const auto& call : session.bench.host.Gate().Log())
        names.push_back(call.name);
    return names;
}

/// Most calls of a life are the same few of a read or a write again and again. Unless ORV_EXHAUSTIVE is set, the first
/// of each name are taken and of the rest every so many-th, which meets each place of the loops sooner or later.
std::vector<std::size_t> Picked(const std::vector<std::string>& calls) {
    constexpr int kOfEachName = 5;
    constexpr std::size_t kStride = 61;
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
    const std::vector<std::string> calls = CallsOfALife(configurationSwitch);
    ASSERT_GT(calls.size(), 300U);
    const std::vector<std::size_t> picked = Picked(calls);
    int told = 0;
    for (const std::size_t k : picked) {
        SCOPED_TRACE(testing::Message() << "call " << k << " " << calls[k - 1]);
        Session session("tiny.json");
        session.bench.host.SetConfigurationInteractive(configurationSwitch);
        session.bench.host.Gate().FailCall(static_cast<std::int64_t>(k), kFailure, L"the host refused");
        Live(session);
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
        const auto told =
            std::find_if(session.Boxes().begin(), session.Boxes().end(),
                         [](const platform::MessageBox& box) { return box.icon == platform::Icon::Critical; });
        ASSERT_NE(told, session.Boxes().end()) << c.call;
        EXPECT_EQ(told->text, std::wstring(c.box) + L"\n-2147467259: the host refused") << c.call;
    }
}

} // namespace
} // namespace orv::addon
