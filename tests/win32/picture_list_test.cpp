#include "fixture.h"

#include <chrono>

#include <commctrl.h>

#include "controls/picture_list.h"
#include "controls/simple_widgets.h"
#include "platform/win32/module.h"

namespace orv::tests {
namespace {

using namespace controls;

struct PictureListTest : Windows {
    Button& before = form.Root().Add<Button>(L"cmdBefore");
    PictureList& list = form.Root().Add<PictureList>(L"pls");
    DragBroker drag{before};
    HWND window = nullptr;
    std::vector<std::wstring> captions;
    std::vector<std::wstring> events;

    PictureListTest() {
        before.SetBounds({300, 10, 80, 24});
        before.SetCaption(L"Before");
        list.SetBounds({10, 10, 220, 200});
        list.SetAccessibleName(L"Items");
        list.SetEmptyText(L"Drag items here.");
        Fill({L"Code", L"Length", L"Code position in the conveyor's running direction", L"Time of day"});
        list.onSelect = [this] { Say(L"select", list.Selected() + 1); };
        list.onActivate = [this](int item) { Say(L"activate", item); };
        list.onDelete = [this](int item) {
            Say(L"delete", item);
            captions.erase(captions.begin() + item - 1);
            Fill(captions);
        };
        list.onMove = [this](int item, int to) {
            Say(L"move " + std::to_wstring(item), to);
            const std::wstring moved = captions[static_cast<std::size_t>(item - 1)];
            captions.erase(captions.begin() + item - 1);
            captions.insert(captions.begin() + (to > item ? to - 2 : to - 1), moved);
            Fill(captions);
        };
        list.onDrop = [this](const std::wstring& key, int gap) { Say(L"drop " + key, gap); };
        Show();
        form.SetFocus(list);
        window = WindowOf(L"pls");
    }
    void Say(const std::wstring& what, int number) { events.push_back(what + L" " + std::to_wstring(number)); }
    void Fill(std::vector<std::wstring> texts) {
        captions = std::move(texts);
        std::vector<PictureList::Row> rows;
        for (std::size_t i = 0; i < captions.size(); ++i)
            rows.push_back({std::to_wstring(i + 1), L"Code", captions[i], L"", i == 1});
        list.SetRows(std::move(rows));
    }
    RECT RowRect(int row) const {
        RECT area{};
        ListView_GetItemRect(window, row, &area, LVIR_BOUNDS);
        return area;
    }
    int Middle(int row) const { return static_cast<int>(RowRect(row).top + RowRect(row).bottom) / 2; }
    std::wstring Text(int row) const {
        wchar_t text[128] = {};
        ListView_GetItemText(window, row, 0, text, 128);
        return text;
    }
    int SelectedRow() const { return ListView_GetNextItem(window, -1, LVNI_SELECTED); }
    void Post(UINT message, int x, int y) const {
        PostMessageW(window, message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(x, y));
    }
    void Key(WPARAM key) {
        PostMessageW(window, WM_KEYDOWN, key, 1);
        Drain();
    }
    /// What the window shows in its middle column of pixels, from top to bottom.
    std::vector<COLORREF> Column(int x) const {
        UpdateWindow(window);
        const platform::win32::WindowDc dc(window);
        std::vector<COLORREF> colours;
        RECT client{};
        GetClientRect(window, &client);
        for (int y = 0; y < client.bottom; ++y)
            colours.push_back(GetPixel(dc.Get(), x, y));
        return colours;
    }
};

TEST_F(PictureListTest, ShowsRowsSelectionAndScrolling) {
    EXPECT_EQ(ListView_GetItemCount(window), 4);
    EXPECT_EQ(Text(1), L"2 Length") << "for screen readers";
    EXPECT_EQ(RowRect(0).bottom - RowRect(0).top, PictureList::RowHeight(*host)) << "what the list adds is taken off";
    RECT client{};
    GetClientRect(window, &client);
    EXPECT_EQ(ListView_GetColumnWidth(window, 0), client.right);
    list.SetSelected(2);
    EXPECT_EQ(SelectedRow(), 2);
    Fill(std::vector<std::wstring>(60, L"Code"));
    EXPECT_EQ(SelectedRow(), 2) << "kept by position";
    GetClientRect(window, &client);
    EXPECT_EQ(ListView_GetColumnWidth(window, 0), client.right) << "less the scroll bar";
    list.SetSelected(50);
    EXPECT_EQ(ListView_GetTopIndex(window), list.Core().Top());
    EXPECT_LE(RowRect(50).bottom, client.bottom);
    for (int i = 0; i < 20; ++i)
        SendMessageW(window, WM_VSCROLL, SB_PAGEUP, 0);
    EXPECT_EQ(list.Core().Top(), 0);
    SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-2 * WHEEL_DELTA)), 0);
    EXPECT_GT(list.Core().Top(), 0);
    EXPECT_EQ(list.Core().Top(), ListView_GetTopIndex(window));
    EXPECT_TRUE(events.empty());
    list.SetSelected(-1);
    EXPECT_EQ(SelectedRow(), -1);
}

