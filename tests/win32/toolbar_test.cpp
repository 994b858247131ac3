#include "controls/toolbar.h"

#include "fixture.h"

#include <commctrl.h>

#include "controls/picture_list.h"
#include "controls/simple_widgets.h"

namespace orv::tests {
namespace {

using namespace controls;

struct ToolbarTest : Windows {
    Toolbar& types = form.Root().Add<Toolbar>(L"tbrCodeType");
    Toolbar& palette = form.Root().Add<Toolbar>(L"tbrCodeRel");
    PictureList& list = form.Root().Add<PictureList>(L"pls");
    std::wstring events;
    ToolbarTest() {
        types.SetButtonWidth(105);
        std::vector<Toolbar::Button> buttons;
        for (const wchar_t* key : {L"NONE", L"Code 39", L"ITF 2/5", L"EAN", L"A & B"})
            buttons.push_back({key, key, L"Barcode", L"", L"", true, false, 1});
        types.SetButtons(std::move(buttons));
        palette.SetPalette(true);
        palette.SetButtons(
            {{L"CODE", L"Code", L"CODE", L"The code itself", L""},
             {L"LENGTH", L"Length", L"LENGTH", L"", L""},
             {L"OLD", L"A caption that is far too long to show", L"OLD", L"not on this device", L"", false}});
        types.onClick = [this](const Toolbar::Button& button) { events += button.key + L" "; };
        palette.onActivate = [this](const Toolbar::Button& button) { events += L"take:" + button.key + L" "; };
        list.onDrop = [this](const std::wstring& key, int gap) { events += key + L"@" + std::to_wstring(gap) + L" "; };
        hooks.layout = [this] {
            types.SetBounds({10, 10, 3 * host->Scale(105) + 5, types.MinimumSize(*host).height});
            palette.MinimumSize(*host);
            palette.SetBounds({10, 200, host->Scale(150), 3 * palette.PlaceOf(0).height});
        };
        list.SetBounds({300, 200, 200, 200});
        Show();
    }
    POINT Middle(HWND window, int button) const {
        RECT place{};
        SendMessageW(window, TB_GETITEMRECT, static_cast<WPARAM>(button), reinterpret_cast<LPARAM>(&place));
        return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
    }
    void ClickOn(std::wstring_view name, int button) {
        const POINT at = Middle(WindowOf(name), button);
        PostClick(WindowOf(name), at.x, at.y);
        Drain();
    }
    static bool Is(HWND window, int button, BYTE state) {
        return (SendMessageW(window, TB_GETSTATE, static_cast<WPARAM>(button + 1), 0) & state) != 0;
    }
    /// From a button of the palette to the middle of the list, the pointer held down at the end.
    void DragToTheList(int button, UINT press) {
        const HWND window = WindowOf(L"tbrCodeRel");
        const POINT at = Middle(window, button);
        POINT over{100, 100};
        MapWindowPoints(WindowOf(L"pls"), window, &over, 1);
        PostMessageW(window, press, MK_LBUTTON, MAKELPARAM(at.x, at.y));
        PostMessageW(window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(at.x + 20, at.y));
        PostMessageW(window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(over.x, over.y));
        Drain();
    }
    void LetGoOverTheList() {
        const HWND window = WindowOf(L"tbrCodeRel");
        POINT over{100, 100};
        MapWindowPoints(WindowOf(L"pls"), window, &over, 1);
        PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(over.x, over.y));
        Drain();
    }
};

TEST_F(ToolbarTest, ButtonsStandWhereTheWidgetPlacesThem) {
    for (Toolbar* bar : {&types, &palette}) {
        const HWND window = WindowOf(bar->Name());
        for (int button = 0; button < static_cast<int>(bar->Buttons().size()); ++button) {
            RECT shown{};
            SendMessageW(window, TB_GETITEMRECT, static_cast<WPARAM>(button), reinterpret_cast<LPARAM>(&shown));
            const Rect place{static_cast<int>(shown.left), static_cast<int>(shown.top),
                             static_cast<int>(shown.right - shown.left), static_cast<int>(shown.bottom - shown.top)};
            EXPECT_EQ(place, bar->PlaceOf(button))
                << button << ": " << place.x << "," << place.y << " " << place.width << "x" << place.height;
        }
    }
    types.SetBounds({10, 10, 2 * host->Scale(105), 200});
    RECT third{};
    SendMessageW(WindowOf(L"tbrCodeType"), TB_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&third));
    EXPECT_EQ(third.left, 0) << "narrower: another row";
    wchar_t text[64] = {};
    SendMessageW(WindowOf(L"tbrCodeType"), TB_GETBUTTONTEXTW, 5, reinterpret_cast<LPARAM>(text));
    EXPECT_STREQ(text, L"A & B");
}

