// What a save and a transaction ask of host and device, in which order, and what is left out where one stops.
#include <gtest/gtest.h>

#include <optional>

#include "device/mib_param_cache.h"
#include "device/mibsap_monitor.h"
#include "tests/addon/ordered_session.h"

namespace orv::addon {
namespace {

using test::OrderedSession;

const std::string kPrepare = R"(HostApplication.PrepareProgress 0
SupportObject.ResetProgress
SupportObject.SetProgressOwner 77
Configuration.InteractiveMode
)";
const std::string kSwitchOff = "Configuration.SetInteractiveMode 0\n";
const std::string kSwitchOn = "Configuration.SetInteractiveMode 1\n";
const std::string kTable = R"(Configuration.GetDeviceRecords
DeviceRecords.Record 0, 0
DeviceRecord.GetParameterTable 0
)";
const std::string kTableOff = kTable + "ParameterTable.SetInteractiveMode 0\n";
const std::string kTableOn = kTable + "ParameterTable.SetInteractiveMode 1\n";
const std::string kShow = R"(SupportObject.ShowProgress Saving parameters..., Output Format Addon
Configuration.GetMibSapService
)";
const std::string kConnect = R"(Log MIBSAP.Connect
MibSapService.Connect 0
)";
const std::string kStart = "MibSapService.StartSession 3, ***\n";
const std::string kAnswer = "Log (Receive) MIBSAP Response OK\n";
const std::string kSetFirst = R"(Log (Send) MIBSAP Set /OutputFormat/Advanced = 1
MibSapService.SetNumericEntry /OutputFormat/Advanced, 1
)";
const std::string kMirrorFirst = "Log   Writing /OutputFormat/Advanced = 1...\n" + kTable +
                                 R"(ParameterTable.FindByPath /OutputFormat/Advanced, 3
ParameterTable.SetValue 1
Log   Write OK!
)";
const std::string kSetSecond = R"(Log (Send) MIBSAP Set /OutputFormat/Header = A
SupportObject.BytesToText 41, 64, 1033
MibSapService.SetStringEntry /OutputFormat/Header, A
)";
const std::string kMirrorSecond = "Log   Writing /OutputFormat/Header = A...\n" + kTable +
                                  R"(ParameterTable.FindByPath /OutputFormat/Header, 3
ParameterTable.SetValue A
Log   Write OK!
)";
const std::string kHalf = "SupportObject.SetProgress 50.000000\n";
const std::string kWhole = "SupportObject.SetProgress 100.000000\n";
const std::string kPleaseWait = "SupportObject.SetProgressText Please wait...\n";
const std::string kEnd = R"(Log (Send) MIBSAP EndSession
MibSapService.EndSession P
)";
const std::string kDisconnect = R"(Log MIBSAP Disconnect
MibSapService.Disconnect
)";
const std::string kSettle = R"(SupportObject.Settle 7.000000
MessagePump.ProcessPending
)";
const std::string kHide = "SupportObject.HideProgress\n";

std::string Refused(int code) {
    return "Log (Receive) MIBSAP ERROR " + std::to_string(code) + "\n";
}

const std::string kOpened = kPrepare + kSwitchOff + kShow + kConnect + kStart + kAnswer;
const std::string kWritten = kSetFirst + kAnswer + kMirrorFirst + kHalf + kSetSecond + kAnswer + kMirrorSecond + kWhole;
const std::string kClosed = kDisconnect + kSettle + kHide;

/// A save of a number and a text.
struct Saving : OrderedSession {
    explicit Saving(bool configurationInteractive) {
        bench.host.SetConfigurationInteractive(configurationInteractive);
        Begin();
        state.Support(); // made once, before the first save
        cache.emplace(state);
        cache->Add(330, device::WireType::Int16, std::int16_t{1});
        cache->Add(6, device::WireType::ByteArray, Bytes{'A'});
    }
    std::optional<device::MIBParamCache> cache;
};

