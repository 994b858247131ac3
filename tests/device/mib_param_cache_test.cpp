#include "device/mib_param_cache.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/bench.h"
#include "tests/support/scripted_service.h"

namespace orv::device {
namespace {

using testing::ElementsAre;

class CacheTest : public testing::Test {
  protected:
    explicit CacheTest(std::int32_t level = 3) {
        bench.Open(level);
        bench.state.mibSap = service;
        cache = std::make_unique<MIBParamCache>(bench.state);
    }

    void QueueFive() {
        cache->Add(330, WireType::Int16, std::int16_t{1});
        cache->Add(399, WireType::Int32, std::int32_t{2});
        cache->Add(6, WireType::ByteArray, Bytes{2});
        cache->Add(7, WireType::ByteArray, Bytes{13, 10});
        cache->Add(82, WireType::ByteArray, Bytes{';'});
    }

    test::Bench bench{"tiny.json"};
    std::shared_ptr<test::ScriptedService> service = std::make_shared<test::ScriptedService>();
    std::unique_ptr<MIBParamCache> cache;
};

TEST_F(CacheTest, QueuesOnlyWhatHasAnEntryName) {
    cache->Add(999999, WireType::Int16, std::int16_t{1});
    EXPECT_TRUE(cache->Parameters().empty());
    cache->Add(330, WireType::Int16, std::int32_t{1});
    ASSERT_EQ(cache->Parameters().size(), 1U);
    EXPECT_EQ(cache->Parameters()[0].value, Value(std::int16_t{1}));
    EXPECT_THROW(cache->Add(330, WireType::Byte, std::int32_t{256}), Error);
    cache->Clear();
    EXPECT_TRUE(cache->Parameters().empty());
}

TEST_F(CacheTest, EndsTheSessionWithTheModeAskedFor) {
    EXPECT_TRUE(cache->Save(true, true));
    EXPECT_THAT(service->requests, ElementsAre(L"connect 0", L"start 3 QMVRTK4826", L"end V", L"disconnect"));
}

TEST_F(CacheTest, StopsAtTheFirstRefusedWrite) {
    QueueFive();
    service->codes = {0, 0, 0, 0, 310};
    EXPECT_FALSE(cache->Save(true, false));
    EXPECT_EQ(cache->LastSAPError(), 310);
    EXPECT_EQ(cache->WrittenCount(), 2U);
    EXPECT_EQ(cache->StoppedAt(), cache->Parameters()[2].entry);
    EXPECT_EQ(bench.host.Store(0, 0)->Get(399), Value(std::int32_t{2}));
    EXPECT_NE(bench.host.Store(0, 0)->Get(6), Value(Bytes{2}));
    EXPECT_EQ(service->requests.back(), L"disconnect");
    EXPECT_EQ(std::count(service->requests.begin(), service->requests.end(), L"end P"), 0);
    EXPECT_FALSE(bench.host.Progress().shown);
    EXPECT_FALSE(bench.host.TableInteractive()) << "on again only when everything was written";
}

TEST_F(CacheTest, InteractiveModeThatCannotBeLeftEndsTheSaveBeforeAnythingIsSent) {
    const struct {
        std::uint32_t code;
        std::size_t boxes;
        const wchar_t* text;
        platform::Icon icon;
    } cases[] = {
        {0x8004040A, 1, L"in use", platform::Icon::Warning},
        {0x8004040B, 0, L"", platform::Icon::None},
        {0x80004005, 1, L"Could not set Interactive Mode (in use)", platform::Icon::Critical},
    };
    QueueFive();
    for (const auto& c : cases) {
        bench.platform.boxes.shown.clear();
        bench.host.Gate().FailNamed("ParameterTable.SetInteractiveMode", 1, static_cast<std::int32_t>(c.code),
                                    L"in use");
        EXPECT_FALSE(cache->Save(true, false));
        EXPECT_TRUE(service->requests.empty());
        EXPECT_EQ(bench.host.Progress().showCount, 0);
        ASSERT_EQ(bench.platform.boxes.shown.size(), c.boxes);
        if (c.boxes == 0)
            continue;
        EXPECT_EQ(bench.platform.boxes.shown[0].text, c.text);
        EXPECT_EQ(bench.platform.boxes.shown[0].title, L"Error");
        EXPECT_EQ(bench.platform.boxes.shown[0].icon, c.icon);
    }
}

TEST_F(CacheTest, ASaveWithoutApplicationOrConfigurationSaysSo) {
    for (const bool application : {true, false}) {
        bench.Open(3);
        if (application)
            bench.state.application = nullptr;
        else
            bench.state.configuration = nullptr;
        try {
            cache->Save(true, false);
            ADD_FAILURE() << application;
        } catch (const Error& error) {
            EXPECT_EQ(error.Number(), error_number::kObjectNotSet);
        }
        EXPECT_TRUE(service->requests.empty());
        EXPECT_FALSE(bench.host.Progress().shown);
    }
}

TEST_F(CacheTest, KeepsTheTargetItStartedWith) {
    test::Bench tunnel(test::Sample("tunnel.json"), {}, 2);
    tunnel.Open(2);
    tunnel.state.mibSap = service;
    MIBParamCache save(tunnel.state);
    save.Add(6, WireType::ByteArray, Bytes{'x'});
    save.Add(7, WireType::ByteArray, Bytes{'y'});
    service->post = [&](std::function<void()> answer) {
        tunnel.platform.pump.Post([&tunnel, answer = std::move(answer)] {
            tunnel.state.current = {1, 1, 0};
            answer();
        });
    };
    EXPECT_TRUE(save.Save(true, false));
    EXPECT_EQ(service->requests[0], L"connect 34");
    EXPECT_EQ(service->requests[1], L"start 2 RRNN");
    EXPECT_EQ(tunnel.host.Store(1, 2)->Get(7), Value(Bytes{'y'}));
    EXPECT_NE(tunnel.host.Store(1, 1)->Get(7), Value(Bytes{'y'}));
}

TEST(Passwords, FollowTheAccessLevel) {
    const std::pair<std::int32_t, std::wstring> levels[] = {
        {1, L"start 1 VLPX"}, {2, L"start 2 RRNN"}, {3, L"start 3 QMVRTK4826"}, {9, L"start 9 TRAVEN"}};
    for (const auto& [level, request] : levels) {
        test::Bench bench("tiny.json");
        bench.Open(3);
        bench.state.current.accessLevel = level;
        const auto service = std::make_shared<test::ScriptedService>();
        bench.state.mibSap = service;
        EXPECT_TRUE(MIBParamCache(bench.state).Save(true, false));
        EXPECT_EQ(service->requests[1], request);
    }
}

} // namespace
} // namespace orv::device
