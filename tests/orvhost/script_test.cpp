#include "host/app/orvhost/script.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace orv::host {
namespace {

ScriptCommand Only(std::string_view line) {
    const auto commands = ParseScript(line);
    EXPECT_EQ(commands.size(), 1u) << line;
    return commands.at(0);
}

std::string Complaint(std::string_view script) {
    try {
        ParseScript(script);
    } catch (const ScriptError& failure) {
        return failure.what();
    }
    return "";
}

TEST(Script, CountsLinesOfEitherKindAndSkipsWhatIsNoCommand) {
    const auto commands = ParseScript("\xEF\xBB\xBF# a tour\r\n\r\n  show \r\n\t# more\nactivate\n   \nquit");
    ASSERT_EQ(commands.size(), 3u);
    EXPECT_EQ(commands[0].verb, Verb::Show);
    EXPECT_EQ(commands[0].line, 3);
    EXPECT_EQ(commands[0].source, L"show");
    EXPECT_EQ(commands[1].line, 5);
    EXPECT_EQ(commands[2].line, 7);
    EXPECT_TRUE(ParseScript("").empty());
    EXPECT_TRUE(ParseScript("# nothing").empty());
}

TEST(Script, TakesControlsWithAndWithoutAnIndex) {
    EXPECT_EQ(Only("press cmdApply").index, kNoIndex);
    const auto indexed = Only("focus mbeCustomCodeID(18)");
    EXPECT_EQ(indexed.name, L"mbeCustomCodeID");
    EXPECT_EQ(indexed.index, 18);
    const auto value = Only("set cboCodeSel(2)   1 - Code 39");
    EXPECT_EQ(value.index, 2);
    EXPECT_EQ(value.text, L"1 - Code 39");
    EXPECT_EQ(Only("set txtMin").text, L"") << "an empty value is one";
    for (const char* wrong : {"press", "press (1)", "press a(", "press a(x)", "press a(-1)", "press a()", "press a b",
                              "press a(123456)", "print enabled"})
        EXPECT_NE(Complaint(wrong), "") << wrong;
}

TEST(Script, TakesQuestionsNodesAndFiles) {
    EXPECT_EQ(Only("print host 6").number, 6);
    const auto element = Only("print  device\t351:4");
    EXPECT_EQ(element.verb, Verb::PrintDevice);
    EXPECT_EQ(element.number, 351);
    EXPECT_EQ(element.element, 4);
    EXPECT_EQ(Only("select Format Definition/1 - SerMain").text, L"Format Definition/1 - SerMain");
    EXPECT_EQ(Only("picture \xC3\xBC.bmp").text, L"\u00FC.bmp");
    for (const char* wrong : {"print host", "print host x", "print device 1:", "print", "select", "picture", "save"})
        EXPECT_NE(Complaint(wrong), "") << wrong;
}

TEST(Script, TakesExpectedBoxesWithTheirAnswers) {
    const auto asked = Only("expect-box Save anyway? answer yes");
    EXPECT_EQ(asked.text, L"Save anyway?");
    EXPECT_EQ(asked.answer, BoxAnswer::Yes);
    EXPECT_EQ(Only("expect-box Slave answer no").answer, BoxAnswer::No);
    EXPECT_EQ(Only("expect-box Error").answer, BoxAnswer::Ok);
    const auto twice = Only("expect-box No answer came answer ok");
    EXPECT_EQ(twice.text, L"No answer came") << "the last \"answer\" counts";
    for (const char* wrong : {"expect-box", "expect-box Text answer maybe"})
        EXPECT_NE(Complaint(wrong), "") << wrong;
}

TEST(Script, TakesItemsAndDrags) {
    const auto clicked = Only("click tbrCodeType Code 39");
    EXPECT_EQ(clicked.verb, Verb::Click);
    EXPECT_EQ(clicked.text, L"Code 39");
    EXPECT_EQ(Only("uncheck lvwCodes(2) 1 - A").index, 2);
    EXPECT_EQ(Only("enter mbeHeader <STX>A").text, L"\002A");
    EXPECT_EQ(Only("enter txtMin").text, L"");
    const auto dragged = Only("drag tbrItems Time to decode to pls 3");
    EXPECT_EQ(dragged.name, L"tbrItems");
    EXPECT_EQ(dragged.text, L"Time to decode");
    EXPECT_EQ(dragged.target, L"pls");
    EXPECT_EQ(dragged.number, 3);
    for (const char* wrong : {"click tbr", "check", "drag a b", "drag a b to pls", "drag a b to pls x",
                              "drag a to pls 1", "double-click pls", "enter", "enter a <NOPE>", "expect-file"})
        EXPECT_NE(Complaint(wrong), "") << wrong;
}

TEST(Script, TakesWhatIsExpected) {
    const auto value = Only("expect value txtMin 5");
    EXPECT_EQ(value.verb, Verb::ExpectValue);
    EXPECT_EQ(value.text, L"5");
    EXPECT_EQ(Only("expect value lblHint").text, L"");
    const auto host = Only("expect host 351:4  a b ");
    EXPECT_EQ(host.number, 351);
    EXPECT_EQ(host.element, 4);
    EXPECT_EQ(host.text, L"a b");
    EXPECT_EQ(Only("expect device 6").text, L"");
    EXPECT_EQ(Only("expect result -1").number, -1);
    EXPECT_EQ(Only("expect node Formats/1 - *").verb, Verb::ExpectNode);
    const auto inside = Only("inside expect disabled cmdOK");
    EXPECT_TRUE(inside.inside);
    EXPECT_EQ(inside.verb, Verb::ExpectDisabled);
    for (const char* wrong : {"expect", "expect value", "expect host", "expect host x 1", "expect result",
                              "expect result a", "expect enabled", "expect node", "inside", "meanwhile inside quit"})
        EXPECT_NE(Complaint(wrong), "") << wrong;
}

TEST(Script, MarksWhatRunsWhileTheComponentWaits) {
    const auto command = Only("meanwhile picture box.bmp");
    EXPECT_TRUE(command.meanwhile);
    EXPECT_EQ(command.verb, Verb::Picture);
    EXPECT_EQ(command.text, L"box.bmp");
    EXPECT_FALSE(Only("close").meanwhile);
    EXPECT_NE(Complaint("meanwhile"), "");
}

TEST(Script, NamesTheLineOfAMistake) {
    EXPECT_EQ(Complaint("show\n\ndance\n"), "line 3: unknown command");
    EXPECT_EQ(Complaint("activate now"), "line 1: takes no argument");
    EXPECT_EQ(Complaint("quit\nshow\ntype <NOPE>").substr(0, 7), "line 3:");
}

TEST(Script, ExpandsTheNamesOfCharacters) {
    EXPECT_EQ(ExpandTokens(L"<STX>A<CR><LF>"), L"\002A\r\n");
    EXPECT_EQ(ExpandTokens(L"<NUL>"), std::wstring(1, L'\0'));
    EXPECT_EQ(ExpandTokens(L"a<Space>b"), L"a b");
    EXPECT_EQ(ExpandTokens(L"<$FC>"), L"\u00FC");
    EXPECT_EQ(ExpandTokens(L"<$80>"), L"\u20AC") << "a byte means its character in the host's code page";
    EXPECT_EQ(ExpandTokens(L"1<<2>"), L"1<2>");
    EXPECT_THROW(ExpandTokens(L"<"), std::invalid_argument);
    EXPECT_THROW(ExpandTokens(L"<stx>"), std::invalid_argument);
    EXPECT_THROW(ExpandTokens(L"<STX"), std::invalid_argument);
}

TEST(Script, EveryShippedScriptCanBePlayed) {
    int scripts = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ORV_SOURCE_DIR "/samples")) {
        if (entry.path().extension() != ".play")
            continue;
        std::ifstream in(entry.path(), std::ios::binary);
        const std::string text(std::istreambuf_iterator<char>(in), {});
        EXPECT_GT(ParseScript(text).size(), 3u) << entry.path();
        ++scripts;
    }
    EXPECT_GE(scripts, 6);
}

} // namespace
} // namespace orv::host