TEST_F(PictureListTest, ClicksAndKeysReachTheWidget) {
    PostClick(window, 50, Middle(1));
    Drain();
    EXPECT_EQ(SelectedRow(), 1);
    EXPECT_EQ(GetFocus(), window);
    Key(VK_DOWN);
    Key(VK_RETURN);
    PostMessageW(window, WM_SYSKEYDOWN, VK_DOWN, 1 | (1 << 29));
    Drain();
    EXPECT_EQ(captions[3], L"Code position in the conveyor's running direction");
    Key(VK_DELETE);
    EXPECT_EQ(events, (std::vector<std::wstring>{L"select 2", L"select 3", L"activate 3", L"move 3 5", L"delete 3"}));
    EXPECT_EQ(ListView_GetItemCount(window), 3);
    EXPECT_EQ(Text(2), L"3 Code position in the conveyor's running direction");
    events.clear();
    PostMessageW(window, WM_CHAR, 'c', 1);
    Drain();
    EXPECT_EQ(events, std::vector<std::wstring>{L"select 1"});
    events.clear();
    ListView_SetItemState(window, 1, LVIS_SELECTED, LVIS_SELECTED); // as an assistive program does
    EXPECT_EQ(events, std::vector<std::wstring>{L"select 2"});
    EXPECT_EQ(list.Selected(), 1);
}

TEST_F(PictureListTest, DoubleClickActivatesUnlessItDrags) {
    PostClick(window, 50, Middle(1));
    Post(WM_LBUTTONDBLCLK, 50, Middle(1));
    Post(WM_LBUTTONUP, 50, Middle(1));
    Drain();
    EXPECT_EQ(events, (std::vector<std::wstring>{L"select 2", L"activate 2"}));
    events.clear();
    Post(WM_LBUTTONDBLCLK, 50, Middle(1));
    Post(WM_MOUSEMOVE, 50, RowRect(0).top);
    Post(WM_LBUTTONUP, 50, RowRect(0).top);
    Drain();
    EXPECT_EQ(events, std::vector<std::wstring>{L"move 2 1"});
}

TEST_F(PictureListTest, ARowIsDraggedBetweenTwoOthersUnderAMark) {
    const int x = 110;
    const int line = static_cast<int>(RowRect(2).bottom);
    Drain();
    const auto at = [this, x](int y) { return Column(x)[static_cast<std::size_t>(y)]; };
    const COLORREF mark = GetSysColor(COLOR_WINDOWTEXT);
    Post(WM_LBUTTONDOWN, x, Middle(0));
    Post(WM_MOUSEMOVE, x, Middle(1));
    Post(WM_MOUSEMOVE, x, line);
    Drain();
    EXPECT_EQ(GetCapture(), window);
    EXPECT_EQ(list.Core().Gap(), 3);
    EXPECT_EQ(at(line), mark) << "between the third and the fourth";
    EXPECT_NE(at(static_cast<int>(RowRect(1).bottom)), mark) << "and nowhere else";
    Post(WM_LBUTTONUP, x, line);
    Drain();
    EXPECT_EQ(events, (std::vector<std::wstring>{L"select 1", L"move 1 4"}));
    EXPECT_EQ(Text(2), L"3 Code");
    EXPECT_NE(at(line), mark);
    EXPECT_NE(GetCapture(), window);
}

TEST_F(PictureListTest, EscapeAndALostCaptureEndADrag) {
    const std::vector<std::wstring> was = captions;
    for (const bool escape : {true, false}) {
        Post(WM_LBUTTONDOWN, 50, Middle(0));
        Post(WM_MOUSEMOVE, 50, Middle(2));
        Drain();
        EXPECT_TRUE(list.Core().Dragging());
        if (escape)
            Key(VK_ESCAPE);
        else
            SetCapture(container.Get());
        EXPECT_FALSE(list.Core().Dragging());
        Post(WM_MOUSEMOVE, 50, Middle(2));
        Post(WM_LBUTTONUP, 50, Middle(2));
        Drain();
        ReleaseCapture();
    }
    EXPECT_EQ(captions, was);
    EXPECT_EQ(events, std::vector<std::wstring>{L"select 1"});
}

