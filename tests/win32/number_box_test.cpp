#include "controls/number_box.h"

#include "controls/simple_widgets.h"
#include "controls/text_box.h"
#include "fixture.h"

namespace orv::tests {
namespace {

using namespace controls;

struct NumberTest : Windows {
    NumberBox& box = form.Root().Add<NumberBox>(L"txtLength");
    TextBox& text = form.Root().Add<TextBox>(L"txtExpression");
    Button& button = form.Root().Add<Button>(L"cmdApply");
    std::vector<NumberBox::Number> changes;
    NumberTest() {
        box.SetBounds({10, 10, 80, 24});
        box.SetRange(1, 50);
        box.SetValue(12);
        box.onChange = [this](NumberBox::Number number) { changes.push_back(number); };
        text.SetBounds({10, 40, 200, 24});
        text.SetText(L"(1 OR 4) AND (3)");
        button.SetBounds({10, 70, 90, 24});
        Show();
        form.SetFocus(box);
    }
    void Key(WPARAM key, UINT message = WM_KEYDOWN) {
        PostMessageW(GetFocus(), message, key, 1);
        Drain();
    }
    void Ctrl(WPARAM key) {
        BYTE former[256] = {};
        GetKeyboardState(former);
        BYTE state[256] = {};
        state[VK_CONTROL] = 0x80;
        SetKeyboardState(state);
        Key(key);
        SetKeyboardState(former);
    }
    std::wstring Shown() const { return TextOf(WindowOf(L"txtLength")); }
    HWND Arrows() const { return GetWindow(WindowOf(L"txtLength"), GW_CHILD); }
};

TEST_F(NumberTest, TypingReplacesWhatTheKeyboardArrivedAt) {
    for (const bool careful : {true, false}) {
        translates = careful;
        form.SetFocus(button);
        box.SetValue(12);
        form.SetFocus(box);
        changes.clear();
        Key(L'4', WM_CHAR);
        Key(L'x', WM_CHAR);
        Key(L'2', WM_CHAR);
        EXPECT_EQ(Shown(), L"42");
        Key(VK_BACK);
        EXPECT_EQ(Shown(), L"4");
        Key(L'9', WM_CHAR);
        Key(L'9', WM_CHAR);
        EXPECT_EQ(Shown(), L"499") << "kept as typed";
        EXPECT_EQ(changes, (std::vector<NumberBox::Number>{4, 42, 4, 49}));
        ::SetFocus(WindowOf(L"cmdApply"));
        EXPECT_TRUE(Within([this] { return GetFocus() == WindowOf(L"txtLength"); })) << "wrong: the focus comes back";
        Key(VK_ESCAPE);
        EXPECT_EQ(Shown(), L"49");
    }
}

TEST_F(NumberTest, ArrowsKeysAndWheelStep) {
    RECT arrows{};
    GetClientRect(Arrows(), &arrows);
    form.SetFocus(button);
    PostClick(Arrows(), arrows.right / 2, arrows.bottom / 4);
    ASSERT_TRUE(Within([this] { return box.Value() != 12; }));
    EXPECT_EQ(box.Value(), 13);
    EXPECT_EQ(GetFocus(), WindowOf(L"txtLength"));
    PostClick(Arrows(), arrows.right / 2, arrows.bottom * 3 / 4);
    ASSERT_TRUE(Within([this] { return box.Value() != 13; }));
    Key(VK_UP);
    Key(VK_PRIOR);
    const auto turn = [this](int delta) {
        SendMessageW(WindowOf(L"txtLength"), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)), 0);
    };
    turn(-WHEEL_DELTA);
    turn(WHEEL_DELTA / 2);
    turn(WHEEL_DELTA / 2);
    EXPECT_EQ(changes, (std::vector<NumberBox::Number>{13, 12, 13, 23, 22, 23}));
    EXPECT_EQ(Shown(), L"23");
    form.SetFocus(button);
    turn(WHEEL_DELTA);
    EXPECT_EQ(box.Value(), 23) << "the wheel over a box without the focus is the page's";
}

