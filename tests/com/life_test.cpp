// The life of a control under a host that fails, closes early, or lets go at the worst moment.
#include "tests/com/running.h"

namespace orv::tests {
namespace {

class Life : public Running {};

TEST_F(Life, LoadsFromTheHostOnActivation) {
    Start();
    EXPECT_EQ(Result(), -1);
    EXPECT_EQ(Gui()->Activate(), S_OK);
    EXPECT_EQ(Result(), 2);
    const auto calls = bench->Gate().Count();
    EXPECT_EQ(Gui()->Activate(), S_OK);
    EXPECT_LT(bench->Gate().Count() - calls, calls / 10) << "a second activation reads everything anew";
}

TEST_F(Life, EveryFailingCallOfTheHostEndsInABoxAndAResult) {
    int described = 0;
    // Spread over the calls of showing and loading; each of them has its own way back.
    for (std::int64_t k = 1; k <= 400; k += k < 12 ? 1 : 37) {
        Start(Manners{}, 0);
        container->Verb(OLEIVERB_HIDE);
        BoxAnswers answers(IDOK);
        bench->Gate().FailCall(k, static_cast<std::int32_t>(0x80040123), L"no such luck");
        EXPECT_EQ(container->Verb(OLEIVERB_SHOW), S_OK);
        EXPECT_EQ(Gui()->Activate(), S_OK);
        for (const std::wstring& text : answers.texts) {
            // A class that cannot be made leaves no description, and a missing configuration is a failure of its own.
            EXPECT_EQ(text.find(L"AddOnControl."), 0u) << testing::PrintToString(text);
            described += text.find(L"no such luck") != std::wstring::npos;
        }
        container.reset();
        EXPECT_TRUE(component.CanUnload()) << "after failure " << k;
        bench->Gate().Reset();
    }
    EXPECT_GT(described, 5) << "no failure reached the user with its description";
}

TEST_F(Life, LetGoInsideAQuestionItGoesWhenTheQuestionIsOver) {
    Start(Manners{}, 1);
    BoxAnswers answers(IDYES);
    answers.onlyWatch = true; // the component answers its own box, for it is closing
    answers.meanwhile = [this] { container->Discard(); };
    IAddOnGUI* const borrowed = Gui().Get();
    EXPECT_EQ(borrowed->Activate(), S_OK);
    EXPECT_EQ(answers.texts.size(), 1u);
    EXPECT_TRUE(Within([this] { return component.CanUnload(); }));
    EXPECT_EQ(bench->OpenConfigurations(), 0);
    EXPECT_EQ(container->references, 1u);
}

TEST_F(Life, LetGoByTheHostsOwnCloseCallItStaysUntilThatHasReturned) {
    Start();
    ASSERT_EQ(Gui()->Activate(), S_OK);
    bench->Application()->onClose = [this] {
        container->Discard();
        // The button's handler is on the stack: neither the control nor what the handler stands on may be gone.
        EXPECT_FALSE(component.CanUnload());
        EXPECT_EQ(bench->OpenConfigurations(), 1);
        // Loops that the host runs now must not clear up either.
        EXPECT_FALSE(Within([this] { return component.CanUnload(); }, 200));
    };
    const HWND cancel = container->Find(L"cmdCancel");
    ASSERT_NE(cancel, nullptr);
    PostMessageW(cancel, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
    PostMessageW(cancel, WM_LBUTTONUP, 0, MAKELPARAM(4, 4));
    EXPECT_TRUE(Within([this] { return bench->Application()->closeCount == 1; }));
    EXPECT_TRUE(Within([this] { return component.CanUnload(); }));
    EXPECT_EQ(bench->OpenConfigurations(), 0);
}

TEST_F(Life, OfTwoAtOnceOneGoesWhileTheOtherAsks) {
    for (const bool askerIsOlder : {false, true}) {
        SCOPED_TRACE(askerIsOlder);
        Start(Manners{}, askerIsOlder ? 1 : 0);
        auto older = std::move(container);
        Start(Manners{}, askerIsOlder ? 0 : 1);
        // The one that asks is the one that stays.
        std::unique_ptr<Container> goes = askerIsOlder ? std::move(container) : std::move(older);
        if (askerIsOlder)
            container = std::move(older);
        auto leaving = Query<IAddOn>(goes->control.Get());
        EXPECT_EQ(Query<IAddOnGUI>(leaving.Get())->Activate(), S_OK);
        SHORT result = 0;
        SHORT device = -1;
        EXPECT_EQ(leaving->get_GetResult(&result), S_OK);
        EXPECT_EQ(leaving->get_CurrentDeviceIndex(&device), S_OK);
        EXPECT_EQ(result, 2);
        EXPECT_EQ(device, 0) << "one control tells the other its device";
        BoxAnswers answers(IDYES);
        answers.meanwhile = [&] {
            leaving = nullptr;
            goes.reset();
        };
        EXPECT_EQ(Gui()->Activate(), S_OK);
        EXPECT_EQ(answers.texts.size(), 1u);
        EXPECT_EQ(Result(), 2) << "the question was answered by the one that went";
        EXPECT_EQ(bench->Application()->closeCount, 0);
        EXPECT_EQ(bench->OpenConfigurations(), 1);
        container.reset();
    }
}

TEST_F(Life, ClosedItAnswersAndDoesNothing) {
    Start();
    const ComPtr<IUnknown> control = container->control;
    const auto object = Query<IOleObject>(control.Get());
    EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_EQ(bench->OpenConfigurations(), 0);
    EXPECT_TRUE(FAILED(container->Verb(OLEIVERB_SHOW)));
    EXPECT_EQ(Gui()->Activate(), S_OK);
    EXPECT_EQ(Result(), -1);
    EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
}

TEST_F(Life, BeforeItIsEnabledShowingTouchesNoHostObject) {
    container = std::make_unique<Container>();
    const auto calls = bench->Gate().Count();
    EXPECT_EQ(container->Embed(component.Create()), S_OK);
    EXPECT_EQ(container->Verb(OLEIVERB_SHOW), S_OK);
    EXPECT_EQ(bench->Gate().Count(), calls);
    EXPECT_EQ(bench->Application()->caption, L"");
}

} // namespace
} // namespace orv::tests
