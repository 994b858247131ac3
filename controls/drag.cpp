#include "controls/drag.h"

#include <algorithm>

#include "controls/frame.h"

namespace orv::controls {
namespace {

Widget& RootOf(Widget& widget) {
    Widget* root = &widget;
    while (root->Parent())
        root = root->Parent();
    return *root;
}

DropTarget* AsTarget(Widget* widget) {
    return dynamic_cast<DropTarget*>(widget);
}

/// The part of a widget in which its children show, from its own top left corner.
Size ViewOf(const Widget& widget) {
    const auto* frame = dynamic_cast<const Frame*>(&widget);
    return frame ? frame->View() : Size{widget.Bounds().width, widget.Bounds().height};
}

bool Contains(Size size, Point at) {
    return at.x >= 0 && at.y >= 0 && at.x < size.width && at.y < size.height;
}

/// `at` is relative to the widget.
Widget* Below(Widget& widget, Point at) {
    const Rect& bounds = widget.Bounds();
    if (!widget.Visible() || !Contains({bounds.width, bounds.height}, at))
        return nullptr;
    if (Contains(ViewOf(widget), at)) {
        const auto& children = widget.Children();
        // NOLINTNEXTLINE(modernize-loop-convert): reversed views do not compile with this library and this clang
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            const Rect place = (*child)->WindowBounds();
            if (Widget* found = Below(**child, {at.x - place.x, at.y - place.y}))
                return found;
        }
    }
    return &widget;
}

bool Holds(const Widget& tree, const Widget* wanted) {
    return &tree == wanted || std::any_of(tree.Children().begin(), tree.Children().end(),
                                          [wanted](const auto& child) { return Holds(*child, wanted); });
}

} // namespace

Point InForm(const Widget& widget, Point local) {
    for (const Widget* w = &widget; w; w = w->Parent()) {
        const Rect place = w->WindowBounds();
        local.x += place.x;
        local.y += place.y;
    }
    return local;
}

Point InWidget(const Widget& widget, Point inForm) {
    const Point origin = InForm(widget, {});
    return {inForm.x - origin.x, inForm.y - origin.y};
}

Widget* WidgetAt(Widget& root, Point inForm) {
    return Below(root, InWidget(root, inForm));
}

void DragBroker::Begin(std::wstring key, std::wstring text) {
    Cancel();
    item_ = {std::move(key), std::move(text), &source_};
    active_ = true;
}

bool DragBroker::StillThere(const Widget* widget) const {
    return widget && Holds(RootOf(source_), widget);
}

Widget* DragBroker::TargetAt(Point inForm) const {
    Widget* found = WidgetAt(RootOf(source_), inForm);
    while (found && !AsTarget(found))
        found = found->Parent();
    if (!found || !found->EffectivelyEnabled() || !AsTarget(found)->Accepts(item_))
        return nullptr;
    return found;
}

void DragBroker::Aim(Widget* target) {
    Widget* former = target_;
    target_ = target;
    if (former != target && StillThere(former))
        AsTarget(former)->DragLeave();
}

void DragBroker::Move(Point inForm) {
    if (!active_)
        return;
    Aim(TargetAt(inForm));
    if (target_)
        AsTarget(target_)->DragOver(item_, InWidget(*target_, inForm));
}

bool DragBroker::Drop(Point inForm) {
    if (!active_)
        return false;
    Aim(TargetAt(inForm));
    Widget* target = target_;
    active_ = false;
    target_ = nullptr;
    if (!target)
        return false;
    const DragItem item = item_;
    AsTarget(target)->Drop(item, InWidget(*target, inForm));
    return true;
}

void DragBroker::Cancel() {
    active_ = false;
    Aim(nullptr);
}

} // namespace orv::controls
