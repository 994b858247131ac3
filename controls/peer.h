#pragma once
// The window side of a widget.
#include <cstdint>
#include <memory>

namespace orv::controls {

class Widget;

/// A part of a widget's state that has changed; the peer reads the new state from the widget.
enum class Aspect {
    Bounds,    ///< Widget::WindowBounds()
    Visible,   ///< own visibility (windows inherit their parents')
    Enabled,   ///< effective enabled state
    Caption,   ///< caption, or the text of a strip
    ToolTip,   ///< tool tip
    Name,      ///< what a screen reader says: Widget::AccessibleName()
    Items,     ///< entries of a combo box, nodes of a tree with bold and expansion, segments of a strip
    Selection, ///< selected entry or node; caret and selection of an edit box
    Check,     ///< check box, option button
    Content,   ///< text of an edit box
    Scroll,    ///< content size or position of a scrolling frame
    Reveal,    ///< bring the item that the widget names into view (Tree::RevealKey())
    Mark,      ///< insert mark of a list under a drag; while one is under way, time passes for it
    Open,      ///< open the list of a drop button; post it, it runs a menu
    Look,      ///< colours, border, pointer, font and sort of an edit box
};

/// Owned by its widget and outlived by it. Mirrors state into a window and reports raw gestures by calling the
/// widget's gesture methods; decides nothing. A fresh peer shows the whole state at once, without Mirror calls.
class Peer {
  public:
    virtual ~Peer() = default;
    virtual void Mirror(Aspect aspect) = 0;
    /// Puts the keyboard focus on the window. The window's own focus notification then calls Form::FocusArrived,
    /// which knows the widget as focused already and does nothing.
    virtual void TakeFocus() = 0;
    /// The number of its window, 0 for a peer without one.
    virtual std::uintptr_t WindowHandle() const { return 0; }
};

/// Makes the peer for a widget by its kind. A child's peer is made after its parent's (Widget::Parent()->GetPeer())
/// and destroyed before it.
class PeerFactory {
  public:
    virtual ~PeerFactory() = default;
    virtual std::unique_ptr<Peer> Make(Widget& widget) = 0;
};

} // namespace orv::controls
