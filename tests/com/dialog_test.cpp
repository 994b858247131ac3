// Dialogs of the component over a real container.
#include "tests/com/running.h"

namespace orv::tests {
namespace {

/// Acts on the component's dialogs as they open, from a timer, as its own loop runs then.
class DialogUser {
  public:
    explicit DialogUser(std::function<void(HWND)> act)
        : act_(std::move(act)), timer_(SetTimer(nullptr, 0, 20, &DialogUser::Tick)) {
        current_ = this;
    }
    ~DialogUser() {
        KillTimer(nullptr, timer_);
        current_ = nullptr;
    }
    DialogUser(const DialogUser&) = delete;
    DialogUser& operator=(const DialogUser&) = delete;
    int seen = 0;

  private:
    static BOOL CALLBACK Look(HWND window, LPARAM found) {
        wchar_t name[32] = {};
        GetClassNameW(window, name, ARRAYSIZE(name));
        if (wcscmp(name, L"OrvOutFormat.Dialog") != 0 || !IsWindowVisible(window))
            return TRUE;
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
        HWND dialog = nullptr;
        EnumThreadWindows(GetCurrentThreadId(), &DialogUser::Look, reinterpret_cast<LPARAM>(&dialog));
        if (!current_ || !dialog || current_->seen > 0)
            return;
        ++current_->seen;
        current_->act_(dialog);
    }
    static DialogUser* current_;
    std::function<void(HWND)> act_;
    UINT_PTR timer_;
};
DialogUser* DialogUser::current_ = nullptr;

HWND In(HWND dialog, const wchar_t* name) {
    const ATOM atom = GlobalAddAtomW(name);
    const LRESULT found = SendMessageW(dialog, RegisterWindowMessageW(L"OrvFindControl"), atom, -1);
    GlobalDeleteAtom(atom);
    return reinterpret_cast<HWND>(found);
}

BOOL CALLBACK FindBox(HWND window, LPARAM found) {
    wchar_t name[16] = {};
    GetClassNameW(window, name, ARRAYSIZE(name));
    if (wcscmp(name, L"#32770") == 0)
        *reinterpret_cast<HWND*>(found) = window;
    return TRUE;
}

std::wstring TextOf(HWND window) {
    wchar_t text[128] = {};
    GetWindowTextW(window, text, ARRAYSIZE(text));
    return text;
}

struct Dialogs : Running {
    void SetUp() override {
        Start();
        ASSERT_EQ(Gui()->Activate(), S_OK);
        SetForegroundWindow(container->Window());
    }
    void PressAbout() const { PostMessageW(container->Find(L"cmdAbout"), BM_CLICK, 0, 0); }
};

TEST_F(Dialogs, TheFrameWaitsAndTheKeyboardComesBack) {
    const HWND root = GetAncestor(container->ControlWindow(), GA_ROOT);
    std::wstring version;
    DialogUser user([&](HWND dialog) {
        EXPECT_EQ(TextOf(dialog), L"About Output Format Addon");
        EXPECT_EQ(TextOf(In(dialog, L"lblVersion")).find(L"Version 0.01"), 0u) << "the component's own record";
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), root);
        EXPECT_FALSE(IsWindowEnabled(root));
        EXPECT_FALSE(container->Wrote("EnableModeless on"));
        PostMessageW(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1);
    });
    PressAbout();
    EXPECT_TRUE(Within([&] { return user.seen == 1 && container->Wrote("EnableModeless on"); }));
    EXPECT_TRUE(container->Wrote("EnableModeless off"));
    EXPECT_TRUE(IsWindowEnabled(root));
    EXPECT_EQ(GetFocus(), container->Find(L"cmdAbout"));
}

TEST_F(Dialogs, LetGoUnderADialogEverythingGoesWithoutAWord) {
    const HWND root = GetAncestor(container->ControlWindow(), GA_ROOT);
    HWND shown = nullptr;
    DialogUser user([&](HWND dialog) {
        shown = dialog;
        container->Discard();
        EXPECT_FALSE(IsWindow(dialog)) << "at once, not when the stack has unwound";
        EXPECT_TRUE(IsWindowEnabled(root));
    });
    BoxAnswers boxes(IDOK);
    PressAbout();
    EXPECT_TRUE(Within([&] { return user.seen == 1 && component.CanUnload(); }));
    EXPECT_NE(shown, nullptr);
    EXPECT_TRUE(container->Wrote("EnableModeless on"));
    EXPECT_TRUE(boxes.texts.empty());
}

TEST_F(Dialogs, ABoxInADialogBelongsToIt) {
    HWND shown = nullptr;
    BoxAnswers boxes(IDOK);
    boxes.meanwhile = [&] {
        HWND box = nullptr;
        EnumThreadWindows(GetCurrentThreadId(), &FindBox, reinterpret_cast<LPARAM>(&box));
        EXPECT_EQ(GetWindow(box, GW_OWNER), shown);
        EXPECT_FALSE(IsWindowEnabled(shown));
    };
    DialogUser user([&](HWND dialog) {
        shown = dialog;
        PostMessageW(In(dialog, L"cmdSysInfo"), BM_CLICK, 0, 0);
        PostMessageW(In(dialog, L"cmdOK"), BM_CLICK, 0, 0);
    });
    PressAbout();
    EXPECT_TRUE(Within([&] { return user.seen == 1 && !IsWindow(shown); }));
    ASSERT_EQ(boxes.texts.size(), 1u);
    EXPECT_EQ(boxes.texts[0], L"System Information Is Unavailable At This Time");
}

} // namespace
} // namespace orv::tests