TEST_F(PictureListTest, TakesADropAndScrollsWhileThePointerRestsAtTheEdge) {
    Fill(std::vector<std::wstring>(60, L"Code"));
    drag.Begin(L"Length", L"Length");
    drag.Move(InForm(list, {50, 196}));
    EXPECT_TRUE(drag.OverTarget());
    EXPECT_TRUE(Within([this] { return ListView_GetTopIndex(window) >= 3; })) << "by its own timer";
    EXPECT_EQ(list.Core().Top(), ListView_GetTopIndex(window));
    drag.Move(InForm(list, {50, 100}));
    const int top = list.Core().Top();
    Within([] { return false; }, 500);
    EXPECT_EQ(list.Core().Top(), top);
    const int y = static_cast<int>(RowRect(top + 2).top) + list.Core().Geometry().view.y;
    EXPECT_TRUE(drag.Drop(InForm(list, {50, y})));
    EXPECT_EQ(events, std::vector<std::wstring>{L"drop Length " + std::to_wstring(top + 2)});
    EXPECT_FALSE(list.Core().Dragging());
}

TEST_F(PictureListTest, ACutCaptionIsToldByATip) {
    Post(WM_MOUSEMOVE, 50, Middle(0));
    Drain();
    EXPECT_EQ(host->Tips().Text(window), L"");
    Post(WM_MOUSEMOVE, 50, Middle(2));
    Drain();
    EXPECT_EQ(host->Tips().Text(window), L"Code position in the conveyor's running direction");
    list.SetBounds({10, 10, 780, 200});
    Post(WM_MOUSEMOVE, 50, Middle(1));
    Post(WM_MOUSEMOVE, 50, Middle(2));
    Drain();
    EXPECT_EQ(host->Tips().Text(window), L"");
}

TEST_F(PictureListTest, AFieldThatKeepsTheFocusKeepsTheSelectionToo) {
    form.SetFocus(before);
    before.onValidate = [] { return false; };
    PostClick(window, 50, Middle(2));
    Drain();
    EXPECT_TRUE(Within([this] { return GetFocus() == WindowOf(L"cmdBefore"); }));
    EXPECT_TRUE(events.empty());
    EXPECT_EQ(SelectedRow(), -1);
    before.onValidate = nullptr;
}

TEST_F(PictureListTest, AHandlerMayRemakeTheWindowsOrFillTheListAnew) {
    list.onSelect = [this] { host->Remake(); };
    PostClick(window, 50, Middle(2));
    Drain();
    EXPECT_FALSE(IsWindow(window));
    window = WindowOf(L"pls");
    EXPECT_EQ(SelectedRow(), 2);
    list.onSelect = [this] { Fill(captions); };
    Post(WM_LBUTTONDOWN, 50, Middle(3));
    Post(WM_MOUSEMOVE, 50, RowRect(0).top);
    Drain();
    EXPECT_TRUE(list.Core().Dragging()) << "captions drawn anew by the selection do not end the drag it began";
    host->Remake();
    EXPECT_FALSE(list.Core().Dragging()) << "the window that had the pointer is gone";
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(PictureListTest, AThousandRowsAreShownAtOnce) {
    const std::vector<std::wstring> many(1000, L"Code position");
    const auto timed = [this](const std::vector<std::wstring>& texts) {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < 20; ++i) {
            Fill(texts);
            UpdateWindow(window);
        }
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count() / 20;
    };
    const double few = timed(std::vector<std::wstring>(10, L"Code position"));
    const double all = timed(many);
    RecordProperty("ten_rows_us", static_cast<int>(few * 1000));
    RecordProperty("thousand_rows_us", static_cast<int>(all * 1000));
    EXPECT_LT(all, 5 * few + 10) << "filling must not grow with the rows that nobody sees";
    EXPECT_EQ(ListView_GetItemCount(window), 1000);
}

TEST_F(PictureListTest, LeavesNoHandlesBehind) {
    const auto handles = [] {
        return std::pair(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS),
                         GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS));
    };
    const auto round = [this] {
        host->Remake();
        UpdateWindow(WindowOf(L"pls"));
        drag.Begin(L"Length", L"");
        drag.Move(InForm(list, {50, 50}));
        drag.Cancel();
    };
    for (int i = 0; i < 5; ++i)
        round();
    const auto first = handles();
    for (int i = 0; i < 100; ++i)
        round();
    const auto last = handles();
    EXPECT_LE(last.first, first.first + 3);
    EXPECT_LE(last.second, first.second + 3);
}

} // namespace
} // namespace orv::tests
