#include "fixture.h"

#include <algorithm>

#include <commctrl.h>

#include "controls/combo_box.h"
#include "controls/mb_edit.h"
#include "controls/output_strip.h"
#include "controls/simple_widgets.h"
#include "controls/tree.h"

namespace orv::tests {
namespace {

using namespace controls;

struct HostTest : Windows {
    Frame& first = form.Root().Add<Frame>(L"fraCodeDef");
    Frame& second = form.Root().Add<Frame>(L"fraFormatDef");
    MBEdit& edit = first.Add<MBEdit>(L"mbeHeader");
    ComboBox& combo = first.Add<ComboBox>(L"cboCodeID");
    CheckBox& check = second.Add<CheckBox>(L"chkOptional", 3);
    OutputStrip& strip = first.Add<OutputStrip>(L"ostOutput");
    HostTest() {
        for (Frame* page : {&first, &second}) {
            page->SetCaption(kPageMark);
            page->SetBounds({0, 0, 600, 400});
        }
        second.SetVisible(false);
        first.SetAccessibleName(L"Codes Definition");
        edit.SetBounds({10, 10, 300, 24});
        combo.SetBounds({10, 350, 300, 24});
        strip.SetBounds({10, 60, 300, 24});
        strip.SetCaption(L"Output:");
        strip.SetSegments({{OutputStrip::SegmentKind::Token, L"<STX>"}, {OutputStrip::SegmentKind::Chip, L"Code 1"}});
    }
};

TEST_F(HostTest, PagesGetWindowsWhenTheyAreFirstShown) {
    Show();
    EXPECT_EQ(WindowOf(L"fraFormatDef"), nullptr);
    EXPECT_EQ(WindowOf(L"chkOptional", 3), nullptr);
    second.SetVisible(true);
    EXPECT_TRUE(IsWindowVisible(WindowOf(L"chkOptional", 3)));
    EXPECT_EQ(WindowOf(L"chkOptional"), nullptr) << "the index is part of the name";
    EXPECT_EQ(GetParent(WindowOf(L"chkOptional", 3)), WindowOf(L"fraFormatDef"));
}

TEST_F(HostTest, WindowTextsTellScreenReadersMore) {
    Show();
    EXPECT_EQ(TextOf(WindowOf(L"fraCodeDef")), L"Codes Definition") << "never the mark of a page";
    EXPECT_EQ(TextOf(WindowOf(L"ostOutput")), L"Output: <STX> [Code 1]");
    strip.SetSegments({});
    EXPECT_EQ(TextOf(WindowOf(L"ostOutput")), L"Output:");
}

TEST_F(HostTest, WindowsAreFoundByNameFromOutside) {
    Show();
    const ATOM name = AddAtomW(L"mbeHeader");
    const LRESULT found = SendMessageW(container.Get(), RegisterWindowMessageW(L"OrvFindControl"), name, -1);
    DeleteAtom(name);
    EXPECT_NE(found, 0);
    EXPECT_EQ(reinterpret_cast<HWND>(found), WindowOf(L"mbeHeader"));
}

TEST_F(HostTest, RemakingKeepsStateFocusAndIds) {
    int layouts = 0;
    hooks.layout = [&] { ++layouts; };
    combo.SetEntries({{L"Disabled", 0}, {L"Custom", 2}});
    combo.SetSelected(1);
    edit.SetData({'A', 13});
    Show();
    form.SetFocus(edit);
    edit.PointAt(5, true);
    const HWND before = WindowOf(L"mbeHeader");
    const int id = GetDlgCtrlID(before);
    int lost = 0;
    edit.onLostFocus = [&] { ++lost; };
    for (const UINT message : {static_cast<UINT>(WM_DPICHANGED_AFTERPARENT), static_cast<UINT>(WM_THEMECHANGED)})
        SendMessageW(container.Get(), message, 0, 0);
    const HWND after = WindowOf(L"mbeHeader");
    EXPECT_FALSE(IsWindow(before));
    EXPECT_EQ(layouts, 3);
    EXPECT_EQ(TextOf(after), L"A<CR>");
    DWORD from = 9;
    DWORD to = 9;
    SendMessageW(after, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    EXPECT_EQ(from, 0u);
    EXPECT_EQ(to, 5u);
    EXPECT_EQ(SendMessageW(WindowOf(L"cboCodeID"), CB_GETCURSEL, 0, 0), 1);
    EXPECT_EQ(GetDlgCtrlID(after), id);
    EXPECT_EQ(GetFocus(), after);
    EXPECT_EQ(form.Focused(), &edit);
    EXPECT_EQ(lost, 0) << "windows that are replaced take no focus away";
}

TEST_F(HostTest, ScrollsToTheFocusAndWithTheWheel) {
    first.SetBounds({0, 0, 600, 200});
    first.SetContent({580, 380}, GetSystemMetrics(SM_CXVSCROLL));
    Show();
    const HWND page = WindowOf(L"fraCodeDef");
    EXPECT_TRUE(GetWindowLongW(page, GWL_STYLE) & WS_VSCROLL);
    EXPECT_FALSE(GetWindowLongW(page, GWL_STYLE) & WS_HSCROLL);
    form.SetFocus(combo);
    EXPECT_EQ(GetScrollPos(page, SB_VERT), first.Scroll().y);
    RECT place{};
    GetWindowRect(WindowOf(L"cboCodeID"), &place);
    RECT view{};
    GetWindowRect(page, &view);
    EXPECT_LE(place.bottom, view.bottom);
    SendMessageW(WindowOf(L"mbeHeader"), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(20 * WHEEL_DELTA)), 0);
    EXPECT_EQ(first.Scroll().y, 0) << "the wheel over a field turns the page";
    SendMessageW(page, WM_VSCROLL, SB_PAGEDOWN, 0);
    EXPECT_GT(first.Scroll().y, 0);
    first.SetBounds({0, 0, 600, 400});
    first.SetContent({580, 380}, GetSystemMetrics(SM_CXVSCROLL));
    EXPECT_FALSE(GetWindowLongW(page, GWL_STYLE) & WS_VSCROLL);
}

std::vector<COLORREF> Pixels(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    const HDC dc = GetDCEx(window, nullptr, DCX_CACHE); // the children's pixels as well
    std::vector<COLORREF> pixels;
    for (int y = 0; y < client.bottom; ++y)
        for (int x = 0; x < client.right; x += 3)
            pixels.push_back(GetPixel(dc, x, y));
    ReleaseDC(window, dc);
    EXPECT_EQ(std::count(pixels.begin(), pixels.end(), CLR_INVALID), 0);
    return pixels;
}

/// Whether the window looks as it does when all of it is painted anew.
bool LeftNoTraces(HWND window) {
    UpdateWindow(window);
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    const std::vector<COLORREF> seen = Pixels(window);
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    return seen == Pixels(window);
}

TEST_F(HostTest, WhatMovesLeavesNoTraces) {
    std::vector<Frame*> options;
    for (int i = 0; i < 4; ++i) {
        Frame& box = *options.emplace_back(&first.Add<Frame>(L"fraOptions", i));
        box.SetGroupBox(true);
        box.SetCaption(L"Options");
        box.SetBounds({320, 80 * i, 240, 74});
        box.Add<CheckBox>(L"chkOption", i).SetBounds({10, 20, 200, 20});
    }
    first.SetBounds({0, 0, 600, 200});
    first.SetContent({580, 380}, GetSystemMetrics(SM_CXVSCROLL));
    Show();
    const HWND page = WindowOf(L"fraCodeDef");
    EXPECT_TRUE(LeftNoTraces(page));
    for (const int to : {155, 160, 30, 175}) {
        first.ScrollTo({0, 125}); // the combo box is out of sight,
        EXPECT_TRUE(LeftNoTraces(page));
        first.ScrollTo({0, to}); // peeps in and goes on before anything is painted
        first.ScrollTo({0, 178});
        EXPECT_TRUE(LeftNoTraces(page)) << to;
    }
    for (Frame* box : options) // down, the upper ones first: over those that are still to go
        box->SetBounds({320, box->Bounds().y + 50, 240, 74});
    EXPECT_TRUE(LeftNoTraces(page));
    options[1]->SetVisible(false);
    options[2]->SetBounds({320, 130, 240, 100});
    EXPECT_TRUE(LeftNoTraces(page));
}

TEST_F(HostTest, FocusActivatesAndLeavesForNeighboursOnly) {
    int activated = 0;
    hooks.activate = [&] { ++activated; };
    Show();
    ::SetFocus(WindowOf(L"mbeHeader"));
    EXPECT_EQ(form.Focused(), &edit);
    EXPECT_EQ(activated, 1);
    const platform::win32::OwnedWindow box(CreateWindowExW(0, L"EDIT", L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50,
                                                           container.Get(), nullptr, nullptr, nullptr));
    ::SetFocus(box.Get());
    EXPECT_EQ(form.Focused(), &edit) << "a box of ours only borrows the focus";
    ::SetFocus(container.Get()); // the container hands the focus to the control's window
    EXPECT_EQ(GetFocus(), WindowOf(L"mbeHeader"));
    const platform::win32::OwnedWindow neighbour(CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 700, 0, 50, 50,
                                                                 container.Get(), nullptr, nullptr, nullptr));
    SetParent(neighbour.Get(), container.Get());
    EXPECT_EQ(form.Focused(), &edit);
}

TEST_F(HostTest, MeasuresWithTheFontItDrawsWith) {
    Show();
    EXPECT_GT(host->Width(L"Separator"), host->Width(L"Sep"));
    EXPECT_EQ(host->Width(L""), 0);
    EXPECT_GE(host->LineHeight(), 10);
    EXPECT_EQ(reinterpret_cast<HFONT>(SendMessageW(WindowOf(L"cboCodeID"), WM_GETFONT, 0, 0)), host->Font());
}

} // namespace
} // namespace orv::tests
