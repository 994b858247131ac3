#include <gtest/gtest.h>

#include "host/sim/protocol_handler.h"
#include "sim_fixture.h"

namespace orv::sim::testing {
namespace {

class ProtocolTest : public ::testing::Test {
  protected:
    std::string Say(std::string_view bytes) {
        std::string answers;
        for (const ProtocolHandler::Reply& reply : handler_->Feed(bytes))
            answers += reply.bytes + (reply.close ? "<close>" : "");
        return answers;
    }

    std::shared_ptr<SimDevice> device_ = std::make_shared<SimDevice>(SmallDevice());
    std::unique_ptr<ProtocolHandler> handler_ = std::make_unique<ProtocolHandler>(device_);
};

TEST(LineProtocol, FieldsSurviveTheJourney) {
    std::wstring every;
    for (wchar_t c = 0; c < 0x180; ++c)
        every += c;
    for (const std::wstring& field :
         {every, std::wstring(), std::wstring(L"\\e"), std::wstring(L" "), L"\\x41" + every}) {
        const std::string line = FormatLine("V", {field, L"end"});
        EXPECT_EQ(line.find('\n'), line.size() - 1);
        const auto parsed = ParseLine(line.substr(0, line.size() - 1));
        ASSERT_TRUE(parsed);
        EXPECT_EQ(parsed->fields, (std::vector<std::wstring>{field, L"end"}));
    }
}

TEST(LineProtocol, SplitterTakesBytesInAnyPortions) {
    const std::string stream =
        "one\r\ntwo\n\n" + std::string(kMaximumLine + 1, 'x') + "\n" + std::string(kMaximumLine, 'y') + "\nlast";
    for (const std::size_t portion : {std::size_t{1}, std::size_t{7}, std::size_t{65536}, stream.size()}) {
        LineSplitter splitter;
        std::vector<LineSplitter::Line> lines;
        for (std::size_t at = 0; at < stream.size(); at += portion)
            for (LineSplitter::Line& line : splitter.Feed(std::string_view(stream).substr(at, portion)))
                lines.push_back(std::move(line));
        ASSERT_EQ(lines.size(), 5U) << portion;
        EXPECT_EQ(lines[0].text, "one");
        EXPECT_EQ(lines[2].text, "");
        EXPECT_TRUE(lines[3].oversized);
        EXPECT_EQ(lines[4].text.size(), kMaximumLine);
    }
}

TEST_F(ProtocolTest, AnswersAWholeSession) {
    EXPECT_EQ(Say("HELLO 1 34\nSESSION 3 QMVRTK4826\n"), "OK OK\nOK OK\n");
    EXPECT_EQ(Say("SETN /Flags[1] 7\nGET /Flags[1]\n"), "OK OK\nOK 7\n");
    EXPECT_EQ(Say("SETS /Raw[0] a\\s\\x1D\nASK 14 0\nGET /Raw[0]\n"), "OK OK\nVALUE bytes 61201D\nOK a\\s\\x1D\n");
    EXPECT_EQ(Say("END P\nBYE\nGET /Count\n"), "OK OK\nOK OK\n<close>") << "nothing is answered behind the end";
    EXPECT_EQ(device_->LastEndMode(), L"P");
}

TEST_F(ProtocolTest, AnswersNonsenseAndGoesOn) {
    EXPECT_EQ(Say("GET /Count\n"), "ERR 405 not\\sconnected\n");
    for (const char* line : {"HELLO", "HELLO 2 34", "HELLO 1 x", "HELLO 1 99999999999", "hello 1 34"})
        EXPECT_EQ(Say(std::string(line) + "\n").substr(0, 8), "ERR 405 ") << line;
    EXPECT_EQ(Say("HELLO 1 33\n").substr(0, 8), "ERR 406 ");
    ASSERT_EQ(Say("HELLO 1 34\n"), "OK OK\n");
    for (const char* line : {"", " ", "GET", "GET  /Count", "GET /Count ", "GET /Count x", "GET \\", "GET \\q",
                             "GET \\x4", "GET \\xZZ", "GET \xFF", "GET /Count\t", "GET \x1B", "GET \x7F", "SETN /Count",
                             "BYE BYE", "HELLO 1 34", "ASK 10", "ASK a 0"})
        EXPECT_EQ(Say(std::string(line) + "\n").substr(0, 8), "ERR 405 ") << line;
    EXPECT_EQ(Say(std::string(3 * kMaximumLine, 'G') + "\nGET /Count\n"), "ERR 405 line\\stoo\\slong\nOK 70000\n");
    for (const char* line : {"ASK 99 0", "ASK 10 3", "ASK 10 -1"})
        EXPECT_EQ(Say(std::string(line) + "\n").substr(0, 8), "ERR 401 ") << line;
}

TEST_F(ProtocolTest, EndOfTheConnectionEndsTheSession) {
    Say("HELLO 1 34\nSESSION 1 VLPX\n");
    EXPECT_TRUE(device_->InSession());
    handler_.reset();
    EXPECT_FALSE(device_->InSession());
}

TEST_F(ProtocolTest, FaultsShowAsSilenceClosingAndDelay) {
    device_->Faults().delay = std::chrono::milliseconds(5);
    device_->Faults().dropAfter = 2;
    const auto replies = handler_->Feed("HELLO 1 34\n");
    ASSERT_EQ(replies.size(), 1U);
    EXPECT_EQ(replies[0].delay.count(), 5);
    EXPECT_EQ(Say("GET /Count\nGET /Count\n"), "OK 70000\n<close>");
    handler_ = std::make_unique<ProtocolHandler>(device_);
    device_->Faults().silentAfter = 3;
    EXPECT_EQ(Say("HELLO 1 34\nGET /Count\nASK 11 0\n"), "OK OK\nVALUE int32 70000\n")
        << "a question from outside suffers no fault";
}

} // namespace
} // namespace orv::sim::testing
