#include <filesystem>
#include <fstream>
#include <sstream>

#include "fixture.h"
#include "model/format_export.h"

namespace orv::editor {
namespace {

struct ExportTest : test::EditorFixture {
    std::filesystem::path folder;

    ExportTest() : EditorFixture(test::Sample("conveyor.json")) {
        const auto* info = testing::UnitTest::GetInstance()->current_test_info();
        folder = std::filesystem::path(testing::TempDir()) / (std::string("orv_export_") + info->name());
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
        Click(L"FormatDef");
    }
    ~ExportTest() override { std::filesystem::remove_all(folder); }

    void Choose(const std::filesystem::path& file) { bench.platform.desktop.saveFileNames.push_back(file.wstring()); }
    void Export() { Button(L"cmdExport").Press(); }
    const platform::SaveFileRequest& Request() { return bench.platform.desktop.saveFileRequests.back(); }
    static std::string Bytes(const std::filesystem::path& file) {
        std::ifstream in(file, std::ios::binary);
        std::ostringstream bytes;
        bytes << in.rdbuf();
        return bytes.str();
    }
};

TEST_F(ExportTest, AsksForTheFileAndWritesNothingWhenItIsCancelled) {
    Export();
    ASSERT_EQ(bench.platform.desktop.saveFileRequests.size(), 1u);
    EXPECT_EQ(Request().title, L"Choose file to export format structure");
    EXPECT_EQ(Request().filterName, L"Text Files (*.txt)");
    EXPECT_EQ(Request().filterPattern, L"*.TXT");
    EXPECT_EQ(Request().defaultExtension, L".txt");
    EXPECT_TRUE(std::filesystem::is_empty(folder));
    EXPECT_TRUE(Boxes().empty());
    EXPECT_FALSE(editor->Modified());
}

TEST_F(ExportTest, TheSuggestedNameIsOneThatTheFileSystemTakes) {
    struct Case {
        const wchar_t* first;
        const wchar_t* second;
        const wchar_t* name;
    };
    for (const Case& c : {Case{L"Conveyor 7", L"Sorter head", L"Conveyor 7_Sorter head.txt"},
                          Case{L"A/B\\C:D", L"*?\"<>|\t\x1F", L"A_B_C_D_________.txt"}, Case{L"", L"", L"_.txt"},
                          Case{L"\x00C4rger", L"a.b & c", L"\x00C4rger_a.b & c.txt"}}) {
        bench.host.Application()->exportNameFirst = c.first;
        bench.host.Application()->exportNameSecond = c.second;
        Export();
        EXPECT_EQ(Request().suggestedName, c.name);
    }
}

TEST_F(ExportTest, WritesWhatTheModelHoldsByThen) {
    root.AdvancedFormats().Item(1).Header(L"\x02new");
    const std::string expected = model::FormatStructure(root, bench.state);
    ASSERT_NE(expected.find("Header:     <STX>new (02 6E 65 77)\r\n"), std::string::npos);
    std::ofstream(folder / "plain.txt") << std::string(100000, 'x');
    Choose(folder / "plain.txt");
    Export();
    EXPECT_EQ(Bytes(folder / "plain.txt"), expected) << "what stood there before is gone";
    EXPECT_TRUE(Boxes().empty());
    Choose(folder / "not sent.txt");
    for (model::AdvancedFormat& format : root.AdvancedFormats())
        format.Transports(0);
    Export();
    EXPECT_TRUE(std::filesystem::exists(folder / "not sent.txt"));
    EXPECT_EQ(Bytes(folder / "not sent.txt"), "");
}

TEST_F(ExportTest, WhatIsBeingTypedIsStoredFirst) {
    Box(L"mbeHeader").TypeText(L"A");
    Export();
    EXPECT_EQ(root.StandardFormat().Header().front(), L'A');
    Box(L"mbeHeader").TypeText(L"B");
    bench.host.Gate().FailNamed("SupportObject.BytesToText", 1, 42, L"no");
    Export();
    EXPECT_EQ(bench.platform.desktop.saveFileRequests.size(), 1u) << "what cannot be stored is said first";
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, L"AddOnControl.mbeHeader_Validate\n42: no");
}

TEST_F(ExportTest, AFailureIsShownUnderTheButtonsName) {
    Choose(folder / "no such folder" / "file.txt");
    Export();
    ASSERT_EQ(Boxes().size(), 1u);
    const std::wstring told = (folder / "no such folder" / "file.txt").wstring() + L" cannot be written: ";
    EXPECT_EQ(Boxes()[0].text.substr(0, 33 + told.size()), L"AddOnControl.cmdExport_Click\n75: " + told);
    EXPECT_GT(Boxes()[0].text.size(), 33 + told.size()) << "the system's reason";
    bench.host.Gate().FailNamed("HostApplication.ExportNameSecond", 1, 42, L"no name");
    Export();
    ASSERT_EQ(Boxes().size(), 2u);
    EXPECT_EQ(Boxes()[1].text, L"AddOnControl.cmdExport_Click\n42: no name");
    bench.host.Gate().Before("HostApplication.ExportNameFirst", [this] { bench.state.application = nullptr; });
    Choose(folder / "while the host unregisters.txt");
    Export();
    EXPECT_TRUE(std::filesystem::exists(folder / "while the host unregisters.txt"));
    ASSERT_EQ(Boxes().size(), 2u);
    Export();
    ASSERT_EQ(Boxes().size(), 3u);
    EXPECT_EQ(Boxes()[2].text, L"AddOnControl.cmdExport_Click\n91: Object variable not set");
}

TEST_F(ExportTest, AFailureInTheMiddleLeavesTheOldFile) {
    std::ofstream(folder / "kept.txt") << "old";
    Choose(folder / "kept.txt");
    bench.host.Gate().FailNamed("SupportObject.HexByte", 2, 42, L"no");
    Export();
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Bytes(folder / "kept.txt"), "old");
}

} // namespace
} // namespace orv::editor
