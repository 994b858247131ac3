#include "controls/toolbar.h"

#include "fixture.h"

namespace orv::controls {
namespace {

struct Basket : Widget, DropTarget {
    explicit Basket(std::wstring name) : Widget(Kind::Frame, std::move(name)) {}
    bool Accepts(const DragItem&) const override { return true; }
    void DragOver(const DragItem& item, Point) override { log += L"over " + item.key + L" "; }
    void DragLeave() override { log += L"leave "; }
    void Drop(const DragItem& item, Point) override { log += L"drop " + item.text + L" "; }
    Size MinimumSize(const TextMeasure&) const override { return {}; }
    std::wstring log;
};

struct ToolbarTest : test::FormFixture {
    Toolbar& bar = root.Add<Toolbar>(L"tbr");
    std::wstring events;

    ToolbarTest() {
        root.SetBounds({0, 0, 800, 600});
        bar.onClick = [this](const Toolbar::Button& button) { events += button.key + L" "; };
        bar.onActivate = [this](const Toolbar::Button& button) { events += L"take:" + button.key + L" "; };
    }
    void Types() {
        std::vector<Toolbar::Button> buttons;
        for (const wchar_t* key : {L"NONE", L"Code 39", L"ITF 2/5", L"EAN", L"Codabar", L"Code 128", L"Maxi"})
            buttons.push_back({key, key, L"Barcode", key, L"", true, false, 1});
        bar.SetButtonWidth(90);
        bar.SetLeastColumns(2);
        bar.SetButtons(std::move(buttons));
        bar.MinimumSize(test::FixedFont());
        bar.SetBounds({0, 0, 280, 72});
        form.SetFocus(bar);
    }
    Basket& Palette() {
        bar.SetPalette(true);
        bar.SetButtons({{L"CODE", L"Code", L"CODE", L"", L""},
                        {L"LENGTH", L"Length", L"LENGTH", L"", L""},
                        {L"OLD", L"Old", L"OLD", L"not on this device", L"", false}});
        bar.MinimumSize(test::FixedFont());
        bar.SetBounds({10, 20, 150, 72});
        auto& basket = root.Add<Basket>(L"pls");
        basket.SetBounds({300, 0, 100, 100});
        form.SetFocus(bar);
        return basket;
    }
    static Point Middle(const Rect& place) { return {place.x + place.width / 2, place.y + place.height / 2}; }
    void ClickAt(Point at, bool twice = false) {
        bar.Press(at, twice);
        bar.Release(at);
    }
};

TEST_F(ToolbarTest, WrapsAtItsWidthAndFindsWhatItPlaces) {
    Types();
    EXPECT_EQ(bar.MinimumSize(test::FixedFont()), (Size{180, 4 * 24}));
    EXPECT_EQ(bar.Columns(), 3);
    for (int button = 0; button < 7; ++button)
        EXPECT_EQ(bar.ButtonAt(Middle(bar.PlaceOf(button))), button);
    EXPECT_EQ(bar.ButtonAt({275, 10}), -1) << "beside the last column";
    EXPECT_EQ(bar.ButtonAt({100, 60}), -1) << "behind the last button";
    EXPECT_EQ(bar.MinimumSize(test::FixedFont(150)), (Size{270, 4 * 36}));
    EXPECT_EQ(bar.Columns(), 2) << "larger buttons in the same width";
    bar.SetBounds({0, 0, 20, 72});
    EXPECT_EQ(bar.Columns(), 1);
}

TEST_F(ToolbarTest, AGroupHasOnePressedButtonAndTellsOfChangesAlone) {
    Types();
    bar.SetPressed(L"EAN");
    EXPECT_TRUE(events.empty());
    ClickAt(Middle(bar.PlaceOf(5)));
    ClickAt(Middle(bar.PlaceOf(5)));
    EXPECT_EQ(events, L"Code 128 ");
    EXPECT_EQ(bar.Pressed()->key, L"Code 128");
    EXPECT_FALSE(bar.Buttons()[3].pressed);
    bar.SetPressed(L"unknown");
    EXPECT_EQ(bar.Pressed(), nullptr);
    bar.SetButtonEnabled(L"EAN", false, L"not on this device");
    ClickAt(Middle(bar.PlaceOf(3)));
    EXPECT_EQ(bar.Pressed(), nullptr);
    EXPECT_EQ(bar.Current(), 3) << "the focus goes there, so that the reason can be read";
    bar.Press(Middle(bar.PlaceOf(1)));
    EXPECT_EQ(bar.Held(), 1);
    bar.PointTo(Middle(bar.PlaceOf(2)), {4, 4});
    EXPECT_EQ(bar.Held(), -1);
    bar.Release(Middle(bar.PlaceOf(2)));
    EXPECT_EQ(bar.Pressed(), nullptr) << "let go elsewhere";
    EXPECT_EQ(events, L"Code 128 ");
}

TEST_F(ToolbarTest, KeysMoveTheFocusAndPressWhereItIs) {
    Types();
    std::wstring path;
    bar.onCurrent = [&](const Toolbar::Button& button) { path += button.caption + L","; };
    for (Key key :
         {Key::Down, Key::Down, Key::Down, Key::Up, Key::Right, Key::Left, Key::End, Key::Right, Key::Home, Key::Up})
        Press(key);
    EXPECT_EQ(path, L"EAN,Maxi,EAN,Codabar,EAN,Maxi,NONE,") << "no further than the first and the last";
    for (wchar_t letter : std::wstring(L"code 1"))
        Type(letter);
    EXPECT_EQ(bar.Buttons()[static_cast<std::size_t>(bar.Current())].caption, L"Code 128");
    EXPECT_TRUE(events.empty()) << "moving presses nothing";
    Press(Key::Return);
    Press(Key::Home);
    Type(L' ');
    EXPECT_EQ(events, L"Code 128 NONE ");
    bar.SetButtonEnabled(L"Code 39", false, L"");
    Press(Key::Right);
    Press(Key::Return);
    EXPECT_EQ(platform.boxes.beeps, 1);
    EXPECT_EQ(bar.Pressed()->key, L"NONE");
    Button& other = root.Add<Button>(L"other");
    bar.SetPressed(L"Maxi");
    form.SetFocus(other);
    form.SetFocus(bar);
    EXPECT_EQ(bar.Current(), 6) << "the keyboard arrives at what is pressed";
}

TEST_F(ToolbarTest, APaletteIsDraggedFromBeyondTheSlack) {
    Basket& basket = Palette();
    const Point start = Middle(bar.PlaceOf(1));
    bar.Press(start, true);
    bar.PointTo({start.x + 4, start.y - 4}, {4, 4});
    EXPECT_FALSE(bar.Drag().Active());
    bar.PointTo({start.x + 5, start.y}, {4, 4});
    EXPECT_TRUE(bar.Drag().Active());
    EXPECT_EQ(bar.Held(), -1) << "what is dragged is held down no more";
    bar.PointTo({310, 10}, {4, 4});
    bar.Release({310, 10});
    EXPECT_EQ(basket.log, L"over LENGTH drop Length ");
    EXPECT_TRUE(events.empty()) << "a drag is no double click";
    basket.log.clear();
    bar.Press(start);
    bar.PointTo({310, 10}, {4, 4});
    EXPECT_EQ(Press(Key::Escape), KeyOutcome::Handled);
    bar.Release({310, 10});
    EXPECT_EQ(basket.log, L"over LENGTH leave ");
    EXPECT_EQ(Press(Key::Escape), KeyOutcome::NotHandled);
    bar.Press(Middle(bar.PlaceOf(2)));
    bar.PointTo({310, 10}, {4, 4});
    EXPECT_FALSE(bar.Drag().Active()) << "what is not available";
    bar.CancelPress();
    bar.Press(start);
    bar.PointTo({310, 10}, {4, 4});
    bar.SetButtons({});
    EXPECT_FALSE(bar.Drag().Active()) << "what is there no more";
}

TEST_F(ToolbarTest, APaletteGivesByDoubleClickAndReturn) {
    Palette();
    ClickAt(Middle(bar.PlaceOf(0)));
    EXPECT_TRUE(events.empty());
    ClickAt(Middle(bar.PlaceOf(0)), true);
    Press(Key::Down);
    Press(Key::Return);
    Press(Key::Down);
    Press(Key::Return);
    ClickAt(Middle(bar.PlaceOf(2)), true);
    EXPECT_EQ(events, L"take:CODE take:LENGTH ");
    bar.onActivate = [this](const Toolbar::Button& button) {
        bar.SetButtons({});
        events += button.caption;
    };
    bar.Activate(1);
    EXPECT_EQ(bar.Current(), -1);
    for (Key key : {Key::Up, Key::Down, Key::Home, Key::End, Key::Return})
        Press(key);
    Type(L'x');
    bar.Press({1, 1});
    bar.Release({1, 1});
    EXPECT_EQ(events, L"take:CODE take:LENGTH Length");
}

TEST_F(ToolbarTest, ATallPaletteScrollsToTheKeyboardAndNotUnderThePointer) {
    auto& column = root.Add<Frame>(L"fraItems");
    column.SetBounds({0, 0, 150, 60});
    auto& tall = column.Add<Toolbar>(L"tbrTall");
    std::vector<Toolbar::Button> buttons;
    for (int i = 0; i < 10; ++i)
        buttons.push_back({std::to_wstring(i), std::to_wstring(i), L"", L"", L""});
    tall.SetButtons(std::move(buttons));
    const Size least = tall.MinimumSize(test::FixedFont());
    tall.SetBounds({0, 0, 130, least.height});
    column.SetContent({130, least.height}, 18);
    form.SetFocus(tall);
    Press(Key::End);
    EXPECT_EQ(column.Scroll().y, least.height - 60);
    Press(Key::Home);
    EXPECT_EQ(column.Scroll().y, 0);
    Button& other = root.Add<Button>(L"other");
    form.SetFocus(other);
    column.ScrollTo({0, 50});
    tall.Press({5, 52});
    form.FocusArrived(tall);
    EXPECT_EQ(column.Scroll().y, 50);
}

} // namespace
} // namespace orv::controls
