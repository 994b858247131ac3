#include "cli/values.h"

#include <map>

#include "fixture.h"

namespace orv::cli::testing {
namespace {

class ValuesTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        file_ = std::make_unique<DeviceFile>(DeviceChoice{SamplePath("tiny.json"), {}, 0, {}});
    }
    static void TearDownTestSuite() { file_.reset(); }

    template <typename Action>
    static std::wstring ReasonOf(Action action) {
        try {
            action();
        } catch (const ValueError& error) {
            return error.Reason();
        }
        return L"read";
    }

    static std::unique_ptr<DeviceFile> file_;
    device::ParameterAccess access_{file_->State()};
};
std::unique_ptr<DeviceFile> ValuesTest::file_;

TEST_F(ValuesTest, EveryByteReadsBackFromItsDisplayFormAloneAndInACrowd) {
    Bytes crowd;
    for (int byte = 0; byte < 256; ++byte) {
        const Bytes one{static_cast<std::uint8_t>(byte)};
        const std::wstring shown = DisplayBytes(one);
        EXPECT_EQ(access_.StringToBytes(ParseText(shown, access_, false)), one) << byte;
        EXPECT_TRUE(byte == ' ' || (shown[0] > L' ' && shown[0] < 127)) << byte;
        crowd.push_back(one[0]);
        crowd.push_back('<');
        crowd.push_back(one[0]);
    }
    EXPECT_EQ(access_.StringToBytes(ParseText(DisplayBytes(crowd), access_, false)), crowd);
    EXPECT_EQ(DisplayText(access_.BytesToString(crowd), access_), DisplayBytes(crowd));
}

TEST_F(ValuesTest, TextsAreTakenAsPeopleWriteThem) {
    const std::map<std::wstring, Bytes> cases{
        {L"", {}},
        {L"a b<Space>c", {'a', ' ', 'b', ' ', 'c'}},
        {L"<STX>A<ETX>", {2, 'A', 3}},
        {L"<cr><lF>", {13, 10}},
        {L"<$3C>CR<$3e>", {'<', 'C', 'R', '>'}},
        {L">", {'>'}},
        {L"\x20AC\xE9", {0x80, 0xE9}},
    };
    for (const auto& [display, bytes] : cases)
        EXPECT_EQ(access_.StringToBytes(ParseText(display, access_, false)), bytes) << display.size();
}

TEST_F(ValuesTest, WhatDoesNotReadSaysWhy) {
    using ::testing::HasSubstr;
    const std::map<std::wstring, std::wstring> cases{
        {L"a<CRR>b", L"no character called <CRR>"}, {L"<$4>", L"no character called <$4>"},
        {L"<$GG>", L"no character called <$GG>"},   {L"<>", L"no character called <>"},
        {L"x<CR", L"\"<CR\" has no end"},           {L"ab\x4E2D", L"no \"\x4E2D\""},
    };
    for (const auto& [display, reason] : cases)
        EXPECT_THAT(ReasonOf([&, text = display] { ParseText(text, access_, false); }), HasSubstr(reason));
    EXPECT_EQ(access_.StringToBytes(ParseText(L"ab\x4E2D", access_, true)), (Bytes{'a', 'b', '?'}));
    EXPECT_THAT(ReasonOf([&] { ParseText(L"<CRR>", access_, true); }), HasSubstr(L"no character called"));
}

TEST_F(ValuesTest, QuotedValuesEndWhereTheyEnd) {
    EXPECT_EQ(DisplayValue(device::Value(Bytes{'"', 13}), access_), L"\"<$22><CR>\"");
    EXPECT_EQ(DisplayValue(device::Value(std::wstring(L"<")), access_), L"\"<$3C>\"");
    EXPECT_EQ(DisplayValue(device::Value(std::wstring(L"a\x4E2D\x7F")), access_), L"\"a\x4E2D<$7F>\"");
    EXPECT_EQ(DisplayValue(device::Value(std::uint8_t{200}), access_), L"200");
}

TEST_F(ValuesTest, NumbersFitTheirTypeOrSayThatTheyDoNot) {
    struct Case {
        const wchar_t* text;
        int bits;
        bool isSigned;
        std::int32_t number;
    };
    for (const Case& c : std::initializer_list<Case>{{L"32767", 16, true, 32767},
                                                     {L"-32768", 16, true, -32768},
                                                     {L"+5", 8, false, 5},
                                                     {L"255", 8, false, 255},
                                                     {L"&HFFFF", 16, true, -1},
                                                     {L"&h7fff", 16, true, 32767},
                                                     {L"&H80000000", 32, true, INT32_MIN},
                                                     {L"&HFF", 8, false, 255}})
        EXPECT_EQ(ParseNumber(c.text, c.bits, c.isSigned), c.number) << sizeof c;
    for (const Case& c : std::initializer_list<Case>{{L"32768", 16, true, 0},
                                                     {L"-1", 8, false, 0},
                                                     {L"256", 8, false, 0},
                                                     {L"2147483648", 32, true, 0},
                                                     {L"99999999999999999999999", 32, true, 0},
                                                     {L"&H10000", 16, true, 0},
                                                     {L"&HFFFFFFFFFFFFFFFFF", 32, true, 0}})
        EXPECT_THAT(ReasonOf([&] { ParseNumber(c.text, c.bits, c.isSigned); }), ::testing::HasSubstr(L"does not fit"));
    for (const wchar_t* text : {L"", L"-", L"&H", L"1.5", L"0x10", L" 1", L"&HXY", L"one"})
        EXPECT_NE(ReasonOf([&] { ParseNumber(text, 32, true); }), L"read") << text;
    EXPECT_TRUE(ParseSwitch(L"1") && ParseSwitch(L"True") && !ParseSwitch(L"0") && !ParseSwitch(L"false"));
    EXPECT_EQ(ReasonOf([] { ParseSwitch(L"2"); }), L"\"2\" is neither 1 nor 0");
}

} // namespace
} // namespace orv::cli::testing
