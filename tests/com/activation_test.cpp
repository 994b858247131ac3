// In-place activation as containers see it.
#include "tests/com/running.h"

namespace orv::tests {
namespace {

using testing::Test;

class Activation : public Running {};

/// Where each of the lines stands, in this order, whatever stands between.
bool InOrder(const Journal& journal, const std::vector<std::string>& wanted) {
    auto from = journal.begin();
    for (const std::string& line : wanted) {
        from = std::find(from, journal.end(), line);
        if (from == journal.end())
            return false;
        ++from;
    }
    return true;
}

TEST_F(Activation, SpeaksToTheSiteInOrder) {
    Start();
    ASSERT_EQ(container->Verb(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_TRUE(InOrder(container->journal, {"CanInPlaceActivate", "OnInPlaceActivate", "GetWindowContext",
                                             "ShowObject", "OnUIActivate", "SetActiveObject", "SetBorderSpace none"}))
        << testing::PrintToString(container->journal);
    EXPECT_TRUE(container->frame.active);
    container->journal.clear();
    EXPECT_EQ(Query<IOleInPlaceObject>(container->control.Get())->InPlaceDeactivate(), S_OK);
    EXPECT_TRUE(InOrder(container->journal, {"SetActiveObject none", "OnUIDeactivate", "OnInPlaceDeactivate"}))
        << testing::PrintToString(container->journal);
    EXPECT_EQ(container->ControlWindow(), nullptr);
    EXPECT_FALSE(container->frame.active);
    container->Discard();
    EXPECT_EQ(container->references, 1u);
    EXPECT_EQ(container->frame.references, 1u);
}

TEST_F(Activation, StandsWhereItIsPut) {
    Start();
    const auto object = Query<IOleInPlaceObject>(container->control.Get());
    for (const RECT place : {RECT{0, 0, 640, 480}, RECT{30, 20, 830, 620}, RECT{0, 0, 0, 0}, RECT{5, 5, 500, 300}}) {
        const RECT clip = place;
        EXPECT_EQ(object->SetObjectRects(&place, &clip), S_OK);
        RECT actual{};
        GetWindowRect(container->ControlWindow(), &actual);
        MapWindowPoints(nullptr, container->Window(), reinterpret_cast<POINT*>(&actual), 2);
        EXPECT_TRUE(EqualRect(&actual, &place));
    }
}

TEST_F(Activation, FailsCleanlyAndTriesAgain) {
    Manners manners;
    manners.windowContext = false;
    container = std::make_unique<Container>(manners);
    EXPECT_TRUE(FAILED(container->Embed(component.Create())));
    EXPECT_TRUE(container->Wrote("OnInPlaceDeactivate"));
    EXPECT_EQ(container->ControlWindow(), nullptr);
    container->manners.windowContext = true;
    container->manners.frame = false;
    container->manners.controlSite = false;
    EXPECT_EQ(container->Verb(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_NE(container->ControlWindow(), nullptr);
}

TEST_F(Activation, SurvivesAContainerThatDestroysItsWindow) {
    Start();
    DestroyWindow(container->ControlWindow());
    EXPECT_EQ(container->ControlWindow(), nullptr);
    EXPECT_EQ(container->Verb(OLEIVERB_SHOW), S_OK);
    EXPECT_NE(container->ControlWindow(), nullptr);
}

TEST_F(Activation, TellsTheProductOfEachShowByTheHostOnce) {
    bench->Gate().KeepLog(true);
    Start();
    EXPECT_EQ(bench->Application()->caption, L"Output Format Addon");
    const auto captions = [this] { return bench->Gate().Count("HostApplication.SetCaption"); };
    const auto configurations = [this] { return bench->Gate().Count("ConfigurationManager.GetConfiguration"); };
    EXPECT_EQ(captions() + configurations(), 2) << "names of the calls have changed?";
    EXPECT_EQ(container->Verb(OLEIVERB_SHOW), S_OK);
    EXPECT_EQ(container->Verb(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_EQ(configurations(), 1);
    EXPECT_EQ(container->Verb(OLEIVERB_HIDE), S_OK);
    EXPECT_EQ(container->Verb(OLEIVERB_SHOW), S_OK);
    EXPECT_EQ(configurations(), 2);
    EXPECT_EQ(bench->OpenConfigurations(), 1);
    container->Discard();
    EXPECT_EQ(bench->OpenConfigurations(), 0);
}

TEST_F(Activation, FindsItsWindowsByName) {
    Start();
    wchar_t caption[32] = {};
    GetWindowTextW(container->Find(L"cmdOK"), caption, ARRAYSIZE(caption));
    EXPECT_STREQ(caption, L"OK");
    EXPECT_EQ(container->Find(L"cmdNowhere"), nullptr);
}

/// Colours of an icon of 32 pixels over white.
std::vector<COLORREF> PixelsOf(HICON icon) {
    constexpr int kSide = 32;
    const HDC screen = GetDC(nullptr);
    const HDC dc = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, kSide, kSide);
    const HGDIOBJ before = SelectObject(dc, bitmap);
    PatBlt(dc, 0, 0, kSide, kSide, WHITENESS);
    EXPECT_TRUE(DrawIconEx(dc, 0, 0, icon, kSide, kSide, 0, nullptr, DI_NORMAL));
    std::vector<COLORREF> pixels;
    for (int i = 0; i < kSide * kSide; ++i)
        pixels.push_back(GetPixel(dc, i % kSide, i / kSide));
    SelectObject(dc, before);
    DeleteObject(bitmap);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    return pixels;
}

TEST_F(Activation, HoldsThePictureThatTheHostIsGiven) {
    Start();
    const HWND window = container->Find(L"imgPicture");
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(IsWindowVisible(window));
    ComPtr<IDispatch> given;
    ASSERT_EQ(Gui()->get_Picture(given.Put()), S_OK);
    OLE_HANDLE icon = 0;
    ASSERT_EQ(Query<IPicture>(given.Get())->get_Handle(&icon), S_OK);
    const auto held = reinterpret_cast<HICON>(SendMessageW(window, STM_GETICON, 0, 0));
    ASSERT_NE(held, nullptr);
    const std::vector<COLORREF> pixels = PixelsOf(held);
    EXPECT_EQ(pixels, PixelsOf(reinterpret_cast<HICON>(static_cast<ULONG_PTR>(icon))));
    EXPECT_NE(std::count(pixels.begin(), pixels.end(), pixels[0]), 32 * 32) << "an empty picture";
}

TEST_F(Activation, HandsTheTabulatorOnPastTheEnd) {
    Start();
    SetForegroundWindow(container->Window());
    ASSERT_EQ(container->Verb(OLEIVERB_UIACTIVATE), S_OK);
    const auto active = container->frame.active;
    const std::string left = "TranslateAccelerator " + std::to_string(VK_TAB);
    int presses = 0;
    std::vector<HWND> stops;
    for (; presses < 60 && !container->Wrote(left); ++presses) {
        stops.push_back(GetFocus());
        MSG message{};
        message.hwnd = GetFocus();
        message.message = WM_KEYDOWN;
        message.wParam = VK_TAB;
        EXPECT_EQ(active->TranslateAccelerator(&message), S_OK);
    }
    EXPECT_TRUE(container->Wrote(left)) << presses << " presses";
    EXPECT_GT(presses, 2);
    std::sort(stops.begin(), stops.end());
    EXPECT_EQ(std::adjacent_find(stops.begin(), stops.end()), stops.end()) << "the focus stood still";
}

TEST_F(Activation, AFocusedChildActivatesTheControl) {
    Start();
    SetForegroundWindow(container->Window());
    ASSERT_FALSE(container->Wrote("OnUIActivate"));
    SetFocus(container->Find(L"cmdCancel"));
    EXPECT_TRUE(container->Wrote("OnUIActivate"));
    EXPECT_TRUE(container->Wrote("OnFocus in"));
    EXPECT_EQ(GetFocus(), container->Find(L"cmdCancel"));
}

} // namespace
} // namespace orv::tests
