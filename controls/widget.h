#pragma once
// A control of the editor, without a window.
//
// Widget: owns all state and decides all semantics. A Set... call is programmatic: it changes the state, mirrors it
//   to the peer and raises no event. One exception: MBEdit::SetSelection and its like raise onSelChange.
// Gesture: what a user does enters through the methods marked "gesture" (Button::Press, ComboBox::Select,
//   Widget::HandleKey, ...). A gesture is ignored while the widget is not effectively enabled and visible; else it
//   changes the state, mirrors it and raises the widget's event (on...).
// Peer: one window for one widget. It draws what the widget says, calls gestures for what its window reports, and
//   never keeps state of its own. A native control that changes itself on a click (check mark, combo selection)
//   calls the gesture and takes whatever state the widget has afterwards. Keys go to Form::RouteKey first, from the
//   container's accelerator call or, failing that, from the window.
// Form: the root of a tree of widgets; focus, keys, peers (form.h).
//
// All of it runs on the user-interface thread. A widget owns its children and its peer.
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "controls/geometry.h"
#include "controls/key_event.h"
#include "controls/peer.h"

namespace orv::controls {

enum class Kind {
    Frame,
    Label,
    HintLine,
    Picture,
    WarningStrip,
    Button,
    DropButton,
    CheckBox,
    OptionButton,
    ComboBox,
    Tree,
    MBEdit,
    OutputStrip,
    PictureList,
    NumberBox,
    CheckList,
    TabStrip,
    Toolbar,
    TextBox,
};

class Form;

class Widget {
  public:
    static constexpr int kNoIndex = -1;

    Widget(Kind kind, std::wstring name, int index = kNoIndex);
    virtual ~Widget();
    Widget(const Widget&) = delete;
    Widget& operator=(const Widget&) = delete;

    Kind GetKind() const { return kind_; }
    /// Identity: name and index, gaps allowed. Captions are never identity.
    const std::wstring& Name() const { return name_; }
    int Index() const { return index_; }

    Widget* Parent() const { return parent_; }
    /// Nothing outside a form.
    Form* OwningForm() const;
    const std::vector<std::unique_ptr<Widget>>& Children() const { return children_; }
    /// Makes a child at the end of the reading order.
    template <typename T, typename... Args>
    T& Add(Args&&... args) {
        auto child = std::make_unique<T>(std::forward<Args>(args)...);
        T& made = *child;
        Adopt(std::move(child));
        return made;
    }
    /// This widget or the first one below it, in reading order; nothing when there is none.
    Widget* Find(std::wstring_view name, int index = kNoIndex);
    bool IsWithin(const Widget& ancestor) const;

    bool Visible() const { return visible_; }
    bool EffectivelyVisible() const;
    /// What was typed into a widget and not stored goes when it is hidden, or something round it that is no page:
    /// nobody could see what is wrong with it.
    void SetVisible(bool visible);
    bool Enabled() const { return enabled_; }
    /// Own and all ancestors'.
    bool EffectivelyEnabled() const;
    void SetEnabled(bool enabled);

    /// Relative to the parent's client area, before its scrolling.
    const Rect& Bounds() const { return bounds_; }
    void SetBounds(const Rect& bounds);
    /// Where the window stands: the bounds less the parent's scroll position.
    Rect WindowBounds() const;

    /// With "&" before the access key; "&&" is the character itself.
    const std::wstring& Caption() const { return caption_; }
    void SetCaption(std::wstring caption);
    /// The caption without its marks.
    std::wstring PlainCaption() const;
    /// Upper case; 0 without one.
    wchar_t AccessKey() const;

    const std::wstring& ToolTip() const { return toolTip_; }
    void SetToolTip(std::wstring text);
    /// For the hint line while the widget has the focus.
    const std::wstring& Hint() const { return hint_; }
    void SetHint(std::wstring text);
    /// What a screen reader calls it: the name set here, else the plain caption.
    std::wstring AccessibleName() const;
    void SetAccessibleName(std::wstring name);

    bool TabStop() const { return tabStop_; }
    void SetTabStop(bool stop) { tabStop_ = stop; }
    bool Focused() const;
    bool CanTakeFocus() const;
    /// Everything typed inside that is not stored goes.
    void DropPendingInside();

    Peer* GetPeer() const { return peer_.get(); }
    /// False for a page that was never shown: it and what stands in it have no peers yet.
    virtual bool PeersWanted() const { return true; }
    void MakePeers(PeerFactory& factory);
    void DropPeers();

    /// Gesture: a key, while the widget has the focus. Handled, Native or NotHandled.
    virtual KeyOutcome HandleKey(const KeyEvent& key);
    /// Gesture: the access key of this widget. Answers whether the widget did something of its own; else the
    /// navigator moves the focus to it, or to the next stop behind a label.
    virtual bool AccessKeyPressed() { return false; }

    /// Smallest size at which nothing is clipped.
    virtual Size MinimumSize(const TextMeasure& measure) const = 0;

    /// What has to be seen of a widget with the focus, in its own coordinates.
    virtual Rect FocusPart() const { return {0, 0, bounds_.width, bounds_.height}; }

    /// The focus has come, by keyboard or program or else with the pointer.
    virtual void FocusEntered(bool /*byKeyboard*/) {}

    /// Asked before the focus moves away; false keeps it. Not asked when the focus goes to a widget that releases
    /// (Button::SetReleases).
    std::function<bool()> onValidate;
    std::function<void()> onGotFocus;
    /// The focus has left, after onValidate.
    std::function<void()> onLostFocus;

  protected:
    bool Interactive() const { return EffectivelyEnabled() && EffectivelyVisible(); }
    void Mirror(Aspect aspect);
    static void MirrorOf(Widget& widget, Aspect aspect) { widget.Mirror(aspect); }
    /// Puts back what is stored; raises nothing but what displays follow.
    virtual void DropPending() {}
    /// For a page: its fields are out of sight while another one is open, not gone.
    virtual bool KeepsPending() const { return false; }
    /// How far the children are scrolled.
    virtual Point ScrollPosition() const { return {}; }

  private:
    friend class Form;
    void Adopt(std::unique_ptr<Widget> child);
    void MirrorEnabledBelow();
    void DropPendingBelow();

    Kind kind_;
    std::wstring name_;
    int index_;
    Widget* parent_ = nullptr;
    Form* form_ = nullptr; ///< of the root alone
    std::vector<std::unique_ptr<Widget>> children_;
    std::unique_ptr<Peer> peer_;
    bool visible_ = true;
    bool enabled_ = true;
    bool tabStop_ = false;
    Rect bounds_;
    std::wstring caption_;
    std::wstring toolTip_;
    std::wstring hint_;
    std::wstring accessibleName_;
};

} // namespace orv::controls
