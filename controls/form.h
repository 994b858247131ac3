#pragma once
// The root of a tree of widgets: focus, keys, peers, clipboard.
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "controls/frame.h"
#include "controls/widget.h"
#include "platform/services.h"
#include "text/bytes.h"

namespace orv::controls {

/// Bytes travel in a format of our own beside the displayed text.
struct ClipboardContent {
    std::wstring text;
    std::optional<Bytes> bytes;
};

class Clipboard {
  public:
    virtual ~Clipboard() = default;
    /// False when it takes nothing at present; what it held may be gone then.
    virtual bool Put(const ClipboardContent& content) = 0;
    /// Empty text and no bytes when there is nothing of use.
    virtual ClipboardContent Get() = 0;
};

class Form {
  public:
    /// `boxes` and `pump` outlive the form.
    Form(platform::MessageBoxes& boxes, platform::MessagePump& pump);
    ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    /// A plain frame named "Root".
    Frame& Root() { return *root_; }
    platform::MessageBoxes& Boxes() { return boxes_; }
    /// A clipboard of the form's own until another is set; the one set outlives the form.
    Clipboard& TheClipboard();
    void SetClipboard(Clipboard* clipboard) { clipboard_ = clipboard; }

    /// Nothing before the first and after the container took the focus away.
    Widget* Focused() const { return focused_; }
    /// Moves the focus, asking the widget that loses it. False when that one keeps it or `widget` cannot take it.
    bool SetFocus(Widget& widget);
    /// Gesture: a window got the focus (a click, the container). A refusal puts it back, posted.
    void FocusArrived(Widget& widget);
    /// Gesture: the focus went to a window that is none of the form's. Nobody can refuse.
    void FocusLeft();
    /// For a container that tabs into the form.
    bool FocusFirst();
    bool FocusLast();
    /// Raised after each change of focus.
    std::function<void(Widget*)> onFocusChanged;

    /// Gesture: focused widget, then navigator. The caller deals with the other outcomes.
    KeyOutcome RouteKey(const KeyEvent& key);

    /// Makes peers for all that is wanted, the root first, now and on later shows; `factory` outlives them.
    void AttachPeers(PeerFactory& factory);
    /// Tears every peer down (change of DPI, theme or font; end). State and focus stay.
    void DetachPeers();

  private:
    friend class Widget;
    /// Makes the peers that a shown or added widget lacks.
    void WidgetShown(Widget& widget);
    void WidgetGone(Widget& widget);
    /// Hidden or disabled: focus inside it goes to the next stop that can take it, unasked.
    void WidgetUnavailable(Widget& widget);
    bool MayLose(const Widget& next);
    KeyOutcome Navigate(const KeyEvent& key);
    void Enter(Widget* widget, bool takeWindowFocus);
    void PutFocusBack();

    platform::MessageBoxes& boxes_;
    platform::MessagePump& pump_;
    std::unique_ptr<Clipboard> ownClipboard_;
    Clipboard* clipboard_ = nullptr;
    PeerFactory* factory_ = nullptr;
    Widget* focused_ = nullptr;
    bool changing_ = false;
    std::shared_ptr<int> alive_ = std::make_shared<int>(0);
    std::unique_ptr<Frame> root_;
};

} // namespace orv::controls
