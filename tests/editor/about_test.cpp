#include "fixture.h"

namespace orv::editor {
namespace {

using controls::Dialog;
using Key = std::pair<std::wstring, std::wstring>;

const Key kPath{L"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", L"PATH"};
const Key kFolder{L"SOFTWARE\\Microsoft\\Shared Tools Location", L"MSINFO"};
constexpr wchar_t kUnavailable[] = L"System Information Is Unavailable At This Time";

struct AboutTest : test::EditorFixture {
    sim::FakeDesktop& desktop = bench.platform.desktop;
    void Open(std::function<void(Dialog&)> act) {
        inDialog.push_back(std::move(act));
        Button(L"cmdAbout").Press();
        EXPECT_TRUE(inDialog.empty());
    }
    static controls::Widget& In(Dialog& dialog, const wchar_t* name) { return *dialog.Form().Root().Find(name); }
    static void Press(Dialog& dialog, const wchar_t* name) {
        dynamic_cast<controls::Button&>(In(dialog, name)).Press();
    }
};

TEST_F(AboutTest, NamesTheVersionOfTheComponent) {
    for (const auto& [version, text] :
         std::vector<std::pair<platform::Version, std::wstring>>{{{1, 2, 0}, L"Version 1.02"},
                                                                 {{0, 1, 7}, L"Version 0.01.0007"},
                                                                 {{10, 0, 12345}, L"Version 10.00.12345"},
                                                                 {{3, 123, 0}, L"Version 3.123"}}) {
        desktop.version = version;
        Open([&](Dialog& dialog) {
            EXPECT_EQ(dialog.Title(), L"About Output Format Addon");
            EXPECT_EQ(In(dialog, L"lblTitle").Caption(), L"Output Format Addon");
            EXPECT_EQ(In(dialog, L"lblVersion").Caption(), text);
            dialog.RouteKey({.key = controls::Key::Return});
        });
    }
    EXPECT_FALSE(editor->Modified());
}

TEST_F(AboutTest, FindsTheSystemsInformationInEitherPlace) {
    struct Case {
        const char* what;
        std::map<Key, std::wstring> registry;
        std::set<std::wstring> files;
        std::wstring started; ///< empty: unavailable
    };
    for (const Case& c : {
             Case{"neither value", {}, {}, {}},
             Case{"the whole path", {{kPath, L"C:\\Tools\\info.exe"}, {kFolder, L"D:"}}, {}, L"C:\\Tools\\info.exe"},
             Case{"the folder", {{kFolder, L"D:\\Info"}}, {L"D:\\Info\\MSINFO32.EXE"}, L"D:\\Info\\MSINFO32.EXE"},
             Case{"the folder without the file", {{kFolder, L"D:\\Info"}}, {L"D:\\Info\\OTHER.EXE"}, {}},
             Case{"blanks in the path", {{kPath, L"C:\\My Tools\\info.exe"}}, {}, L"C:\\My Tools\\info.exe"},
             Case{"quotes round it", {{kPath, L"\"C:\\My Tools\\info.exe\""}}, {}, L"C:\\My Tools\\info.exe"},
             Case{"a command line", {{kPath, L"\"C:\\Tools\\info.exe\" /x"}}, {}, {}},
             Case{"a name alone", {{kPath, L"info.exe"}}, {}, {}},
             Case{"relative", {{kPath, L"..\\info.exe"}}, {}, {}},
             Case{"of the present drive", {{kPath, L"\\Tools\\info.exe"}}, {}, {}},
             Case{"of the drive's present folder", {{kPath, L"C:info.exe"}}, {}, {}},
             Case{"of another machine", {{kPath, L"\\\\server\\share\\info.exe"}}, {}, {}},
             Case{"an address", {{kPath, L"http://server/info.exe"}}, {}, {}},
             Case{"a number", {{kPath, L"&h1F"}}, {}, {}},
             Case{"nothing in it", {{kPath, L""}}, {}, {}},
             Case{"not full, the folder is",
                  {{kPath, L"info.exe"}, {kFolder, L"\"D:\\In fo\""}},
                  {L"D:\\In fo\\MSINFO32.EXE"},
                  L"D:\\In fo\\MSINFO32.EXE"},
             Case{"a folder that is not full", {{kFolder, L"Info"}}, {L"Info\\MSINFO32.EXE"}, {}},
         }) {
        SCOPED_TRACE(c.what);
        bench.platform.registry.values = c.registry;
        desktop.files = c.files;
        desktop.started.clear();
        bench.platform.boxes.shown.clear();
        Open([](Dialog& dialog) {
            Press(dialog, L"cmdSysInfo");
            EXPECT_FALSE(dialog.Closed());
            Press(dialog, L"cmdOK");
        });
        if (!c.started.empty()) {
            EXPECT_EQ(desktop.started, std::vector{c.started});
            EXPECT_TRUE(Boxes().empty());
            continue;
        }
        EXPECT_TRUE(desktop.started.empty());
        ASSERT_EQ(Boxes().size(), 1u);
        EXPECT_EQ(Boxes()[0].text, kUnavailable);
        EXPECT_EQ(Boxes()[0].title, L"Output Format Addon");
        EXPECT_EQ(Boxes()[0].buttons, platform::Buttons::Ok);
    }
}

} // namespace
} // namespace orv::editor
