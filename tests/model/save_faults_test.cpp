// For each write of a save: refused for good, refused for the moment, refused until the client gives up, connection
// dropped. Device, configuration, messages, codes and switches are compared with a save that nothing disturbed.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "device/mib_param_cache.h"
#include "host/sim/device_server.h"
#include "host/sim/tcp_service.h"
#include "model/out_format_config.h"
#include "tests/support/bench.h"

namespace orv::model {
namespace {

using device::Value;

void Edit(OutFormatConfig& root) {
    root.Advanced(!root.Advanced());
    root.CodeID(root.CodeID() == 1 ? 2 : 1);
    root.GlobNoReadMsgType(root.GlobNoReadMsgType() == 0 ? 1 : 0);
    for (int i = 0; i < kCustomCodeIDCount; ++i)
        if (root.CustomCodeIDDefined(i))
            root.CustomCodeID(i, L"new");
    root.StandardFormat().Header(L"\x02head");
    root.StandardFormat().Terminator(L"\r\n");
    root.StandardFormat().CodeSeparator(L""); // the device may forgive itself a refusal to clear a text
    CodeDef& code = *root.Codes().Code(1);
    code.MinLength(7);
    code.NoReadString(L"gone");
    code.MaxicodeEnable(6, true);
    AdvancedFormat& format = root.AdvancedFormats().Item(1);
    format.Terminator(L"\r");
    format.OutItems().Item(1).CodeNumber(0);
    format.OutItems().Item(2).StringText(L"");
}

struct Write {
    std::wstring entry;
    Value before;
    Value after;
};

Value In(const sim::ParameterStore& store, const std::wstring& entry) {
    return store.Get(*store.FindName(entry));
}

/// What an undisturbed save writes, in order.
std::vector<Write> Undisturbed() {
    test::Bench bench("tiny.json");
    bench.Open(3);
    OutFormatConfig root(bench.state);
    root.Reload();
    Edit(root);
    const sim::ParameterStore before = *bench.host.Store(0, 0);
    EXPECT_TRUE(root.Save(false));
    std::vector<Write> writes;
    for (const std::wstring& line : bench.platform.debug.lines)
        if (line.starts_with(L"  Writing ")) {
            const std::wstring entry = line.substr(10, line.find(L" = ") - 10);
            writes.push_back({entry, In(before, entry), In(*bench.host.Store(0, 0), entry)});
        }
    return writes;
}

enum class Fault { Refused, Transient, GivesUp, Dropped };

struct Expected {
    bool saved = false;
    std::int32_t sapError = 0;
    std::size_t onDevice = 0;
    std::size_t inConfiguration = 0;
};

sim::FaultPlan PlanFor(Fault fault, const std::wstring& entry, std::int64_t requestsBefore) {
    sim::FaultPlan plan;
    const auto entryFault = [&](std::int32_t code, sim::FaultCount times) {
        plan.sets.push_back({entry, code, times});
    };
    switch (fault) {
    case Fault::Refused:
        entryFault(310, sim::kAlways);
        break;
    case Fault::Transient:
        entryFault(309, 4);
        break;
    case Fault::GivesUp:
        entryFault(308, sim::kAlways);
        break;
    case Fault::Dropped:
        plan.dropAfter = requestsBefore;
        break;
    }
    return plan;
}

Expected ExpectedOf(Fault fault, std::size_t k, const std::vector<Write>& writes) {
    const bool empty = writes[k].after == Value(Bytes{}) || writes[k].after == Value(std::wstring());
    if (fault == Fault::Transient)
        return {true, 0, writes.size(), writes.size()};
    if (fault == Fault::GivesUp && empty)
        return {true, 0, writes.size(), writes.size()}; // counted as a success, though the device refused it
    const std::int32_t code = fault == Fault::Refused   ? 310
                              : fault == Fault::GivesUp ? 308
                                                        : sim::device_code::kConnectionLost;
    return {false, code, k, k};
}

/// Answers how many requests come before the first write.
std::int64_t RequestsBeforeWrites(std::size_t writes) {
    test::Bench bench("tiny.json");
    bench.Open(3);
    OutFormatConfig root(bench.state);
    root.Reload();
    Edit(root);
    EXPECT_TRUE(root.Save(true));
    return bench.device->AnsweredCount() - static_cast<std::int64_t>(writes) - 1;
}

void CheckValues(const std::vector<Write>& writes, const Expected& expected, Fault fault, std::size_t k,
                 const sim::ParameterStore& device, const sim::ParameterStore& host) {
    for (std::size_t i = 0; i < writes.size(); ++i) {
        const bool forgiven = fault == Fault::GivesUp && expected.saved && i == k;
        EXPECT_EQ(In(device, writes[i].entry), i < expected.onDevice && !forgiven ? writes[i].after : writes[i].before)
            << i;
        EXPECT_EQ(In(host, writes[i].entry), i < expected.inConfiguration ? writes[i].after : writes[i].before) << i;
    }
}

void CheckMessage(const test::Bench& bench, const Expected& expected) {
    if (expected.saved) {
        EXPECT_TRUE(bench.platform.boxes.shown.empty());
        return;
    }
    ASSERT_EQ(bench.platform.boxes.shown.size(), 1U);
    EXPECT_EQ(bench.platform.boxes.shown[0].title, L"Error");
    EXPECT_EQ(bench.platform.boxes.shown[0].icon, platform::Icon::Warning);
    EXPECT_EQ(bench.platform.boxes.shown[0].text,
              L"Couldn't save parameters to MIB!\nMIBSAP Error " + std::to_wstring(expected.sapError));
}

void RunOne(Fault fault, std::size_t k, bool configurationSwitch, const std::vector<Write>& writes,
            std::int64_t requestsBefore) {
    SCOPED_TRACE(testing::Message() << "fault " << static_cast<int>(fault) << " at write " << k << " switch "
                                    << configurationSwitch);
    test::Bench bench("tiny.json", PlanFor(fault, writes[k].entry, requestsBefore + static_cast<std::int64_t>(k)));
    bench.Open(3);
    bench.host.SetConfigurationInteractive(configurationSwitch);
    OutFormatConfig root(bench.state);
    root.Reload();
    Edit(root);
    const Expected expected = ExpectedOf(fault, k, writes);
    EXPECT_EQ(root.Save(true), expected.saved);
    CheckValues(writes, expected, fault, k, bench.device->Store(), *bench.host.Store(0, 0));
    CheckMessage(bench, expected);
    EXPECT_EQ(root.LastSave().written, expected.inConfiguration);
    EXPECT_EQ(root.LastSave().stoppedAt, expected.saved ? L"" : writes[k].entry);
    EXPECT_EQ(bench.state.common->lastTransportError, 0);
    EXPECT_EQ(bench.host.ConfigurationInteractive(), configurationSwitch);
    // The table's switch is left alone while the configuration's did the work, and comes on after a whole save.
    EXPECT_EQ(bench.host.TableInteractive(), expected.saved || configurationSwitch);
    EXPECT_FALSE(bench.host.Progress().shown);
    EXPECT_FALSE(bench.device->InSession());
    EXPECT_EQ(bench.host.AccessLevel(), 3);
    EXPECT_EQ(bench.state.cache, nullptr);

    // Nothing is lost: with the fault gone the same model saves whole.
    bench.device->Faults() = {};
    EXPECT_TRUE(root.Save(true));
    for (const Write& write : writes)
        EXPECT_EQ(In(bench.device->Store(), write.entry), write.after);
}

TEST(SaveFaults, EveryWriteWithEveryFaultUnderBothSwitches) {
    const std::vector<Write> writes = Undisturbed();
    ASSERT_GE(writes.size(), 7U);
    const std::int64_t requestsBefore = RequestsBeforeWrites(writes.size());
    for (const bool configurationSwitch : {true, false})
        for (const Fault fault : {Fault::Refused, Fault::Transient, Fault::GivesUp, Fault::Dropped})
            // The switch has no say in which write fails: with it on, every third one will do.
            for (std::size_t k = 0; k < writes.size(); k += configurationSwitch ? 3 : 1)
                RunOne(fault, k, configurationSwitch, writes, requestsBefore);
}

TEST(SaveFaults, AFailedConnectionOrSessionIsACommunicationError) {
    sim::FaultPlan noConnection;
    noConnection.failConnect = sim::kAlways;
    sim::FaultPlan noSession;
    noSession.failSession = true;
    for (const auto& [plan, code] : {std::pair{noConnection, sim::device_code::kConnectFault},
                                     std::pair{noSession, sim::device_code::kSessionFault}}) {
        test::Bench bench("tiny.json", plan);
        bench.Open(3);
        OutFormatConfig root(bench.state);
        root.Reload();
        Edit(root);
        EXPECT_FALSE(root.Save(true));
        ASSERT_EQ(bench.platform.boxes.shown.size(), 1U);
        EXPECT_EQ(bench.platform.boxes.shown[0].text, L"Communication error " + std::to_wstring(code));
        EXPECT_EQ(bench.state.common->lastTransportError, code);
        // The number outlives the save that set it: a later failure without a code of its own shows it again.
        bench.device->Faults() = {};
        bench.host.Gate().FailNamed("ParameterTable.SetInteractiveMode", 1, static_cast<std::int32_t>(0x8004040B), L"");
        EXPECT_FALSE(root.Save(true));
        EXPECT_EQ(bench.platform.boxes.shown.size(), 2U);
        EXPECT_EQ(bench.platform.boxes.shown.back().text, bench.platform.boxes.shown[0].text);
    }
}

/// A device of its own behind a socket.
class ServedDevice {
  public:
    explicit ServedDevice(sim::FaultPlan plan)
        : device(std::make_shared<sim::SimDevice>(*test::Sample("tiny.json").Find(0, 0), std::move(plan))),
          server(device, 0), thread([this] { server.Run(); }) {}
    ~ServedDevice() { Stop(); }
    void Stop() {
        server.Stop();
        if (thread.joinable())
            thread.join();
    }
    std::shared_ptr<sim::SimDevice> device;
    sim::DeviceServer server;
    std::thread thread;
};

TEST(SaveFaults, TheSameOverASocket) {
    const std::vector<Write> writes = Undisturbed();
    const std::int64_t requestsBefore = RequestsBeforeWrites(writes.size());
    for (const Fault fault : {Fault::Refused, Fault::Transient, Fault::GivesUp, Fault::Dropped})
        for (const std::size_t k : {std::size_t{0}, writes.size() / 2, writes.size() - 1}) {
            SCOPED_TRACE(testing::Message() << "fault " << static_cast<int>(fault) << " at write " << k);
            ServedDevice served(PlanFor(fault, writes[k].entry, requestsBefore + static_cast<std::int64_t>(k)));
            test::Bench bench("tiny.json");
            sim::TcpMibSapService::Endpoint endpoint;
            endpoint.port = served.server.Port();
            bench.host.SetService(std::make_shared<sim::TcpMibSapService>(bench.platform.pump, endpoint));
            bench.Open(3);
            OutFormatConfig root(bench.state);
            root.Reload();
            Edit(root);
            const Expected expected = ExpectedOf(fault, k, writes);
            EXPECT_EQ(root.Save(true), expected.saved);
            CheckMessage(bench, expected);
            served.Stop();
            CheckValues(writes, expected, fault, k, served.device->Store(), *bench.host.Store(0, 0));
        }
}

} // namespace
} // namespace orv::model
