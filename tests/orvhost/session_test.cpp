#include "host/app/orvhost/session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/com/application_face.h"
#include "tests/orvhost/fake_container.h"
#include "tests/orvhost/test_add_on.h"

namespace orv::host {
namespace {

using testing::ElementsAre;

struct SessionTest : testing::Test {
    long before = LiveFaces();
    FakeContainer host;
    AddOnDiary diary;
    std::unique_ptr<Session> session;

    void Begin() {
        const auto application = Make<ApplicationFace>(nullptr);
        session = std::make_unique<Session>(MakeTestAddOn(diary), host, ComPtr<IOrvApplication>(application.Get()),
                                            Session::Target{1, 3}, true);
    }
    void TearDown() override {
        session.reset();
        EXPECT_EQ(diary.alive, 0) << "the add-on was let go";
        EXPECT_EQ(LiveFaces(), before);
    }
};

TEST_F(SessionTest, BringsTheAddOnUpInTheHostsOrder) {
    Begin();
    EXPECT_EQ(diary.cluster, 1);
    EXPECT_EQ(diary.device, 3);
    session->Show();
    session->Activate();
    EXPECT_THAT(diary.calls,
                ElementsAre("register", "enable", "site", "verb " + std::to_string(OLEIVERB_INPLACEACTIVATE), "rects",
                            "verb " + std::to_string(OLEIVERB_SHOW), "verb " + std::to_string(OLEIVERB_UIACTIVATE),
                            "activate"));
    EXPECT_EQ(diary.rects.right, 320);
    EXPECT_NEAR(diary.extentWidth, 320 * 2540 / static_cast<int>(GetDpiForWindow(host.Area())), 1);
}

TEST_F(SessionTest, TakesItDownAndLeavesNothingBehind) {
    Begin();
    session->Show();
    diary.calls.clear();
    EXPECT_EQ(session->Close(), 7);
    EXPECT_THAT(diary.calls, ElementsAre("ui deactivate", "in-place deactivate", "close", "no site", "unregister"));
    EXPECT_FALSE(diary.applicationHeld);
    EXPECT_EQ(diary.alive, 0);
    EXPECT_EQ(session->Window(), nullptr);
}

TEST_F(SessionTest, MayBeClosedFromInsideItsOwnCalls) {
    Begin();
    session->Show();
    diary.whenActivated = [this] { session->Close(); };
    session->Activate();
    EXPECT_EQ(diary.calls.back(), "unregister");
    diary.calls.clear();
    session->Show(); // the host may not have noticed yet
    EXPECT_TRUE(diary.calls.empty());
}

TEST_F(SessionTest, MayBeClosedWhileItComesUp) {
    Begin();
    diary.whenVerb = [this](LONG verb) {
        if (verb == OLEIVERB_INPLACEACTIVATE)
            session->Close();
    };
    session->Show();
    EXPECT_EQ(diary.calls.back(), "unregister") << "no verb follows the end";
}

TEST_F(SessionTest, AnAddOnThatRefusesTheHostIsReleased) {
    diary.registered = E_ACCESSDENIED;
    try {
        Begin();
        FAIL() << "the refusal was swallowed";
    } catch (const Error& failure) {
        EXPECT_EQ(failure.Number(), E_ACCESSDENIED);
    }
}

TEST_F(SessionTest, KeysGoToTheAddOnOnlyWhileItIsActive) {
    Begin();
    diary.eats = VK_RETURN;
    MSG key{host.Area(), WM_KEYDOWN, VK_RETURN, 1, 0, {}};
    EXPECT_FALSE(session->Translate(key)) << "not shown yet";
    session->Show();
    EXPECT_TRUE(session->Translate(key));
    MSG other{host.Area(), WM_KEYDOWN, VK_ESCAPE, 1, 0, {}};
    EXPECT_FALSE(session->Translate(other));
    MSG mouse{host.Area(), WM_LBUTTONDOWN, VK_RETURN, 0, 0, {}};
    EXPECT_FALSE(session->Translate(mouse));
    session->Leave();
    EXPECT_FALSE(session->Translate(key)) << "the host's own pane has the keyboard";
    session->Enter(nullptr);
    EXPECT_TRUE(session->Translate(key));
    session->FrameActivated(false);
    EXPECT_EQ(diary.calls.back(), "frame down");
}

TEST_F(SessionTest, HidesShowsAndAsksBeforeUnloading) {
    Begin();
    session->SetVisible(false); // before it is shown there is nothing to hide
    session->Show();
    diary.calls.clear();
    session->SetVisible(false);
    EXPECT_FALSE(session->Visible());
    EXPECT_EQ(diary.calls.back(), "verb " + std::to_string(OLEIVERB_HIDE));
    session->Show();
    EXPECT_TRUE(session->Visible());
    session->SetEnabled(false);
    EXPECT_FALSE(IsWindowEnabled(session->Window()));
    session->SetEnabled(true);
    EXPECT_TRUE(session->Enabled());
    EXPECT_FALSE(session->MayUnload());
}

} // namespace
} // namespace orv::host
