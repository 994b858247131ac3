#include "fixture.h"

#include "controls/combo_box.h"
#include "controls/mb_edit.h"
#include "controls/simple_widgets.h"

namespace orv::tests {
namespace {

using namespace controls;

struct KeyboardTest : Windows {
    Label& label = form.Root().Add<Label>(L"lblHeader");
    MBEdit& edit = form.Root().Add<MBEdit>(L"mbeHeader");
    ComboBox& combo = form.Root().Add<ComboBox>(L"cboCodeID");
    Button& button = form.Root().Add<Button>(L"cmdApply");
    std::vector<bool> left;
    KeyboardTest() {
        label.SetCaption(L"&Header");
        button.SetCaption(L"&Apply");
        edit.SetBounds({10, 10, 200, 24});
        combo.SetBounds({10, 40, 200, 24});
        button.SetBounds({10, 70, 90, 24});
        hooks.passOn = [this](MSG&, bool leave) {
            left.push_back(leave);
            return leave;
        };
        Show();
    }
    void Key(WPARAM key, UINT message = WM_KEYDOWN) {
        PostMessageW(GetFocus(), message, key, message == WM_SYSCHAR ? 0x20000001 : 1);
        Drain();
    }
    HWND At(const Widget& widget) const { return WindowOf(widget.Name(), widget.Index()); }
};

TEST_F(KeyboardTest, TabGoesRoundTheStopsAndOutOfTheForm) {
    for (const bool careful : {true, false}) {
        translates = careful;
        left.clear();
        form.SetFocus(edit);
        Key(VK_TAB);
        EXPECT_EQ(GetFocus(), At(combo));
        Key(VK_TAB);
        EXPECT_EQ(GetFocus(), At(button));
        EXPECT_TRUE(left.empty());
        Key(VK_TAB);
        EXPECT_EQ(left, std::vector{true});
        EXPECT_EQ(edit.Data(), Bytes{}) << "the key of the move is not typed";
    }
}

TEST_F(KeyboardTest, AccessKeyLeadsBehindTheLabelAndPresses) {
    int pressed = 0;
    button.onClick = [&] { ++pressed; };
    form.SetFocus(combo);
    Key(L'h', WM_SYSCHAR);
    EXPECT_EQ(GetFocus(), At(edit));
    Key(L'a', WM_SYSCHAR);
    EXPECT_EQ(GetFocus(), At(button));
    EXPECT_EQ(pressed, 1);
}

TEST_F(KeyboardTest, SpacePressesOnce) {
    int pressed = 0;
    button.onClick = [&] { ++pressed; };
    for (const bool careful : {true, false}) {
        translates = careful;
        form.SetFocus(button);
        pressed = 0;
        PostMessageW(At(button), WM_KEYDOWN, VK_SPACE, 0x390001);
        PostMessageW(At(button), WM_KEYUP, VK_SPACE, static_cast<LPARAM>(0xC0390001));
        Drain();
        EXPECT_EQ(pressed, 1);
    }
}

TEST_F(KeyboardTest, UnusedKeysAreOfferedOnce) {
    form.SetFocus(button);
    Key(VK_ESCAPE);
    EXPECT_EQ(left, std::vector{false}) << "by the accelerator entry, and not again by the window";
    left.clear();
    translates = false;
    Key(VK_ESCAPE);
    EXPECT_EQ(left, std::vector{false});
}

TEST_F(KeyboardTest, KeysOfForeignWindowsAreNotOurs) {
    MSG message{};
    message.hwnd = container.Get();
    message.message = WM_KEYDOWN;
    message.wParam = VK_TAB;
    EXPECT_FALSE(host->TranslateKey(message));
}

} // namespace
} // namespace orv::tests
