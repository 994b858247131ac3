#include "mb_edit_fixture.h"

#include <string>
#include <utility>

#include "controls/win32/clipboard.h"

namespace orv::tests {
namespace {

/// As the system's own services write into the window: past everything but its class.
LRESULT PastThePeer(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const auto procedure = reinterpret_cast<WNDPROC>(GetClassLongPtrW(window, GCLP_WNDPROC));
    return CallWindowProcW(procedure, window, message, wparam, lparam);
}

DWORD CALLBACK ReadRich(DWORD_PTR cookie, LPBYTE buffer, LONG, LONG* given) {
    std::string& text = *reinterpret_cast<std::string*>(cookie);
    *given = static_cast<LONG>(text.copy(reinterpret_cast<char*>(buffer), text.size()));
    text.clear();
    return 0;
}

TEST_F(MBEditTest, TextThatComesWithoutKeysIsPasted) {
    edit.SetData({'A', 13});
    int changes = 0;
    edit.onChange = [&changes] { ++changes; };
    const auto expect = [&](std::wstring_view text, const Bytes& data) {
        Drain();
        EXPECT_EQ(edit.Text(), text);
        EXPECT_EQ(edit.Data(), data);
        EXPECT_EQ(TextOf(window), edit.Text()) << "the window shows what there is";
        EXPECT_EQ(std::exchange(changes, 0), 1);
    };
    SetWindowTextW(window, L"A b<CR>");
    expect(L"A<Space>b<CR>", {'A', ' ', 'b', 13});
    edit.PointAt(1, false);
    SendMessageW(window, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L"<LF>z"));
    expect(L"A<LF>z<Space>b<CR>", {'A', 10, 'z', ' ', 'b', 13});
    PastThePeer(window, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L"said it"));
    expect(L"A<LF>zsaid<Space>it<Space>b<CR>", {'A', 10, 'z', 's', 'a', 'i', 'd', ' ', 'i', 't', ' ', 'b', 13});
    SETTEXTEX whole{ST_DEFAULT, 1200};
    SendMessageW(window, EM_SETTEXTEX, reinterpret_cast<WPARAM>(&whole), reinterpret_cast<LPARAM>(L"Q<ETX>"));
    expect(L"Q<ETX>", {'Q', 3});
    std::string rich = "{\\rtf1 {\\b Q} W}";
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&rich), 0, &ReadRich};
    SendMessageW(window, EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
    expect(L"Q<Space>W", {'Q', ' ', 'W'});
    CHARRANGE inside{3, 5};
    PastThePeer(window, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&inside));
    PastThePeer(window, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L""));
    expect(L"QW", {'Q', 'W'}); // a name with a hole in it is no name
    edit.SetLocked(true);
    PastThePeer(window, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L"x"));
    SetWindowTextW(window, L"y");
    Drain();
    EXPECT_EQ(TextOf(window), L"QW");
    EXPECT_EQ(changes, 0);
}

TEST_F(MBEditTest, TheClassesOwnKeysAreOff) {
    edit.SetData({'A'});
    for (const WPARAM key : {VK_ESCAPE, VK_RETURN}) {
        PostMessageW(window, WM_KEYDOWN, key, 1);
        Drain();
    }
    ASSERT_TRUE(IsWindow(window));
    EXPECT_TRUE(IsWindow(container.Get()));
    EXPECT_EQ(edit.Data(), (Bytes{27, 13, 'A'}));
    EXPECT_EQ(SendMessageW(window, EM_GETOPTIONS, 0, 0) & ECO_WANTRETURN, 0);
    EXPECT_NE(GetWindowLongPtrW(window, GWL_STYLE) & ES_NOOLEDRAGDROP, 0) << "nothing drops in";
    EXPECT_EQ(SendMessageW(window, EM_CANUNDO, 0, 0), 0) << "the class has nothing of its own to take back";
}

TEST_F(MBEditTest, ClipboardKeepsBytes) {
    controls::win32::SystemClipboard clipboard([this] { return container.Get(); });
    form.SetClipboard(&clipboard);
    edit.SetData({'<', 'C', 'R', '>', 13});
    form.SetFocus(edit);
    SendMessageW(window, EM_SETSEL, 0, -1);
    SendMessageW(window, WM_COPY, 0, 0);
    EXPECT_EQ(clipboard.Get().text, L"<CR><CR>");
    SendMessageW(window, WM_CUT, 0, 0);
    EXPECT_EQ(edit.Data(), Bytes{});
    SendMessageW(window, WM_PASTE, 0, 0);
    EXPECT_EQ(edit.Data(), (Bytes{'<', 'C', 'R', '>', 13}));
    clipboard.Put({L"x<LF>", std::nullopt}); // text of another program
    SendMessageW(window, WM_PASTE, 0, 0);
    EXPECT_EQ(TextOf(window), L"<CR><CR>x<LF>");
    EXPECT_EQ(edit.Data().back(), 10);
    form.SetClipboard(nullptr);
}

TEST_F(MBEditTest, ADamagedBlockOnTheClipboardCountsAsText) {
    controls::win32::SystemClipboard clipboard([this] { return container.Get(); });
    clipboard.Put({L"<CR>", Bytes{13}});
    EXPECT_EQ(clipboard.Get().bytes, Bytes{13});
    const UINT format = RegisterClipboardFormatW(L"OrvOutFormat.Bytes");
    ASSERT_TRUE(OpenClipboard(container.Get()));
    EXPECT_NE(IsClipboardFormatAvailable(format), FALSE);
    EmptyClipboard();
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 8);
    auto* count = static_cast<std::uint32_t*>(GlobalLock(memory));
    *count = 1000; // more than there are
    GlobalUnlock(memory);
    SetClipboardData(format, memory);
    CloseClipboard();
    EXPECT_FALSE(clipboard.Get().bytes.has_value());
}

} // namespace
} // namespace orv::tests
