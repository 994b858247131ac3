#include "mb_edit_fixture.h"

#include <objbase.h>

#include <oleacc.h>

#include "controls/win32/colours.h"

namespace orv::tests {
namespace {

TEST_F(MBEditTest, ALongValueComesInOneGoWithItsColours) {
    edit.SetMaxLength(0);
    Bytes data;
    for (int i = 0; i < 4096; ++i)
        data.push_back(static_cast<std::uint8_t>(i * 37 + i / 256));
    edit.SetData(data);
    std::wstring shown(edit.TextLength() + 1, L'\0');
    shown.resize(static_cast<std::size_t>(GetWindowTextW(window, shown.data(), static_cast<int>(shown.size()))));
    EXPECT_EQ(shown, edit.Text());
    const auto& cells = edit.Core().Cells();
    const COLORREF token = controls::win32::TokenColour(GetSysColor(COLOR_WINDOW));
    for (std::size_t i = 0; i < cells.size(); i += 3001)
        ASSERT_EQ(ColourAt(static_cast<LONG>(i)), cells[i].tokenLength > 1 ? token : GetSysColor(COLOR_WINDOWTEXT))
            << i;
    CHARFORMAT2W usual{};
    usual.cbSize = sizeof usual;
    SendMessageW(window, EM_GETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&usual));
    CHARFORMAT2W present{};
    present.cbSize = sizeof present;
    SendMessageW(window, EM_SETSEL, 0, -1);
    SendMessageW(window, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&present));
    EXPECT_NE(present.dwMask & CFM_SIZE, 0u) << "one size";
    EXPECT_NE(present.dwMask & CFM_FACE, 0u) << "one face";
    EXPECT_EQ(present.yHeight, usual.yHeight);
    EXPECT_STREQ(present.szFaceName, usual.szFaceName);
}

TEST_F(MBEditTest, SeveralLinesWrapAndTheCaretMovesAmongThem) {
    edit.SetBounds({10, 10, 120, 80});
    edit.SetMaxLength(0);
    edit.SetMaskReturn(true);
    for (int i = 0; i < 30; ++i)
        edit.TypeText(L"m");
    edit.PointAt(3, false);
    const HWND former = window;
    edit.SetMultiline(true);
    window = WindowOf(L"mbeHeader");
    Drain();
    EXPECT_NE(window, former);
    EXPECT_FALSE(IsWindow(former));
    EXPECT_EQ(edit.WindowHandle(), reinterpret_cast<std::uintptr_t>(window));
    EXPECT_EQ(GetFocus(), window) << "the focus moves along";
    ExpectSelection(3, 3);
    const auto lineCount = [this] { return SendMessageW(window, EM_GETLINECOUNT, 0, 0); };
    const LRESULT wrapped = lineCount();
    EXPECT_GE(wrapped, 3);
    const auto press = [this](WPARAM key) {
        PostMessageW(window, WM_KEYDOWN, key, 1);
        Drain();
        return edit.Core().Caret();
    };
    const auto length = static_cast<std::size_t>(SendMessageW(window, EM_LINELENGTH, 0, 0));
    EXPECT_EQ(press(VK_DOWN), length + 3);
    EXPECT_EQ(press(VK_END), 2 * length - 1) << "the last place that shows on this line";
    EXPECT_EQ(press(VK_HOME), length);
    EXPECT_EQ(press(VK_UP), 0u);
    EXPECT_EQ(press(VK_RIGHT), 1u);
    EXPECT_EQ(press(VK_RETURN), 2u);
    EXPECT_GT(lineCount(), wrapped) << "a masked Return breaks the line";
    EXPECT_EQ(edit.Data()[1], 13);
    edit.SetMultiline(false);
    window = WindowOf(L"mbeHeader");
    EXPECT_EQ(TextOf(window).substr(0, 3), L"m\u00B6m") << "one line shows the break as a mark";
    edit.Undo();
    edit.Undo();
    EXPECT_EQ(edit.Text(), L"");
    EXPECT_EQ(TextOf(window), L"");
}