TEST_F(NumberTest, StateReachesTheWindowAndRaisesNothing) {
    box.SetValue(7);
    EXPECT_EQ(Shown(), L"7");
    box.SetEnabled(false);
    EXPECT_FALSE(IsWindowEnabled(Arrows()));
    box.SetBounds({10, 10, 120, 30});
    RECT client{};
    RECT arrows{};
    GetClientRect(WindowOf(L"txtLength"), &client);
    GetWindowRect(Arrows(), &arrows);
    MapWindowPoints(nullptr, WindowOf(L"txtLength"), reinterpret_cast<POINT*>(&arrows), 2);
    EXPECT_EQ(arrows.right, client.right);
    EXPECT_EQ(arrows.bottom, client.bottom);
    EXPECT_TRUE(changes.empty());
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(NumberTest, AnUnknownNumberIsAnEmptyField) {
    box.SetUnknown();
    EXPECT_EQ(Shown(), L"");
    EXPECT_TRUE(changes.empty());
    Key(L'1', WM_CHAR);
    Key(L'2', WM_CHAR);
    EXPECT_TRUE(box.Pending()) << "the number that it was before";
    Key(VK_ESCAPE);
    EXPECT_EQ(Shown(), L"");
    Key(L'7', WM_CHAR);
    Key(VK_BACK);
    EXPECT_FALSE(box.Known());
    Key(VK_UP);
    EXPECT_EQ(Shown(), L"1");
    box.SetUnknown();
    ::SetFocus(WindowOf(L"cmdApply"));
    Drain();
    EXPECT_EQ(form.Focused(), &button);
    EXPECT_EQ(boxes.beeps, 0);
    EXPECT_EQ(changes, (std::vector<NumberBox::Number>{1, 12, 7, 1}));
}

TEST_F(NumberTest, TheArrowsHaveANameOfTheirOwn) {
    EXPECT_NE(Arrows(), nullptr);
    EXPECT_EQ(WindowOf(L"udLength"), Arrows());
    for (const wchar_t* none : {L"udLengt", L"udLength2", L"ud", L"udExpression", L"cmdUd"})
        EXPECT_EQ(WindowOf(none), nullptr) << none;
    Button& other = form.Root().Add<Button>(L"udLength");
    EXPECT_EQ(WindowOf(L"udLength"), WindowOf(other.Name())) << "found twice the same";
    EXPECT_EQ(WindowOf(L"udLength"), reinterpret_cast<HWND>(other.GetPeer()->WindowHandle()))
        << "a widget of that name goes first";
}

TEST_F(NumberTest, TextThatCannotBeChangedIsCopied) {
    form.SetFocus(text);
    const HWND window = WindowOf(L"txtExpression");
    Key(L'x', WM_CHAR);
    Key(VK_BACK);
    Key(VK_DELETE);
    Ctrl('V');
    EXPECT_EQ(TextOf(window), L"(1 OR 4) AND (3)");
    Key(VK_END);
    Ctrl('A');
    Ctrl('C');
    form.SetFocus(box);
    ASSERT_TRUE(OpenClipboard(container.Get()));
    const HANDLE copied = GetClipboardData(CF_UNICODETEXT);
    ASSERT_NE(copied, nullptr);
    EXPECT_STREQ(static_cast<const wchar_t*>(GlobalLock(copied)), L"(1 OR 4) AND (3)");
    GlobalUnlock(copied);
    CloseClipboard();
    Ctrl('V');
    EXPECT_EQ(Shown(), L"(1 OR 4) AND (3)");
    EXPECT_FALSE(box.Valid());
    Ctrl('Z');
    EXPECT_EQ(box.Text(), L"12");
    text.SetText(L"1");
    EXPECT_EQ(TextOf(window), L"1");
}

} // namespace
} // namespace orv::tests