TEST_F(ToolbarTest, ClicksPressOneOfTheGroup) {
    const HWND window = WindowOf(L"tbrCodeType");
    types.SetPressed(L"NONE");
    EXPECT_TRUE(Is(window, 0, TBSTATE_CHECKED));
    ClickOn(L"tbrCodeType", 3);
    EXPECT_TRUE(Is(window, 3, TBSTATE_CHECKED));
    EXPECT_FALSE(Is(window, 0, TBSTATE_CHECKED));
    types.SetButtonEnabled(L"ITF 2/5", false, L"not on this device");
    EXPECT_FALSE(Is(window, 2, TBSTATE_ENABLED));
    ClickOn(L"tbrCodeType", 2);
    PostMessageW(window, WM_KEYDOWN, VK_LEFT, 1);
    PostMessageW(window, WM_KEYDOWN, VK_RETURN, 1);
    Drain();
    EXPECT_EQ(events, L"EAN Code 39 ");
    EXPECT_TRUE(Is(window, 1, TBSTATE_CHECKED));
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    Drain();
    EXPECT_TRUE(Is(window, 0, TBSTATE_PRESSED));
    SendMessageW(window, WM_CAPTURECHANGED, 0, 0);
    EXPECT_FALSE(Is(window, 0, TBSTATE_PRESSED)) << "the pointer was taken away";
    PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    Drain();
    EXPECT_EQ(events, L"EAN Code 39 ");
}

TEST_F(ToolbarTest, APaletteIsDraggedTwiceInQuickSuccession) {
    DragToTheList(0, WM_LBUTTONDOWN);
    EXPECT_EQ(GetCapture(), WindowOf(L"tbrCodeRel"));
    LetGoOverTheList();
    EXPECT_EQ(GetCapture(), nullptr);
    DragToTheList(1, WM_LBUTTONDBLCLK);
    LetGoOverTheList();
    EXPECT_EQ(events, L"CODE@0 LENGTH@0 ");
    DragToTheList(0, WM_LBUTTONDOWN);
    PostMessageW(WindowOf(L"tbrCodeRel"), WM_KEYDOWN, VK_ESCAPE, 1);
    Drain();
    LetGoOverTheList();
    DragToTheList(0, WM_LBUTTONDOWN);
    PostMessageW(WindowOf(L"tbrCodeRel"), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 5));
    Drain();
    EXPECT_EQ(GetCapture(), nullptr);
    LetGoOverTheList();
    DragToTheList(2, WM_LBUTTONDOWN);
    LetGoOverTheList();
    EXPECT_EQ(events, L"CODE@0 LENGTH@0 ") << "cancelled, and not available";
    const POINT at = Middle(WindowOf(L"tbrCodeRel"), 1);
    PostMessageW(WindowOf(L"tbrCodeRel"), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(at.x, at.y));
    PostMessageW(WindowOf(L"tbrCodeRel"), WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
    Drain();
    EXPECT_EQ(events, L"CODE@0 LENGTH@0 take:LENGTH ");
}

TEST_F(ToolbarTest, WindowsMayGoWhileOneIsDragged) {
    DragToTheList(0, WM_LBUTTONDOWN);
    host->Remake();
    EXPECT_FALSE(palette.Drag().Active());
    DragToTheList(0, WM_LBUTTONDOWN);
    list.onDrop = [this](const std::wstring&, int) { host->Detach(); };
    LetGoOverTheList();
    EXPECT_FALSE(host->Attached());
}

TEST_F(ToolbarTest, TipsTellReasonsAndWhatIsCut) {
    const auto tip = [this](int button) {
        wchar_t text[256] = {};
        NMTBGETINFOTIPW request{};
        request.hdr = {WindowOf(L"tbrCodeRel"), 0, TBN_GETINFOTIPW};
        request.pszText = text;
        request.cchTextMax = 256;
        request.iItem = button + 1;
        SendMessageW(WindowOf(L"Root"), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&request));
        return std::wstring(text);
    };
    EXPECT_EQ(tip(0), L"The code itself");
    EXPECT_EQ(tip(1), L"");
    EXPECT_EQ(tip(2), L"A caption that is far too long to show\r\nnot on this device");
}

} // namespace
} // namespace orv::tests