TEST_F(MBEditTest, LooksAsItIsTold) {
    edit.SetData({'A', 13});
    const COLORREF usual = ColourAt(0);
    edit.SetLook({.textColor = RGB(1, 2, 3),
                  .specialColor = RGB(200, 0, 0),
                  .backColor = 0x80000000 | COLOR_INFOBK,
                  .borderStyle = 0,
                  .mousePointer = static_cast<int>(PointerShape::Cross),
                  .font = FontChoice{L"Tahoma", 14, true, false}});
    EXPECT_EQ(ColourAt(0), RGB(1, 2, 3));
    EXPECT_EQ(ColourAt(2), RGB(200, 0, 0));
    EXPECT_EQ(static_cast<COLORREF>(SendMessageW(window, EM_SETBKGNDCOLOR, 0, RGB(9, 9, 9))),
              GetSysColor(COLOR_INFOBK));
    EXPECT_EQ(GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_CLIENTEDGE, 0);
    SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_CROSS));
    CHARFORMAT2W format{};
    format.cbSize = sizeof format;
    SendMessageW(window, EM_GETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&format));
    EXPECT_NEAR(format.yHeight, 14 * 20, 10);
    EXPECT_NE(format.dwEffects & CFE_BOLD, 0u);
    edit.SetLook({.mousePointer = static_cast<int>(PointerShape::Icon), .mouseIcon = L"no such file"});
    EXPECT_EQ(ColourAt(0), usual);
    EXPECT_NE(GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_CLIENTEDGE, 0);
    SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_NE(GetCursor(), LoadCursorW(nullptr, IDC_CROSS));
}

TEST_F(MBEditTest, LongContentPatchesFromAnyEdit) {
    unsigned seed = 12345;
    const auto next = [&seed](unsigned below) { return (seed = seed * 1103515245 + 12345) / 65536 % below; };
    edit.SetMaxLength(0);
    for (int step = 0; step < 300; ++step) {
        switch (next(4)) {
        case 0:
            edit.PointAt(next(static_cast<unsigned>(edit.Core().TextLength() + 1)), next(2) == 0);
            break;
        case 1:
            edit.HandleKey({Key::Delete});
            break;
        default:
            edit.InsertCC(static_cast<std::uint8_t>(next(256)));
        }
        ASSERT_EQ(TextOf(window), edit.Text()) << step;
        ASSERT_EQ(static_cast<std::size_t>(Selection().cpMin), edit.Core().SelStart()) << step;
    }
    const auto& cells = edit.Core().Cells();
    for (std::size_t i = 0; i < cells.size(); i += 3)
        ASSERT_EQ(ColourAt(static_cast<LONG>(i)), cells[i].tokenLength > 1
                                                      ? controls::win32::TokenColour(GetSysColor(COLOR_WINDOW))
                                                      : GetSysColor(COLOR_WINDOWTEXT))
            << i;
}

/// Has the window make its accessible object, as a screen reader does.
void AskAccessible(HWND window) {
    void* made = nullptr;
    ASSERT_EQ(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible), &made), S_OK);
    static_cast<IUnknown*>(made)->Release();
}

TEST_F(MBEditTest, SwitchingLooksAndLinesLeavesNoHandles) {
    const auto cycle = [this] {
        edit.SetMultiline(!edit.Multiline());
        edit.SetLook({.backColor = RGB(1, 1, 1), .font = FontChoice{L"Tahoma", 12}});
        AskAccessible(WindowOf(L"mbeHeader"));
        edit.SetData(Bytes(300, 2));
        UpdateWindow(WindowOf(L"mbeHeader"));
        edit.SetLook({});
        Drain();
    };
    for (int i = 0; i < 4; ++i)
        cycle();
    const auto count = [](DWORD kind) { return static_cast<long>(GetGuiResources(GetCurrentProcess(), kind)); };
    const long objects = count(GR_GDIOBJECTS);
    const long windows = count(GR_USEROBJECTS);
    for (int i = 0; i < 20; ++i)
        cycle();
    EXPECT_LE(count(GR_GDIOBJECTS), objects + 2);
    EXPECT_LE(count(GR_USEROBJECTS), windows + 2);
}

} // namespace
} // namespace orv::tests
