#pragma once
// Dragging something from one widget onto another, without a window.
//
// The source owns a DragBroker and its window keeps the pointer captured: the source tells the broker where the
// pointer is and when it is let go, the broker finds the widget below that takes what is dragged. All points are in
// the coordinates of the form (InForm). Whoever drags has the focus, so that Escape reaches it, and its peer cancels
// when the capture is taken away and when it goes itself.
#include <string>

#include "controls/geometry.h"

namespace orv::controls {

class Widget;

struct DragItem {
    std::wstring key;
    std::wstring text; ///< what the user sees of it
    const Widget* source = nullptr;
};

/// The other base of a widget that things can be dropped on. Points are relative to the widget.
class DropTarget {
  public:
    virtual ~DropTarget() = default;
    /// Asked before each of the others.
    virtual bool Accepts(const DragItem& item) const = 0;
    /// The pointer is over the widget, or has moved there.
    virtual void DragOver(const DragItem& item, Point at) = 0;
    /// The pointer has left, or the drag has ended elsewhere: all is as before the first DragOver.
    virtual void DragLeave() = 0;
    /// Takes the place of DragLeave.
    virtual void Drop(const DragItem& item, Point at) = 0;
};

/// One drag at a time; a member of its source.
class DragBroker {
  public:
    explicit DragBroker(Widget& source) : source_(source) {}
    DragBroker(const DragBroker&) = delete;
    DragBroker& operator=(const DragBroker&) = delete;

    /// Ends a drag under way as cancelled.
    void Begin(std::wstring key, std::wstring text);
    bool Active() const { return active_; }
    const DragItem& Item() const { return item_; }
    /// Nothing while not active.
    void Move(Point inForm);
    /// Ends the drag; true when a widget took it. Touches nothing after the target's handler, which may end the source.
    bool Drop(Point inForm);
    void Cancel();
    /// Something would take it where the pointer is.
    bool OverTarget() const { return target_ != nullptr; }

  private:
    /// Gives up a target that is gone, hidden or no longer willing.
    void Aim(Widget* target);
    Widget* TargetAt(Point inForm) const;
    bool StillThere(const Widget* widget) const;

    Widget& source_;
    bool active_ = false;
    DragItem item_;
    Widget* target_ = nullptr;
};

/// A point of the widget in the coordinates of the form, and back.
Point InForm(const Widget& widget, Point local);
Point InWidget(const Widget& widget, Point inForm);
/// The visible widget that shows at the point, deepest first; nothing outside the form.
Widget* WidgetAt(Widget& root, Point inForm);

} // namespace orv::controls
