#include "fixture.h"

namespace orv::editor {
namespace {

const std::wstring kItalian = L"C:\\OrvOutFormat\\OrvOutFormat_0410";
const std::wstring kEnglish = L"C:\\OrvOutFormat\\OrvOutFormat_0409";

Bytes Start(std::string_view text) {
    return {text.begin(), text.end()};
}

struct GuideTest : test::EditorFixture {
    sim::FakeDesktop& desktop = bench.platform.desktop;
    GuideTest() { bench.host.Application()->helpLanguage = 0x0410; }
    void Ask() { Button(L"cmdGuide").Press(); }
    std::wstring Box() { return Boxes().size() == 1 ? Boxes()[0].text : std::to_wstring(Boxes().size()) + L" boxes"; }
};

TEST_F(GuideTest, TheUsersLanguageElseEnglish) {
    struct Case {
        const char* what;
        std::wstring name;
        std::int32_t language;
        std::set<std::wstring> files;
        std::wstring opened;
    };
    for (const Case& c : {
             Case{"own language", L"", 0x0410, {kItalian + L".chm", kEnglish + L".chm"}, kItalian + L".chm"},
             Case{"only a document of the other kind",
                  L"",
                  0x0410,
                  {kItalian + L".pdf", kEnglish + L".chm"},
                  kEnglish + L".chm"},
             Case{"digits are padded",
                  L"",
                  0x0007,
                  {L"C:\\OrvOutFormat\\OrvOutFormat_0007.chm"},
                  L"C:\\OrvOutFormat\\OrvOutFormat_0007.chm"},
             Case{"hyphens do not count",
                  L"Line-Guide-2",
                  0x0C0A,
                  {L"C:\\OrvOutFormat\\LineGuide2_0C0A.chm"},
                  L"C:\\OrvOutFormat\\LineGuide2_0C0A.chm"},
         }) {
        SCOPED_TRACE(c.what);
        bench.host.Application()->helpName = c.name;
        bench.host.Application()->helpLanguage = c.language;
        desktop.files = c.files;
        desktop.opened.clear();
        Ask();
        EXPECT_EQ(desktop.opened, std::vector{c.opened});
        EXPECT_TRUE(Boxes().empty());
    }
}

TEST_F(GuideTest, AHelpNameLeadsNowhereElse) {
    for (const wchar_t* name : {L"..\\Other", L"..", L"a/b", L"C:\\Windows\\x", L"x:stream", L"\\\\server\\share\\x",
                                L"http://x", L"a\"b", L"*", L"a\nb"}) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(name)));
        bench.host.Application()->helpName = name;
        desktop.files = {kItalian + L".chm", L"C:\\OrvOutFormat\\" + std::wstring(name) + L"_0410.chm"};
        desktop.opened.clear();
        Ask();
        const bool plain = std::wstring(name) == L"..";
        EXPECT_EQ(desktop.opened, std::vector{plain ? L"C:\\OrvOutFormat\\.._0410.chm" : kItalian + L".chm"});
    }
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(GuideTest, ADocumentUnderTheOtherNameIsOpenedAsACopy) {
    for (const auto& [start, document] : std::vector<std::pair<std::string_view, bool>>{{"%PDF-1.4 and on", true},
                                                                                        {"%pDf", true},
                                                                                        {"%PD", false},
                                                                                        {"ITSF", false},
                                                                                        {"", false},
                                                                                        {"x%PDF", false}}) {
        SCOPED_TRACE(start);
        desktop.contents = {{kItalian + L".chm", Start(start)}, {kItalian + L".pdf", Start("an older copy")}};
        desktop.opened.clear();
        Ask();
        EXPECT_EQ(desktop.opened, std::vector{kItalian + (document ? L".pdf" : L".chm")});
        EXPECT_EQ(desktop.contents[kItalian + L".pdf"], document ? Start(start) : Start("an older copy"));
    }
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(GuideTest, ADocumentThatCannotBeCopiedIsOpenedFromElsewhere) {
    const std::wstring beside = kItalian + L".pdf";
    const std::wstring temporary = L"C:\\Temp\\OrvOutFormat_0410.pdf";
    const Bytes guide = Start("%PDF new");
    const Bytes older = Start("%PDF old");
    struct Case {
        const char* what;
        std::map<std::wstring, Bytes> contents;
        std::set<std::wstring> locked;
        std::wstring opened;
        Bytes shown;
    };
    for (const Case& c : {
             Case{"an older copy that a viewer holds", {{beside, older}}, {beside}, beside, older},
             Case{"a folder that takes none", {}, {beside}, temporary, guide},
             Case{"an older copy in the temporary folder", {{temporary, older}}, {beside}, temporary, guide},
             Case{"one there that a viewer holds", {{temporary, older}}, {beside, temporary}, temporary, older},
         }) {
        SCOPED_TRACE(c.what);
        desktop.contents = c.contents;
        desktop.contents[kItalian + L".chm"] = guide;
        desktop.locked = c.locked;
        desktop.opened.clear();
        Ask();
        EXPECT_EQ(desktop.opened, std::vector{c.opened});
        EXPECT_EQ(desktop.contents[c.opened], c.shown);
    }
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(GuideTest, TheHostMayUnregisterWhileItIsAsked) {
    desktop.files = {kItalian + L".chm"};
    bench.host.Gate().Before("HostApplication.HelpName", [this] { bench.state.application = nullptr; });
    Ask();
    EXPECT_EQ(desktop.opened, std::vector{kItalian + L".chm"});
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(GuideTest, WhatFailsIsSaidInItsOwnWords) {
    Ask();
    EXPECT_EQ(Box(), L"Error in cmdGuide_Click: There is no guide " + kEnglish + L".chm");
    EXPECT_EQ(Boxes()[0].title, L"Output Format Addon");
    bench.platform.boxes.shown.clear();

    desktop.contents[kItalian + L".chm"] = Start("%PDF");
    desktop.locked = {kItalian + L".chm"};
    Ask();
    EXPECT_EQ(Box(), L"Error in IsAcrobatDocument(" + kItalian + L".chm): " + kItalian + L".chm");
    EXPECT_EQ(desktop.opened, std::vector{kItalian + L".chm"}) << "what cannot be told is opened as it is called";
    bench.platform.boxes.shown.clear();

    const std::wstring temporary = L"C:\\Temp\\OrvOutFormat_0410.pdf";
    desktop.locked = {kItalian + L".pdf", temporary};
    desktop.opened.clear();
    Ask();
    EXPECT_EQ(Box(), L"Error in cmdGuide_Click: " + temporary);
    EXPECT_TRUE(desktop.opened.empty());
    bench.platform.boxes.shown.clear();

    bench.state.application = nullptr;
    Ask();
    EXPECT_EQ(Box(), L"Error in CheckHelpFile: Object variable not set");
}

} // namespace
} // namespace orv::editor