TEST(SaveOrder, GoesAsFarAsTheDeviceLetsIt) {
    std::string refusedFiveTimes = kPrepare + kSwitchOff + kShow + "Log MIBSAP.Connect\n";
    for (int attempt = 1; attempt <= 5; ++attempt)
        refusedFiveTimes += "MibSapService.Connect 0\n" + Refused(500 + attempt) + "Log MIBSAP.Connect: Retry #" +
                            std::to_string(attempt) + "\n";
    const struct {
        const char* what;
        std::deque<int> answers; ///< to connection, start, two values and end
        std::size_t written;
        std::int32_t sapError;
        std::int32_t transportError;
        std::string calls;
    } cases[] = {
        {"all of it", {}, 2, 0, 0, kOpened + kWritten + kPleaseWait + kEnd + kAnswer + kClosed + kTableOn + kSwitchOn},
        {"no connection", {501, 502, 503, 504, 505}, 0, 0, 505, refusedFiveTimes + kHide + kSwitchOn},
        {"no session",
         {0, 310},
         0,
         0,
         310,
         kPrepare + kSwitchOff + kShow + kConnect + kStart + Refused(310) + kDisconnect + kHide + kSwitchOn},
        {"the second value refused",
         {0, 0, 0, 311},
         1,
         311,
         0,
         kOpened + kSetFirst + kAnswer + kMirrorFirst + kHalf + kSetSecond + Refused(311) +
             "Log Error 311 in SetEntry - /OutputFormat/Header=A\n" + kClosed + kSwitchOn},
        {"the end refused",
         {0, 0, 0, 0, 312},
         2,
         0,
         312,
         kOpened + kWritten + kPleaseWait + kEnd + Refused(312) + "Log 312:Error in EndSession\n" + kClosed + kTableOn +
             kSwitchOn},
        {"the end put off twice",
         {0, 0, 0, 0, 309, 308},
         2,
         0,
         0,
         kOpened + kWritten + kPleaseWait + kEnd + Refused(309) + "MibSapService.EndSession P\n" + Refused(308) +
             "MibSapService.EndSession P\n" + kAnswer + kClosed + kTableOn + kSwitchOn},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Saving saving(true);
        saving.BeginList(c.answers);
        EXPECT_EQ(saving.cache->Save(true, false), c.written == 2);
        EXPECT_EQ(saving.Calls(), c.calls);
        EXPECT_EQ(saving.cache->WrittenCount(), c.written);
        EXPECT_EQ(saving.cache->LastSAPError(), c.sapError);
        EXPECT_EQ(saving.state.common->lastTransportError, c.transportError);
        EXPECT_EQ(saving.cache->EndError(), c.written == 2 ? c.transportError : 0);
    }
}

TEST(SaveOrder, UsesTheTablesSwitchWhereTheConfigurationsIsOff) {
    const struct {
        const char* what;
        std::uint32_t refusal;
        std::string calls;
    } cases[] = {
        {"off", 0, kTableOff + kShow},
        {"refused with a reason", 0x8004040A, kTableOff + "MessageBoxes.Show Error: in use\n"},
        {"refused without a word", 0x8004040B, kTableOff},
        {"failed", 0x80004005, kTableOff + "MessageBoxes.Show Error: Could not set Interactive Mode (in use)\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Saving saving(false);
        saving.BeginList({310, 310, 310, 310, 310});
        if (c.refusal != 0)
            saving.gate.FailNamed("ParameterTable.SetInteractiveMode", 1, static_cast<std::int32_t>(c.refusal),
                                  L"in use");
        EXPECT_FALSE(saving.cache->Save(true, false));
        const std::string calls = saving.Calls();
        EXPECT_EQ(calls.substr(0, calls.find("Log MIBSAP.Connect")), kPrepare + c.calls);
    }
}

TEST(SaveOrder, AHostThatRefusesAValueStopsTheSaveBeforeItCounts) {
    Saving saving(true);
    saving.BeginList();
    saving.gate.FailNamed("ParameterTable.SetValue", 2, -7, L"no");
    EXPECT_THROW(saving.cache->Save(true, false), Error);
    const std::string written = kMirrorSecond.substr(0, kMirrorSecond.find("Log   Write OK!"));
    EXPECT_EQ(saving.Calls(), kOpened + kSetFirst + kAnswer + kMirrorFirst + kHalf + kSetSecond + kAnswer + written +
                                  kDisconnect + kHide + kSwitchOn);
    EXPECT_EQ(saving.cache->WrittenCount(), 1U);
}

TEST(SaveOrder, TheConfigurationAloneNeedsNoSwitchAndNoDevice) {
    Saving saving(true);
    saving.BeginList();
    EXPECT_TRUE(saving.cache->Save(false, false));
    const std::string prepared = kPrepare.substr(0, kPrepare.find("Configuration.InteractiveMode"));
    EXPECT_EQ(saving.Calls(), prepared + kMirrorFirst + kMirrorSecond);
}

TEST(SaveOrder, AnotherSaveForgetsTheCodeOfTheOneBefore) {
    Saving saving(true);
    saving.BeginList({0, 0, 311});
    EXPECT_FALSE(saving.cache->Save(true, false));
    EXPECT_EQ(saving.cache->LastSAPError(), 311);
    saving.BeginList({1, 1, 1, 1, 1});
    EXPECT_FALSE(saving.cache->Save(true, false));
    EXPECT_EQ(saving.cache->LastSAPError(), 0) << "the transport error would not be told";
    EXPECT_EQ(saving.Calls({"Configuration.GetMibSapService"}), "") << "asked for once and kept";
}

const std::string kGet = R"(Log (Send) MIBSAP Get E
MibSapService.GetEntry E
)";
const std::string kSet = R"(Log (Send) MIBSAP Set E = 7
MibSapService.SetNumericEntry E, 7
)";
const std::string kValidate = R"(Log (Send) MIBSAP EndSession
MibSapService.EndSession V
)";
const std::string kSession = kConnect + kStart + kAnswer;

