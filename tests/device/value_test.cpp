#include <gtest/gtest.h>

#include <functional>

#include "device/device_state.h"
#include "device/value.h"

namespace orv::device {
namespace {

template <typename Action>
std::int32_t NumberOf(const Action& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.Number();
    }
    return 0;
}

TEST(Values, ConvertOrSayWhy) {
    const Value empty;
    EXPECT_EQ(ToInt32(empty), 0);
    EXPECT_FALSE(ToBool(empty));
    EXPECT_EQ(ToText(empty), L"");
    EXPECT_EQ(ToBytes(empty), Bytes());
    EXPECT_EQ(ToInt16(std::wstring(L" -32768 ")), -32768);
    EXPECT_EQ(ToByte(std::int32_t{255}), 255);
    EXPECT_EQ(ToText(std::uint8_t{7}), L"7");
    EXPECT_TRUE(ToBool(std::int16_t{-1}));

    const struct {
        const char* what;
        std::function<void()> convert;
        std::int32_t number;
    } cases[] = {
        {"negative byte", [] { ToByte(std::int16_t{-1}); }, 6},
        {"16 bits", [] { ToInt16(std::int32_t{32768}); }, 6},
        {"long digits", [] { ToInt32(std::wstring(L"99999999999999999999999")); }, 6},
        {"32 bits", [] { ToInt32(std::wstring(L"2147483648")); }, 6},
        {"word", [] { ToInt32(std::wstring(L"12a")); }, 13},
        {"empty text", [] { ToInt32(std::wstring()); }, 13},
        {"sign alone", [] { ToInt32(std::wstring(L"-")); }, 13},
        {"bytes as number", [] { ToInt32(Bytes{1}); }, 13},
        {"bytes as text", [] { ToText(Bytes{65}); }, 13},
        {"number as bytes", [] { ToBytes(std::int16_t{1}); }, 13},
        {"type of nothing", [] { TypeOf(Value()); }, 13},
    };
    for (const auto& c : cases)
        EXPECT_EQ(NumberOf(c.convert), c.number) << c.what;
}

TEST(Values, AreLoggedWithoutControlCharacters) {
    EXPECT_EQ(LogForm(Bytes{2, ' ', 'A', 200}), L"<STX><Space>A<$C8>");
    EXPECT_EQ(LogForm(std::int16_t{-3}), L"-3");
    EXPECT_EQ(LogForm(Value()), L"");
}

TEST(CallCounter, FlagsTheSecondCallAndSaturates) {
    CallCounter counter;
    counter.Increment();
    EXPECT_FALSE(counter.Flag());
    counter.Increment();
    EXPECT_TRUE(counter.Flag());
    for (int i = 0; i < 70000; ++i)
        counter.Increment();
    EXPECT_TRUE(counter.Flag());
    EXPECT_EQ(counter.Count(), 32767);
}

} // namespace
} // namespace orv::device
