#include "controls/layout.h"
#include "fixture.h"

namespace orv::controls {
namespace {

struct LayoutTest : test::FormFixture {
    Label& NewLabel(const wchar_t* text) {
        auto& label = root.Add<Label>(text);
        label.SetCaption(text);
        return label;
    }
    test::FixedFont font;
};

TEST_F(LayoutTest, GridSharesColumnsAndGivesTheRestToWhatGrows) {
    Label& shortLabel = NewLabel(L"ab");
    Label& longLabel = NewLabel(L"abcdef");
    Label& upper = NewLabel(L"x");
    Label& lower = NewLabel(L"y");
    Grid grid(2, 10, 4);
    grid.Add(Cell(shortLabel)).Add(Cell(upper, Grow::Across)).Add(Cell(longLabel)).Add(Cell(lower, Grow::Both));
    EXPECT_EQ(grid.Minimum(font), (Size{42 + 10 + 7, 16 + 4 + 16}));
    grid.Place({5, 5, 200, 100}, font);
    EXPECT_EQ(shortLabel.Bounds(), (Rect{5, 5, 14, 16}));
    EXPECT_EQ(upper.Bounds(), (Rect{57, 5, 148, 16})) << "behind the longest label of the column";
    EXPECT_EQ(lower.Bounds(), (Rect{57, 25, 148, 80}));
    EXPECT_EQ(longLabel.Bounds(), (Rect{5, 25 + 32, 42, 16})) << "in the middle of its row";
}

TEST_F(LayoutTest, OddPixelsAreAllGivenAway) {
    Grid grid(3, 0, 0);
    Widget* last = nullptr;
    for (const wchar_t* text : {L"a", L"b", L"c"}) {
        last = &NewLabel(text);
        grid.Add(Cell(*last, Grow::Across));
    }
    grid.Place({0, 0, 101, 16}, font);
    EXPECT_EQ(last->Bounds().Right(), 101);
}

TEST_F(LayoutTest, GroupLeavesRoomForItsCaptionAndScales) {
    auto& frame = root.Add<Frame>(L"fra");
    frame.SetGroupBox(true);
    frame.SetCaption(L"A caption longer than what stands inside");
    auto& label = frame.Add<Label>(L"lbl");
    label.SetCaption(L"x");
    auto box = Group(frame, Cell(label));
    const test::FixedFont twice(200);
    EXPECT_GT(box->Minimum(font).width, font.Width(frame.Caption()));
    EXPECT_EQ(box->Minimum(twice).height, 2 * box->Minimum(font).height);
    const Size least = box->Minimum(twice);
    box->Place({3, 4, least.width, least.height}, twice);
    EXPECT_GE(label.Bounds().y, twice.LineHeight());
    EXPECT_LE(label.Bounds().Bottom(), least.height);
}

TEST_F(LayoutTest, OverlaidBoxesShareOnePlace) {
    Label& small = NewLabel(L"ab");
    Label& wide = NewLabel(L"abcdefgh");
    auto box = Overlay(Boxed(Cell(small), Column(Boxed(Cell(wide, Grow::Across), Cell(NewLabel(L"x"))), 4)));
    EXPECT_EQ(box->Minimum(font), (Size{56, 36}));
    EXPECT_TRUE(box->GrowsAcross());
    box->Place({10, 20, 100, 50}, font);
    EXPECT_EQ(small.Bounds(), (Rect{10, 20, 14, 16})) << "not stretched by its neighbour";
    EXPECT_EQ(wide.Bounds(), (Rect{10, 20, 100, 16}));
}

TEST_F(LayoutTest, WhatIsNotWantedTakesNoRoom) {
    Label& label = NewLabel(L"ab");
    bool wanted = false;
    auto box = Column(Boxed(When(wanted, Cell(label)), Cell(NewLabel(L"x"))), 0);
    EXPECT_EQ(box->Minimum(font), (Size{7, 16}));
    wanted = true;
    EXPECT_EQ(box->Minimum(font), (Size{14, 32}));
    box->Place({0, 0, 50, 32}, font);
    EXPECT_EQ(label.Bounds(), (Rect{0, 0, 14, 16}));
}

} // namespace
} // namespace orv::controls
