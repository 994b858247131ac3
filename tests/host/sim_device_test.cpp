#include <gtest/gtest.h>

#include "host/sim/sim_device.h"
#include "sim_fixture.h"

namespace orv::sim::testing {
namespace {

SimDevice Connected(FaultPlan faults = {}) {
    SimDevice device(SmallDevice(), std::move(faults));
    device.Connect(34);
    return device;
}

TEST(SimDevice, LevelsNeedTheirPassword) {
    SimDevice device = Connected();
    struct Case {
        const wchar_t* level;
        const wchar_t* password;
        std::int32_t code;
    };
    const Case cases[] = {
        {L"0", L"", 0},           {L"0", L"anything", 0}, {L"1", L"VLPX", 0},     {L"2", L"RRNN", 0},
        {L"3", L"QMVRTK4826", 0}, {L"1", L"RRNN", 403},   {L"3", L"TRAVEN", 403}, {L"2", L"rrnn", 403},
        {L"1", L"", 403},         {L"4", L"", 403},       {L"", L"", 403},        {L"-1", L"", 403},
        {L"10", L"", 403},
    };
    for (const Case& c : cases)
        EXPECT_EQ(device.StartSession(c.level, c.password).code, c.code)
            << ToUtf8(c.level) << " " << ToUtf8(c.password);
}

TEST(SimDevice, EntriesAboveTheSessionsLevelAreRefused) {
    SimDevice device = Connected();
    EXPECT_EQ(device.GetEntry(L"/Count").code, 0);
    EXPECT_EQ(device.SetNumericEntry(L"/Flags[0]", L"5").code, device_code::kNoSession);
    device.StartSession(L"2", L"RRNN");
    EXPECT_EQ(device.SetNumericEntry(L"/Flags[0]", L"5").code, 0);
    EXPECT_EQ(device.GetEntry(L"/Raw[0]").code, device_code::kNoSession);
    EXPECT_EQ(device.StartSession(L"3", L"wrong").code, device_code::kWrongPassword);
    EXPECT_EQ(device.GetEntry(L"/Flags[0]").text, L"5") << "the session goes on";
    device.Connect(34);
    EXPECT_EQ(device.GetEntry(L"/Flags[0]").code, device_code::kNoSession) << "a new client begins without one";
    EXPECT_EQ(device.EndSession(L"V").code, 0);
    EXPECT_EQ(device.EndSession(L"X").code, device_code::kBadRequest);
}

TEST(SimDevice, HoldsWhatTheTypeHolds) {
    SimDevice device = Connected();
    device.StartSession(L"3", L"QMVRTK4826");
    struct Case {
        const wchar_t* entry;
        const wchar_t* text;
        bool asText;
        std::int32_t code;
    };
    const Case cases[] = {
        {L"/Flags[0]", L"-32768", false, 0},
        {L"/Flags[0]", L"32768", false, device_code::kBadValue},
        {L"/Count", L"-2147483648", false, 0},
        {L"/Count", L"12a", false, device_code::kBadValue},
        {L"/Count", L"", false, device_code::kBadValue},
        {L"/Count", L"12", true, 0},
        {L"/Level", L"256", false, device_code::kBadValue},
        {L"/Raw[0]", L"1", false, device_code::kBadValue},
        {L"/Name", L"1", false, device_code::kBadValue},
        {L"/Name", L"", true, 0},
        {L"/Raw[2]", L"x", true, device_code::kUnknownEntry},
        {L"/Raw[0]", L"\u20AC\x81\u4E2D", true, 0},
    };
    for (const Case& c : cases) {
        const DeviceAnswer answer =
            c.asText ? device.SetStringEntry(c.entry, c.text) : device.SetNumericEntry(c.entry, c.text);
        EXPECT_EQ(answer.code, c.code) << ToUtf8(c.entry) << " " << ToUtf8(c.text);
    }
    EXPECT_EQ(device.Store().Get(14, 0), device::Value(Bytes{0x80, 0x81, '?'}));
    EXPECT_EQ(device.Store().Get(11), device::Value(std::int32_t{12}));
    EXPECT_EQ(device.Store().Get(12), device::Value(std::uint8_t{200})) << "a refused set changes nothing";
}

TEST(SimDevice, SetsFailAsPlanned) {
    FaultPlan plan;
    for (const char* text : {"/Count:308:2", "#5:700", "*:309:1"})
        plan.sets.push_back(ParseSetFault(text).value());
    SimDevice device = Connected(plan);
    std::vector<std::int32_t> codes;
    for (int i = 0; i < 6; ++i)
        codes.push_back(device.SetNumericEntry(L"/Count", std::to_wstring(i)).code);
    EXPECT_EQ(codes, (std::vector<std::int32_t>{308, 308, 309, 0, 700, 0}));
    EXPECT_EQ(device.Store().Get(11), device::Value(std::int32_t{5}));
}

TEST(SimDevice, ConnectAndSessionFailAsPlanned) {
    FaultPlan plan;
    plan.failConnect = 2;
    plan.failSession = true;
    SimDevice device(SmallDevice(), plan);
    EXPECT_EQ(device.Connect(34).code, device_code::kConnectFault);
    EXPECT_EQ(device.Connect(34).code, device_code::kConnectFault);
    EXPECT_EQ(device.Connect(34).code, 0);
    EXPECT_EQ(device.StartSession(L"1", L"VLPX").code, device_code::kSessionFault);
    EXPECT_FALSE(device.InSession());
}

TEST(SimDevice, DropsOnceAndFallsSilentForGood) {
    FaultPlan plan;
    plan.dropAfter = 2;
    plan.silentAfter = 4;
    SimDevice device = Connected(plan);
    EXPECT_FALSE(device.GetEntry(L"/Nothing").drop) << "an error answer is an answer";
    EXPECT_TRUE(device.GetEntry(L"/Count").drop);
    EXPECT_EQ(device.Connect(34).code, 0);
    EXPECT_FALSE(device.GetEntry(L"/Count").silent);
    EXPECT_TRUE(device.GetEntry(L"/Count").silent);
    EXPECT_TRUE(device.Connect(34).silent);
    EXPECT_EQ(device.AnsweredCount(), 4);
}

TEST(SimDevice, FaultTextsAreChecked) {
    EXPECT_EQ(ParseSetFault("/A[1]:308")->times, kAlways);
    EXPECT_EQ(ParseSetFault("/A[1]:308:3")->entry, L"/A[1]");
    for (const char* bad :
         {"", "/A", ":308", "/A:", "/A:x", "/A:308:0", "/A:308:-1", "/A:308:1:1", "#0:1", "#x:1", "/A:3 "})
        EXPECT_FALSE(ParseSetFault(bad)) << bad;
}

} // namespace
} // namespace orv::sim::testing
