#include "controls/drag.h"

#include "fixture.h"

namespace orv::controls {
namespace {

/// Says what it is told.
class Bin : public Widget, public DropTarget {
  public:
    explicit Bin(std::wstring name, std::vector<std::wstring>& log) : Widget(Kind::Label, std::move(name)), log_(log) {}
    Size MinimumSize(const TextMeasure&) const override { return {}; }
    bool Accepts(const DragItem& item) const override { return item.key != L"refused"; }
    void DragOver(const DragItem&, Point at) override { Say(L"over", at); }
    void DragLeave() override { log_.push_back(Name() + L" leave"); }
    void Drop(const DragItem& item, Point at) override { Say(L"drop " + item.key, at); }

  private:
    void Say(const std::wstring& what, Point at) {
        log_.push_back(Name() + L" " + what + L" " + std::to_wstring(at.x) + L"," + std::to_wstring(at.y));
    }
    std::vector<std::wstring>& log_;
};

struct DragTest : test::FormFixture {
    using Log = std::vector<std::wstring>;
    Log log;
    Frame& page = root.Add<Frame>(L"page");
    Frame& panel = page.Add<Frame>(L"panel");
    Bin& low = panel.Add<Bin>(L"low", log);
    Button& cover = panel.Add<Button>(L"cover");
    Bin& side = page.Add<Bin>(L"side", log);
    Button& source = page.Add<Button>(L"source");
    DragBroker drag{source};
    DragTest() {
        root.SetBounds({0, 0, 400, 300});
        page.SetBounds({10, 20, 300, 200});
        panel.SetBounds({100, 50, 120, 100});
        panel.SetContent({100, 400}, 20);
        low.SetBounds({5, 150, 112, 60}); // reaches below the scroll bar
        cover.SetBounds({5, 190, 80, 20});
        side.SetBounds({0, 0, 50, 50});
    }
    Log Taken() { return std::exchange(log, {}); }
};

TEST_F(DragTest, FindsWhatShowsAtThePointThroughFramesAndScrolling) {
    EXPECT_EQ(WidgetAt(root, {15, 25}), &side);
    EXPECT_EQ(WidgetAt(root, {115, 75}), &panel) << "the target is scrolled out of view";
    panel.ScrollTo({0, 140});
    EXPECT_EQ(WidgetAt(root, {115, 80}), &low);
    EXPECT_EQ(WidgetAt(root, {115, 125}), &cover) << "the later one lies on top";
    EXPECT_EQ(WidgetAt(root, {221, 85}), &panel) << "on its scroll bar";
    EXPECT_EQ(WidgetAt(root, {400, 10}), nullptr);
    panel.SetVisible(false);
    EXPECT_EQ(WidgetAt(root, {115, 80}), &page);
    EXPECT_EQ(InWidget(low, InForm(low, {3, 4})), (Point{3, 4}));
    EXPECT_EQ(InForm(low, {3, 4}), (Point{118, 84}));
}

TEST_F(DragTest, TellsOneTargetAtATime) {
    panel.ScrollTo({0, 140});
    drag.Move({15, 25});
    EXPECT_EQ(Taken(), Log{}) << "nothing is dragged yet";
    drag.Begin(L"Code", L"Code");
    drag.Move({15, 25});
    drag.Move({16, 25});
    EXPECT_EQ(Taken(), (Log{L"side over 5,5", L"side over 6,5"}));
    drag.Move({115, 80});
    EXPECT_EQ(Taken(), (Log{L"side leave", L"low over 0,0"}));
    drag.Move({115, 125});
    EXPECT_EQ(Taken(), Log{L"low leave"}) << "a cover takes nothing";
    EXPECT_FALSE(drag.OverTarget());
    EXPECT_TRUE(drag.Drop({116, 82}));
    EXPECT_EQ(Taken(), Log{L"low drop Code 1,2"});
    drag.Cancel();
    EXPECT_EQ(Taken(), Log{}) << "it is over";
}

TEST_F(DragTest, LeavesTheTargetHoweverItEnds) {
    const auto begin = [this] {
        drag.Begin(L"Code", L"Code");
        drag.Move({15, 25});
        Taken();
    };
    begin();
    drag.Cancel();
    EXPECT_EQ(Taken(), Log{L"side leave"});
    begin();
    drag.Begin(L"refused", L"");
    EXPECT_EQ(Taken(), Log{L"side leave"});
    EXPECT_FALSE(drag.Drop({15, 25}));
    begin();
    side.SetVisible(false);
    EXPECT_FALSE(drag.Drop({15, 25}));
    EXPECT_EQ(Taken(), Log{L"side leave"});
    side.SetVisible(true);
    begin();
    side.SetEnabled(false);
    EXPECT_FALSE(drag.Drop({15, 25}));
    EXPECT_EQ(Taken(), Log{L"side leave"});
}

} // namespace
} // namespace orv::controls
