#include "host/app/orvhost/options.h"

#include <gtest/gtest.h>

#include "text/version.h"

namespace orv::host {
namespace {

TEST(Options, ReadWhatWasGivenAndKeepTheRest) {
    const auto options =
        ParseOptions({"f\xC3\xBCr.json", "--device-at", "127.0.0.1:5100", "--device", "2", "--level", "3", "--language",
                      "0407", "--play", "a.play", "--size", "800x600", "--no-extender", "--fail",
                      "ParameterTable.GetValue:7", "--fail", "Configuration.AccessLevel:2:9:Why: so"});
    ASSERT_FALSE(options.status.has_value()) << options.message;
    EXPECT_TRUE(options.file.u8string() == u8"f\u00FCr.json");
    ASSERT_TRUE(options.deviceAt.has_value());
    EXPECT_EQ(options.deviceAt->port, 5100);
    EXPECT_EQ(options.cluster, 0);
    EXPECT_EQ(options.device, 2);
    EXPECT_EQ(options.level, 3);
    EXPECT_EQ(options.language, 0x0407);
    EXPECT_EQ(options.width, 800);
    EXPECT_EQ(options.height, 600);
    EXPECT_FALSE(options.extender);
    ASSERT_EQ(options.faults.size(), 2u);
    EXPECT_EQ(options.faults[1].description, L"Why: so");
}

TEST(Options, RefuseWithStatusTwoAndAReason) {
    const std::vector<std::vector<std::string>> wrong = {
        {"--level", "4"},        {"--device", "32"},    {"--size", "10x10"},    {"--size", "800"},
        {"--device-at", "host"}, {"--language", "407"}, {"--language", "de-D"}, {"--fail", "x"},
        {"--device-at", ""},     {"--fail", "A.B:1:0"}, {"--nothing"},          {"a.json", "b.json"}};
    for (const auto& arguments : wrong) {
        const auto options = ParseOptions(arguments);
        EXPECT_EQ(options.status, 2) << arguments[0];
        EXPECT_FALSE(options.message.empty()) << arguments[0];
    }
    EXPECT_EQ(ParseOptions({"--help"}).status, 0);
    EXPECT_EQ(ParseOptions({"--version"}).message, std::string("orvhost ") + text::kVersion + "\n");
}

TEST(Options, CallFaultsCountFromTheFirstCall) {
    const auto plain = ParseCallFault("A.B:5");
    ASSERT_TRUE(plain.has_value());
    EXPECT_EQ(plain->nth, 1);
    EXPECT_EQ(plain->number, 5);
    EXPECT_FALSE(plain->description.empty()) << "a failure always says something";
    const auto text = ParseCallFault("A.B:5:Out of paper");
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(text->nth, 1);
    EXPECT_EQ(text->description, L"Out of paper");
    const auto result = ParseCallFault("A.B:3:0x80004005");
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->nth, 3);
    EXPECT_EQ(result->number, static_cast<std::int32_t>(0x80004005));
    for (const char* wrong : {"", "A.B", "A.B:", "A:5", ".B:5", "A.:5", "A.B:0:5", "A.B:0", "A.B:x:5"})
        EXPECT_FALSE(ParseCallFault(wrong).has_value()) << wrong;
}

TEST(Options, DeviceAddressesNeedAHostAndAPort) {
    EXPECT_EQ(ParseDeviceAddress("::1:80")->host, "::1");
    for (const char* wrong : {"", ":1", "a", "a:", "a:0", "a:65536", "a:1x"})
        EXPECT_FALSE(ParseDeviceAddress(wrong).has_value()) << wrong;
}

} // namespace
} // namespace orv::host
