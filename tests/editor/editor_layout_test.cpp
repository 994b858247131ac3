#include <set>

#include "fixture.h"
#include "tests/controls/fixture.h"

namespace orv::editor {
namespace {

using controls::Kind;
using controls::Rect;
using controls::Size;
using controls::Widget;

struct LayoutCase {
    Size client;
    int percent;
};

struct EditorLayoutTest : test::EditorFixture {
    EditorLayoutTest() {
        root.Codes().Combination(model::kCombinationByExpression);
        root.Codes().Groups().ParseExpression(L"1|7&[1]");
        root.Advanced(true);
        editor->BuildTree();
    }
    /// Children of one parent neither overlap nor stand outside; nothing is smaller than it needs.
    void CheckBelow(const Widget& parent, const Size& area, const controls::TextMeasure& font) {
        std::vector<const Widget*> seen;
        for (const auto& child : parent.Children()) {
            if (!child->Visible())
                continue;
            const Rect& bounds = child->Bounds();
            const std::string what(child->Name().begin(), child->Name().end());
            EXPECT_TRUE(bounds.x >= 0 && bounds.y >= 0 && bounds.Right() <= area.width &&
                        bounds.Bottom() <= area.height)
                << what << " stands outside";
            if (child->GetKind() != Kind::Frame && &parent != &editor->Root()) {
                EXPECT_GE(bounds.width, child->MinimumSize(font).width) << what;
                EXPECT_GE(bounds.height, child->MinimumSize(font).height) << what;
            }
            for (const Widget* other : seen)
                EXPECT_FALSE(bounds.Overlaps(other->Bounds()))
                    << what << " over " << std::string(other->Name().begin(), other->Name().end());
            seen.push_back(child.get());
            CheckBelow(*child, ContentOf(*child), font);
        }
    }
    static Size ContentOf(const Widget& widget) {
        Size size{widget.Bounds().width, widget.Bounds().height};
        if (const auto* frame = dynamic_cast<const controls::Frame*>(&widget))
            size = {std::max(frame->View().width, frame->ContentSize().width),
                    std::max(frame->View().height, frame->ContentSize().height)};
        return size;
    }
};

TEST_F(EditorLayoutTest, NothingOverlapsOrIsCutAtAnySize) {
    for (const LayoutCase& c :
         {LayoutCase{{640, 480}, 100}, LayoutCase{{640, 480}, 150}, LayoutCase{{640, 480}, 200},
          LayoutCase{{800, 560}, 100}, LayoutCase{{1600, 1000}, 100}, LayoutCase{{1600, 1000}, 200}}) {
        SCOPED_TRACE(std::to_string(c.client.width) + " at " + std::to_string(c.percent));
        const test::FixedFont font(c.percent);
        editor->Layout(c.client, font);
        for (const wchar_t* key : {L"CodeDef", L"Code1", L"Group1", L"FormatDef", L"Format1"}) {
            Click(key);
            CheckBelow(editor->Root(), c.client, font);
        }
        const Rect& tree = editor->Root().Find(L"tvw")->Bounds();
        const Rect& bottom = editor->Root().Find(L"picBottom")->Bounds();
        EXPECT_EQ(tree.height, c.client.height - bottom.height - 2 * tree.y);
        EXPECT_EQ(bottom.Bottom(), c.client.height);
    }
}

TEST_F(EditorLayoutTest, RoomIsUsedAndScrollingIsForSmallWindowsOnly) {
    const test::FixedFont font;
    Click(L"FormatDef");
    editor->Layout({1600, 1000}, font);
    auto& page = Get<controls::Frame>(L"fraFormatDef");
    EXPECT_FALSE(page.ScrollsDown() || page.ScrollsAcross());
    EXPECT_GT(Box(L"mbeHeader").Bounds().width, 900);
    editor->Layout({800, 560}, font);
    EXPECT_FALSE(page.ScrollsDown() || page.ScrollsAcross());
    const test::FixedFont twice(200);
    editor->Layout({640, 480}, twice);
    EXPECT_TRUE(page.ScrollsDown());
    editor->Form().SetFocus(Box(L"mbeTerminator"));
    const Rect box = Box(L"mbeTerminator").Bounds();
    const Rect frame = editor->Root().Find(L"fraStdFormat")->WindowBounds();
    EXPECT_LE(frame.y + box.Bottom(), page.View().height) << "the focused field is scrolled into view";
}

TEST_F(EditorLayoutTest, TheShortCaptionServesWhereTheLongOneHasNoRoom) {
    auto& check = Get<controls::CheckBox>(L"chkNoInteractive");
    editor->Layout({1000, 560}, test::FixedFont());
    EXPECT_EQ(check.Caption(), L"Apply to configuration only (do not send to the device)");
    editor->Layout({800, 560}, test::FixedFont());
    EXPECT_EQ(check.Caption(), L"Apply to configuration only");
    EXPECT_LT(check.Bounds().y, Button(L"cmdAbout").Bounds().Bottom()) << "one row still";
    editor->Layout({640, 480}, test::FixedFont(200));
    EXPECT_EQ(check.Caption(), L"Apply to configuration only");
    EXPECT_EQ(check.AccessibleName(), L"Apply to configuration only (do not send to the device)");
    editor->Layout({1600, 1000}, test::FixedFont(150));
    EXPECT_EQ(check.Caption(), L"Apply to configuration only (do not send to the device)");
}

TEST_F(EditorLayoutTest, AccessKeysAreUniqueOnEachPage) {
    for (const wchar_t* key : {L"CodeDef", L"Code1", L"Group1", L"FormatDef", L"Format1"}) {
        Click(key);
        std::set<wchar_t> used;
        const std::function<void(const Widget&)> collect = [&](const Widget& widget) {
            const wchar_t letter = widget.AccessKey();
            if (letter != 0 && widget.EffectivelyVisible()) {
                EXPECT_TRUE(used.insert(letter).second) << "twice: " << static_cast<char>(letter);
            }
            for (const auto& child : widget.Children())
                collect(*child);
        };
        collect(editor->Root());
        EXPECT_GE(used.size(), 3u);
    }
    EXPECT_EQ(Button(L"cmdOK").AccessKey(), 0);
    EXPECT_EQ(Button(L"cmdCancel").AccessKey(), 0);
}

TEST_F(EditorLayoutTest, EveryCodeTypeFitsWithAccessKeysOfItsOwn) {
    root.Codes().Combination(1); // both strings of the code are there
    for (const LayoutCase& c :
         {LayoutCase{{640, 480}, 100}, LayoutCase{{640, 480}, 200}, LayoutCase{{1600, 1000}, 150}}) {
        const test::FixedFont font(c.percent);
        editor->Layout(c.client, font);
        int lengthAt = -1;
        for (std::int32_t type = 0; type <= 18; ++type) {
            SCOPED_TRACE(std::to_string(type) + " at " + std::to_string(c.percent));
            root.Codes().Code(1)->CodeType(type);
            Click(L"Code1");
            CheckBelow(editor->Root(), c.client, font);
            const int at = editor->Root().Find(L"fraLength")->Bounds().y;
            EXPECT_TRUE(lengthAt == at || type == 0) << "nothing permanent moves";
            lengthAt = at;
            std::multiset<wchar_t> used;
            const std::function<void(const Widget&)> collect = [&](const Widget& widget) {
                if (widget.AccessKey() != 0 && widget.EffectivelyVisible())
                    used.insert(widget.AccessKey());
                for (const auto& child : widget.Children())
                    collect(*child);
            };
            collect(editor->Root());
            for (wchar_t letter : used)
                EXPECT_EQ(used.count(letter), 1u) << static_cast<char>(letter);
        }
    }
}

} // namespace
} // namespace orv::editor
