#include "controls/focus_navigator.h"

#include <algorithm>
#include <cwctype>
#include <vector>

#include "controls/simple_widgets.h"
#include "controls/tab_strip.h"

namespace orv::controls {
namespace {

void Flatten(Widget& widget, std::vector<Widget*>& order) {
    order.push_back(&widget);
    for (const auto& child : widget.Children())
        Flatten(*child, order);
}

/// The one button of a group that Tab stops at.
bool IsGroupStop(const OptionButton& button) {
    const OptionButton* first = nullptr;
    for (const OptionButton* other : button.Group()) {
        if (!other->CanTakeFocus())
            continue;
        if (other->Chosen())
            return other == &button;
        if (!first)
            first = other;
    }
    return first == &button;
}

bool SameGroup(const Widget& a, const Widget* b) {
    return b && b->GetKind() == Kind::OptionButton && a.Parent() == b->Parent();
}

bool IsStop(const Widget& widget, const Widget* from) {
    if (!widget.CanTakeFocus() || &widget == from)
        return false;
    const auto* option = dynamic_cast<const OptionButton*>(&widget);
    return !option || (!SameGroup(widget, from) && IsGroupStop(*option));
}

/// Asked for many ancestors one after the other; `searched` need not be looked at again.
TabStrip* FindTabStrip(Widget& below, const Widget* searched) {
    if (&below == searched || !below.EffectivelyVisible() || !below.EffectivelyEnabled())
        return nullptr;
    if (auto* strip = dynamic_cast<TabStrip*>(&below))
        return strip;
    for (const auto& child : below.Children())
        if (TabStrip* found = FindTabStrip(*child, searched))
            return found;
    return nullptr;
}

wchar_t Upper(wchar_t letter) {
    return static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(letter)));
}

} // namespace

Widget* NextStop(Widget& root, const Widget* from, Direction direction) {
    std::vector<Widget*> order;
    Flatten(root, order);
    if (direction == Direction::Back)
        std::reverse(order.begin(), order.end());
    auto start = from ? std::find(order.begin(), order.end(), from) : order.begin();
    const auto found = std::find_if(start, order.end(), [from](const Widget* w) { return IsStop(*w, from); });
    return found == order.end() ? nullptr : *found;
}

TabStrip* NearestTabStrip(Widget& from) {
    const Widget* searched = nullptr;
    for (Widget* around = &from; around; around = around->Parent()) {
        if (TabStrip* found = FindTabStrip(*around, searched))
            return found;
        searched = around;
    }
    return nullptr;
}

Widget* FindAccessKey(Widget& root, const Widget* from, wchar_t letter) {
    std::vector<Widget*> order;
    Flatten(root, order);
    auto start = from ? std::find(order.begin(), order.end(), from) : order.begin();
    if (from && start != order.end())
        ++start;
    std::rotate(order.begin(), start, order.end());
    const wchar_t wanted = Upper(letter);
    const auto found = std::find_if(order.begin(), order.end(), [wanted](const Widget* w) {
        return w->AccessKey() == wanted && w->EffectivelyVisible() && w->EffectivelyEnabled();
    });
    return found == order.end() ? nullptr : *found;
}

} // namespace orv::controls
