#include <map>

#include "controls/tree.h"
#include "fixture.h"

namespace orv::controls {
namespace {

/// Counts what widgets tell their peers, and checks the order in which peers come and go.
struct RecordingFactory : PeerFactory {
    struct Recorder : Peer {
        Recorder(RecordingFactory& factory, Widget& widget) : factory_(factory), widget_(widget) {}
        ~Recorder() override {
            --factory_.alive;
            for (const auto& child : widget_.Children())
                EXPECT_EQ(child->GetPeer(), nullptr) << "a parent's window went before its child's";
        }
        void Mirror(Aspect aspect) override { ++factory_.mirrored[{widget_.Name(), aspect}]; }
        void TakeFocus() override { ++factory_.focused[widget_.Name()]; }
        RecordingFactory& factory_;
        Widget& widget_;
    };

    std::unique_ptr<Peer> Make(Widget& widget) override {
        EXPECT_TRUE(!widget.Parent() || widget.Parent()->GetPeer());
        ++alive;
        return std::make_unique<Recorder>(*this, widget);
    }

    int alive = 0;
    std::map<std::pair<std::wstring, Aspect>, int> mirrored;
    std::map<std::wstring, int> focused;
};

struct PeerTest : testing::Test {
    sim::PortablePlatform platform;
    RecordingFactory factory;
    Form form{platform.boxes, platform.pump};
    Frame& first = form.Root().Add<Frame>(L"first");
    Frame& second = form.Root().Add<Frame>(L"second");
    Button& button = second.Add<Button>(L"button");

    PeerTest() {
        for (Frame* page : {&first, &second})
            page->SetCaption(kPageMark);
        second.SetVisible(false);
        form.AttachPeers(factory);
    }
};

TEST_F(PeerTest, APageGetsPeersWhenItIsFirstShownAndKeepsThem) {
    EXPECT_EQ(factory.alive, 2);
    second.SetVisible(true);
    EXPECT_EQ(factory.alive, 4);
    second.SetVisible(false);
    EXPECT_EQ(factory.alive, 4);
    second.Add<Button>(L"later");
    EXPECT_EQ(factory.alive, 5);
}

TEST_F(PeerTest, PeersAreTornDownAndMadeAnewWithoutLosingState) {
    second.SetVisible(true);
    ASSERT_TRUE(form.SetFocus(button));
    form.DetachPeers();
    EXPECT_EQ(factory.alive, 0);
    EXPECT_TRUE(button.Focused());
    button.SetCaption(L"meanwhile");
    form.AttachPeers(factory);
    EXPECT_EQ(factory.alive, 4);
    EXPECT_EQ(button.Caption(), L"meanwhile");
}

TEST_F(PeerTest, EnabledReachesEveryWindowBelowAndAnUnchangedSetNone) {
    second.SetVisible(true);
    second.SetEnabled(false);
    EXPECT_EQ((factory.mirrored[{L"button", Aspect::Enabled}]), 1);
    second.SetEnabled(false);
    EXPECT_EQ((factory.mirrored[{L"button", Aspect::Enabled}]), 1);
}

TEST_F(PeerTest, ARefusedFocusGoesBackAfterTheNotification) {
    second.SetVisible(true);
    auto& other = second.Add<Button>(L"other");
    form.SetFocus(button);
    button.onValidate = [] { return false; };
    form.FocusArrived(other);
    EXPECT_EQ(factory.focused[L"button"], 1) << "not from inside the notification";
    platform.pump.ProcessPending();
    EXPECT_EQ(factory.focused[L"button"], 2);
    EXPECT_TRUE(button.Focused());
}

TEST_F(PeerTest, ScrollingMovesTheWindowsOfTheChildrenAndFollowsTheFocus) {
    second.SetVisible(true);
    second.SetBounds({0, 0, 100, 100});
    second.SetContent({100, 400}, 18);
    button.SetBounds({10, 300, 50, 20});
    EXPECT_TRUE(second.ScrollsDown());
    EXPECT_TRUE(second.ScrollsAcross()) << "the one bar takes room from the other direction";
    form.SetFocus(button);
    EXPECT_EQ(second.Scroll().y, 320 - (100 - 18));
    EXPECT_EQ(button.WindowBounds().y, 300 - second.Scroll().y);
    second.ScrollTo({0, 10000});
    EXPECT_EQ(second.Scroll().y, 400 - (100 - 18));
    second.SetContent({80, 90}, 18);
    EXPECT_EQ(second.Scroll().y, 0);
}

TEST_F(PeerTest, ABatchTellsTheTreesPeerOnce) {
    auto& tree = form.Root().Add<Tree>(L"tvw");
    {
        const Tree::Batch batch(tree);
        for (int i = 0; i < 50; ++i)
            tree.AddNode({}, std::to_wstring(i), L"");
    }
    EXPECT_EQ((factory.mirrored[{L"tvw", Aspect::Items}]), 1);
}

} // namespace
} // namespace orv::controls
