#include "fixture.h"

#include <richedit.h>

#include "controls/mb_edit.h"
#include "controls/simple_widgets.h"
#include "controls/win32/clipboard.h"
#include "controls/win32/colours.h"

namespace orv::tests {
namespace {

using namespace controls;

struct MBEditTest : Windows {
    MBEdit& edit = form.Root().Add<MBEdit>(L"mbeHeader");
    DropButton& names = form.Root().Add<DropButton>(L"cmdNames");
    HWND window = nullptr;
    MBEditTest() {
        edit.SetBounds({10, 10, 400, 26});
        names.SetBounds({412, 10, 22, 26});
        edit.Attach(&names, nullptr);
        edit.SetMaxLength(128);
        Show();
        window = WindowOf(L"mbeHeader");
        form.SetFocus(edit);
        Drain();
    }
    void Type(std::wstring_view characters) {
        for (wchar_t character : characters)
            PostMessageW(window, WM_CHAR, character, 1);
        Drain();
    }
    POINT PointOf(int position) const {
        POINTL place{};
        SendMessageW(window, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), position);
        return {place.x, place.y + 4};
    }
    void Mouse(UINT message, WPARAM keys, POINT place) {
        PostMessageW(window, message, keys, MAKELPARAM(place.x, place.y));
        Drain();
    }
    CHARRANGE Selection() const {
        CHARRANGE range{};
        SendMessageW(window, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
        return range;
    }
    void ExpectSelection(LONG from, LONG to) const {
        EXPECT_EQ(Selection().cpMin, from);
        EXPECT_EQ(Selection().cpMax, to);
    }
    COLORREF ColourAt(LONG position) const {
        const CHARRANGE kept = Selection();
        CHARRANGE range{position, position + 1};
        CHARFORMAT2W format{};
        format.cbSize = sizeof format;
        SendMessageW(window, EM_SETEVENTMASK, 0, 0);
        SendMessageW(window, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
        SendMessageW(window, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
        range = kept;
        SendMessageW(window, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
        SendMessageW(window, EM_SETEVENTMASK, 0, ENM_SELCHANGE);
        return format.crTextColor;
    }
};

TEST_F(MBEditTest, TypedCharactersPassThroughTheCore) {
    for (const bool careful : {true, false}) {
        translates = careful; // a careless container leaves the keys to the windows
        edit.SetData({});
        Type(L"A \rB\x02");
        EXPECT_EQ(TextOf(window), L"A<Space><CR>B<STX>");
        EXPECT_EQ(edit.Data(), (Bytes{'A', ' ', 13, 'B', 2}));
        PostMessageW(window, WM_KEYDOWN, VK_BACK, 1);
        Drain();
        EXPECT_EQ(TextOf(window), L"A<Space><CR>B") << "one key, one step";
        PostMessageW(window, WM_KEYDOWN, VK_RETURN, 1);
        Drain();
        EXPECT_EQ(TextOf(window), L"A<Space><CR>B<CR>") << "the character behind the key is not a second one";
    }
}

TEST_F(MBEditTest, TokensHaveTheirOwnSystemColour) {
    edit.SetData({'A', 13, 'B'});
    const COLORREF token = controls::win32::TokenColour(GetSysColor(COLOR_WINDOW));
    EXPECT_NE(token, GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(ColourAt(0), GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(ColourAt(1), token);
    EXPECT_EQ(ColourAt(4), token);
    EXPECT_EQ(ColourAt(5), GetSysColor(COLOR_WINDOWTEXT));
    Type(L"<CR>"); // four bytes that look like one token are none
    EXPECT_EQ(TextOf(window), L"<CR>A<CR>B");
    EXPECT_EQ(ColourAt(1), GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(ColourAt(5), token);
}

TEST_F(MBEditTest, ColoursFollowTheSystem) {
    edit.SetData({'A', 13});
    const INT elements[] = {COLOR_WINDOW, COLOR_WINDOWTEXT, COLOR_HOTLIGHT};
    COLORREF former[3] = {};
    for (int i = 0; i < 3; ++i)
        former[i] = GetSysColor(elements[i]);
    const COLORREF contrast[] = {RGB(0, 0, 0), RGB(255, 255, 0), RGB(0, 255, 0)};
    const COLORREF token = ColourAt(2);
    ASSERT_TRUE(SetSysColors(3, elements, contrast));
    SendMessageW(container.Get(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(ColourAt(0), contrast[1]);
    EXPECT_EQ(ColourAt(2), contrast[2]);
    // A colour that nobody could read gives way.
    const INT followed[] = {COLOR_HOTLIGHT};
    const COLORREF hidden[] = {RGB(10, 10, 10)};
    SetSysColors(1, followed, hidden);
    SendMessageW(container.Get(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(ColourAt(2), contrast[1]);
    SetSysColors(3, elements, former);
    SendMessageW(container.Get(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(ColourAt(2), token);
    edit.SetEnabled(false);
    EXPECT_EQ(ColourAt(2), GetSysColor(COLOR_GRAYTEXT));
}

TEST_F(MBEditTest, PointerSelectsWholeTokens) {
    edit.SetData({'A', 13, 10, 'B'}); // A<CR><LF>B
    Mouse(WM_LBUTTONDOWN, MK_LBUTTON, PointOf(1));
    ExpectSelection(1, 1);
    Mouse(WM_MOUSEMOVE, MK_LBUTTON, PointOf(4)); // near the end of <CR>
    ExpectSelection(1, 5);
    Mouse(WM_MOUSEMOVE, MK_LBUTTON, PointOf(8));
    Mouse(WM_LBUTTONUP, 0, PointOf(8));
    ExpectSelection(1, 9);
    EXPECT_EQ(edit.Core().SelLength(), 8u);
    EXPECT_NE(GetCapture(), window);
    PostMessageW(window, WM_KEYDOWN, VK_DELETE, 1);
    Drain();
    EXPECT_EQ(TextOf(window), L"AB");
    EXPECT_EQ(edit.Data(), (Bytes{'A', 'B'}));
}

TEST_F(MBEditTest, DoubleClickAndForeignSelectionSnap) {
    edit.SetData({'A', 13, 'B'});
    Mouse(WM_LBUTTONDBLCLK, MK_LBUTTON, PointOf(3));
    ExpectSelection(1, 5);
    SendMessageW(window, EM_SETSEL, 0, 2); // as a screen reader does
    Drain();
    const CHARRANGE range = Selection();
    EXPECT_EQ(range.cpMin, 0);
    EXPECT_TRUE(range.cpMax == 1 || range.cpMax == 5) << range.cpMax;
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

TEST_F(MBEditTest, NobodyElseEditsTheWindow) {
    edit.SetData({'A', 13});
    SetWindowTextW(window, L"text without bytes");
    PostMessageW(window, WM_KEYDOWN, VK_ESCAPE, 1);
    Drain();
    EXPECT_TRUE(IsWindow(window));
    EXPECT_EQ(TextOf(window), edit.Text());
    EXPECT_EQ(edit.Data().size() == 3 ? edit.Data()[0] : 0, 27) << "Escape is data";
    SendMessageW(window, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L" z"));
    EXPECT_EQ(TextOf(window), edit.Text());
    EXPECT_EQ(edit.Text(), L"<ESC><Space>zA<CR>");
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

TEST_F(MBEditTest, NameMenuInsertsAToken) {
    names.Open();
    // The menu's own loop runs until it has its answer: keys come from its queue.
    for (WPARAM key : {VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN})
        PostMessageW(WindowOf(L"cmdNames"), WM_KEYDOWN, key, 1);
    ASSERT_TRUE(Within([this] { return edit.Core().TextLength() > 0; }));
    EXPECT_EQ(TextOf(window), L"<STX>");
    EXPECT_EQ(form.Focused(), &edit);
}

} // namespace
} // namespace orv::tests
