#include "tests/editor/random_user.h"

#include "controls/check_list.h"
#include "controls/combo_box.h"
#include "controls/drag.h"
#include "controls/mb_edit.h"
#include "controls/number_box.h"
#include "controls/picture_list.h"
#include "controls/simple_widgets.h"
#include "controls/tab_strip.h"
#include "controls/toolbar.h"
#include "controls/tree.h"

namespace orv::test {
namespace {

using controls::Kind;
using controls::Point;
using controls::Widget;

constexpr int kRowHeight = 20;
constexpr controls::Size kSlack{4, 4};

void Collect(Widget& below, std::vector<Widget*>& usable) {
    if (!below.Visible() || !below.Enabled())
        return;
    const Kind kind = below.GetKind();
    if (kind != Kind::Frame && kind != Kind::Label && kind != Kind::HintLine && kind != Kind::WarningStrip &&
        kind != Kind::OutputStrip)
        usable.push_back(&below);
    for (const auto& child : below.Children())
        Collect(*child, usable);
}

std::string Narrow(const std::wstring& text) {
    return {text.begin(), text.end()};
}

} // namespace

std::vector<Widget*> RandomUser::Usable() {
    std::vector<Widget*> usable;
    Collect(form_.Root(), usable);
    return usable;
}

std::string RandomUser::Act() {
    if (OneIn(6))
        return Key();
    const auto usable = Usable();
    if (usable.empty())
        return "nothing to do";
    Widget* tree = form_.Root().Find(L"tvw");
    Widget& chosen = tree && OneIn(12) ? *tree : *usable[random_() % usable.size()];
    // The pointer brings the focus along; a widget that keeps it does not stop the click.
    if (chosen.CanTakeFocus())
        form_.FocusArrived(chosen);
    return chosen.EffectivelyVisible() ? Use(chosen) : "gone: " + Narrow(chosen.Name());
}

std::string RandomUser::Key() {
    using controls::Key;
    static constexpr Key kKeys[] = {Key::Tab,      Key::Tab,    Key::Tab,    Key::Return, Key::Escape, Key::Left,
                                    Key::Right,    Key::Up,     Key::Down,   Key::Home,   Key::End,    Key::PageUp,
                                    Key::PageDown, Key::Delete, Key::Insert, Key::Back,   Key::F4,     Key::A,
                                    Key::C,        Key::V,      Key::X,      Key::Y,      Key::Z};
    controls::KeyEvent key{.shift = OneIn(4), .ctrl = OneIn(5), .alt = OneIn(5)};
    if (OneIn(2))
        key.character = OneIn(4) ? L' ' : static_cast<wchar_t>(L'0' + Below(75));
    else
        key.key = kKeys[random_() % std::size(kKeys)];
    // Alt+A saves like its button.
    if (key.alt && (key.character | 0x20) == L'a' && !OneIn(saves_))
        key.alt = false;
    form_.RouteKey(key);
    return "key " + std::to_string(static_cast<int>(key.key)) + " '" + std::to_string(static_cast<int>(key.character)) +
           "'" + (key.shift ? " shift" : "") + (key.ctrl ? " ctrl" : "") + (key.alt ? " alt" : "");
}

std::string RandomUser::Use(Widget& widget) {
    const std::string what = Narrow(widget.Name()) + "(" + std::to_string(widget.Index()) + ")";
    switch (widget.GetKind()) {
    case Kind::Button:
        if ((widget.Name() != L"cmdOK" && widget.Name() != L"cmdApply") || OneIn(saves_))
            static_cast<controls::Button&>(widget).Press();
        break;
    case Kind::CheckBox:
        static_cast<controls::CheckBox&>(widget).Toggle();
        break;
    case Kind::OptionButton:
        static_cast<controls::OptionButton&>(widget).Choose();
        break;
    case Kind::DropButton:
        static_cast<controls::DropButton&>(widget).Choose(Below(33));
        break;
    case Kind::ComboBox: {
        auto& combo = static_cast<controls::ComboBox&>(widget);
        combo.Select(Below(static_cast<int>(combo.Entries().size()) + 1));
        break;
    }
    case Kind::TabStrip: {
        auto& tabs = static_cast<controls::TabStrip&>(widget);
        tabs.Select(Below(static_cast<int>(tabs.Tabs().size()) + 1));
        break;
    }
    case Kind::Tree:
        UseTree(widget);
        break;
    case Kind::MBEdit:
        UseBytes(widget);
        break;
    case Kind::NumberBox:
        UseNumber(widget);
        break;
    case Kind::CheckList:
        UseRows(widget);
        break;
    case Kind::PictureList:
        UsePictures(widget);
        break;
    case Kind::Toolbar:
        UseToolbar(widget);
        break;
    default:
        break;
    }
    return what;
}

void RandomUser::UseTree(Widget& widget) {
    auto& tree = static_cast<controls::Tree&>(widget);
    const std::wstring key = tree.Nodes()[random_() % tree.Nodes().size()].key;
    if (OneIn(8))
        tree.Collapse(key);
    else if (OneIn(6))
        tree.Expand(key);
    else
        tree.Click(key);
}

void RandomUser::UseBytes(Widget& widget) {
    auto& box = static_cast<controls::MBEdit&>(widget);
    static constexpr wchar_t kTyped[] = L"AZaz09<>. ,\x00E9\x20AC\x4E00\x0002\r";
    switch (Below(8)) {
    case 0:
        box.InsertCC(static_cast<std::uint8_t>(Below(33)));
        break;
    case 1:
        box.Paste();
        break;
    case 2:
        box.Undo();
        break;
    case 3:
        box.PointAt(random_() % (box.TextLength() + 1), OneIn(2));
        break;
    case 4:
        box.Cut();
        break;
    default:
        box.TypeText(std::wstring(1, kTyped[random_() % (std::size(kTyped) - 1)]));
    }
}

void RandomUser::UseNumber(Widget& widget) {
    auto& box = static_cast<controls::NumberBox&>(widget);
    static const wchar_t* const kTexts[] = {L"", L"-", L"0", L"-1", L"300", L"99999", L"abc"};
    if (OneIn(3))
        box.Step(Below(7) - 3);
    else if (OneIn(4))
        box.Edit(kTexts[random_() % std::size(kTexts)]);
    else
        box.Edit(std::to_wstring(box.Least() + static_cast<int>(random_() % 20)));
}

void RandomUser::UseRows(Widget& widget) {
    auto& list = static_cast<controls::CheckList&>(widget);
    const int row = Below(static_cast<int>(list.Rows().size()) + 1);
    if (OneIn(4))
        list.Select(row);
    else if (OneIn(8))
        list.Activate(row);
    else
        list.Toggle(row);
}

void RandomUser::UsePictures(Widget& widget) {
    auto& list = static_cast<controls::PictureList&>(widget);
    list.SetGeometry({{0, 0, widget.Bounds().width, widget.Bounds().height}, kRowHeight, 4});
    const int count = static_cast<int>(list.Rows().size());
    const Point from{10, Below(count + 1) * kRowHeight + 10};
    switch (Below(6)) {
    case 0:
        list.Do(static_cast<controls::PictureList::Command>(Below(3)));
        break;
    case 1:
        list.Press(from, true);
        list.Release(from);
        break;
    case 2:
        list.Press(from);
        list.PointTo({10, Below(widget.Bounds().height + 40) - 20});
        list.Tick(100);
        if (OneIn(4))
            list.CancelDrag();
        list.Release({10, Below(widget.Bounds().height)});
        break;
    default:
        list.Press(from);
        list.Release(from);
    }
}

void RandomUser::UseToolbar(Widget& widget) {
    auto& bar = static_cast<controls::Toolbar&>(widget);
    if (bar.Buttons().empty())
        return;
    const int button = Below(static_cast<int>(bar.Buttons().size()));
    auto* target = dynamic_cast<controls::PictureList*>(form_.Root().Find(L"pls"));
    if (!bar.Palette() || !target || OneIn(3)) {
        OneIn(3) ? bar.Activate(button) : bar.Click(button);
        return;
    }
    const controls::Rect place = bar.PlaceOf(button);
    target->SetGeometry({{0, 0, target->Bounds().width, target->Bounds().height}, kRowHeight, 4});
    const Point to{10, Below(target->Bounds().height + 40) - 20};
    const Point there = InWidget(bar, InForm(*target, to));
    bar.Press({place.x + place.width / 2, place.y + place.height / 2});
    bar.PointTo(there, kSlack);
    if (OneIn(8))
        bar.CancelPress();
    bar.Release(there);
}

} // namespace orv::test