std::string PutOff(const std::string& request) {
    std::string calls = Refused(308);
    for (int failures = 2; failures <= 6; ++failures)
        calls += request + Refused(failures % 2 == 0 ? 309 : 308);
    return calls;
}

TEST(TransactionOrder, ReadsOneEntry) {
    const struct {
        std::deque<int> answers; ///< to connection, start and request
        bool good;
        std::string calls;
    } cases[] = {
        {{}, true, kSession + kGet + "Log (Receive) MIBSAP Response 42\n" + kDisconnect},
        {{0, 0, 309, 308},
         true,
         kSession + kGet + Refused(309) + "MibSapService.GetEntry E\n" + Refused(308) + "MibSapService.GetEntry E\n" +
             "Log (Receive) MIBSAP Response 42\n" + kDisconnect},
        {{0, 0, 308, 309, 308, 309, 308, 309},
         false,
         kSession + kGet + PutOff("MibSapService.GetEntry E\n") + kDisconnect},
        {{0, 0, 310}, false, kSession + kGet + Refused(310) + kDisconnect},
        {{0, 310}, false, kConnect + kStart + Refused(310) + kDisconnect},
    };
    for (const auto& c : cases) {
        OrderedSession session;
        session.Begin();
        session.state.mibSap = session.state.configuration->GetMibSapService();
        session.BeginList(c.answers);
        device::COrvMIBSAPMonitor monitor(session.state, session.state.current);
        EXPECT_EQ(monitor.GetData(L"E").has_value(), c.good);
        EXPECT_EQ(session.Calls(), c.calls);
        EXPECT_EQ(session.state.common->lastTransportError, 0) << "a read leaves it alone";
    }
}

TEST(TransactionOrder, WritesOneEntry) {
    const struct {
        std::deque<int> answers; ///< to connection, start, request and end
        bool good;
        std::int32_t transportError;
        std::string calls;
    } cases[] = {
        {{}, true, 0, kSession + kSet + kAnswer + kValidate + kAnswer + kDisconnect},
        {{0, 310}, false, 310, kConnect + kStart + Refused(310) + kDisconnect},
        {{0, 0, 311},
         false,
         0,
         kSession + kSet + Refused(311) + "Log Error 311 in SetEntry - E=7\n" + kValidate + kAnswer + kDisconnect},
        {{0, 0, 309},
         true,
         0,
         kSession + kSet + Refused(309) + "Log SetEntry failed (309). Retry:1\nMibSapService.SetNumericEntry E, 7\n" +
             kAnswer + kValidate + kAnswer + kDisconnect},
        {{0, 0, 0, 308, 309, 308, 309, 308, 309},
         false,
         309,
         kSession + kSet + kAnswer + kValidate + PutOff("MibSapService.EndSession V\n") + kDisconnect},
    };
    for (const auto& c : cases) {
        OrderedSession session;
        session.Begin();
        session.state.mibSap = session.state.configuration->GetMibSapService();
        session.BeginList(c.answers);
        device::COrvMIBSAPMonitor monitor(session.state, session.state.current);
        EXPECT_EQ(monitor.SetData(L"E", std::int16_t{7}), c.good);
        EXPECT_EQ(session.Calls(), c.calls);
        EXPECT_EQ(session.state.common->lastTransportError, c.transportError);
    }
}

} // namespace
} // namespace orv::addon
