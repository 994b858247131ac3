#include "controls/picture_list_core.h"

#include <gtest/gtest.h>

namespace orv::controls {
namespace {

using State = PictureListCore::State;

constexpr int kNone = PictureListCore::kNone;

/// Rows of 20 pixels in a view 100 high that begins at (2, 2).
PictureListCore CoreOf(int count, int top = 0) {
    PictureListCore core;
    core.SetGeometry({{2, 2, 150, 100}, 20, 4});
    core.SetCount(count);
    core.ScrollTo(top);
    return core;
}

TEST(PictureListCore, FindsTheGapUnderThePointer) {
    struct Case {
        int count, top, y, gap;
    };
    for (const Case& c :
         {Case{4, 0, 2, 0},    // top edge
          Case{4, 0, -30, 0},  // above the list
          Case{4, 0, 11, 0},   // upper half of the first
          Case{4, 0, 12, 1},   // lower half
          Case{4, 0, 31, 1},   // upper half of the second
          Case{4, 0, 32, 2},   //
          Case{4, 0, 71, 3},   // upper half of the last
          Case{4, 0, 72, 4},   // lower half of the last
          Case{4, 0, 95, 4},   // below the last
          Case{4, 0, 300, 4},  // below the list
          Case{0, 0, 50, 0},   // an empty list
          Case{20, 5, 2, 5},   // scrolled
          Case{20, 5, -40, 5}, // what is out of view is no gap
          Case{20, 5, 12, 6}, Case{20, 5, 91, 9}, Case{20, 5, 92, 10}, Case{20, 5, 400, 10}, Case{20, 99, 101, 20}}) {
        const PictureListCore core = CoreOf(c.count, c.top);
        EXPECT_EQ(core.GapAt(c.y), c.gap) << c.count << " rows from " << c.top << " at " << c.y;
        EXPECT_LE(core.GapLine(c.gap), core.Geometry().view.Bottom());
    }
}

TEST(PictureListCore, FindsRowsInsideTheViewOnly) {
    const PictureListCore core = CoreOf(20, 5);
    EXPECT_EQ(core.RowAt({2, 2}), 5);
    EXPECT_EQ(core.RowAt({151, 101}), 9);
    for (const Point outside : {Point{1, 50}, Point{152, 50}, Point{50, 1}, Point{50, 102}})
        EXPECT_EQ(core.RowAt(outside), kNone);
    EXPECT_EQ(CoreOf(2).RowAt({50, 42}), kNone) << "below the last row";
    EXPECT_EQ(core.RowArea(6), (Rect{2, 22, 150, 20}));
}

TEST(PictureListCore, GoesThroughTheStatesOfADrag) {
    PictureListCore core = CoreOf(4);
    EXPECT_EQ(core.Press({50, 95}), kNone) << "no row there";
    EXPECT_EQ(core.GetState(), State::Idle);
    EXPECT_EQ(core.Press({50, 12}), 0);
    core.MoveTo({53, 15});
    EXPECT_EQ(core.GetState(), State::Pressed) << "a trembling hand does not drag";
    EXPECT_EQ(core.Release({53, 15}), std::nullopt);
    core.Press({50, 12});
    core.MoveTo({50, 16});
    EXPECT_EQ(core.GetState(), State::Carrying);
    EXPECT_EQ(core.Gap(), kNone) << "where it stands already";
    core.MoveTo({50, 75});
    EXPECT_EQ(core.Gap(), 4);
    EXPECT_FALSE(core.Host({50, 50})) << "one pointer drags one thing";
    core.MoveTo({50, 102 + 41});
    EXPECT_EQ(core.Gap(), kNone) << "far away nothing is meant";
    EXPECT_EQ(core.Release({50, 45}), (PictureListCore::RowMove{0, 2}));
    EXPECT_EQ(core.GetState(), State::Idle);
    EXPECT_EQ(core.Gap(), kNone);

    EXPECT_TRUE(core.Host({50, 32}));
    EXPECT_EQ(core.Gap(), 2);
    EXPECT_EQ(core.Press({50, 12}), kNone);
    EXPECT_FALSE(core.Cancel()) << "whoever drags it in ends that";
    EXPECT_EQ(core.Drop({50, 95}), 4);
    EXPECT_EQ(core.Drop({50, 95}), kNone);
}

TEST(PictureListCore, ScrollsNearTheEdgesAfterAMomentAndFasterFurtherOut) {
    const auto rowsIn = [](int y, int milliseconds) {
        PictureListCore core = CoreOf(200, 100);
        core.Host({50, y});
        for (int passed = 0; passed < milliseconds; passed += 50)
            core.Tick(50);
        return core.Top() - 100;
    };
    EXPECT_EQ(rowsIn(52, 3000), 0) << "the middle rests";
    EXPECT_EQ(rowsIn(98, 300), 0) << "just passing";
    EXPECT_GE(rowsIn(98, 2300), 8);
    EXPECT_LE(rowsIn(5, 2300), -8);
    EXPECT_GT(rowsIn(125, 2300), 2 * rowsIn(85, 2300));
    EXPECT_EQ(rowsIn(300, 3000), 0) << "out of reach";

    PictureListCore core = CoreOf(20);
    core.Press({50, 50});
    core.MoveTo({50, 110});
    for (int i = 0; i < 100; ++i)
        core.Tick(50);
    EXPECT_EQ(core.Top(), 15) << "not beyond the end";
    EXPECT_EQ(core.Gap(), 20) << "the mark goes along";
    EXPECT_TRUE(core.Cancel());
    EXPECT_EQ(core.Top(), 0) << "back to where it began";
}

} // namespace
} // namespace orv::controls
