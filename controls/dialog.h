#pragma once
// A form in a window of its own, shown modally.
#include <functional>
#include <string>

#include "controls/form.h"
#include "controls/layout.h"
#include "controls/simple_widgets.h"

namespace orv::controls {

class Dialog {
  public:
    /// `boxes` and `pump` outlive the dialog.
    Dialog(platform::MessageBoxes& boxes, platform::MessagePump& pump) : form_(boxes, pump) {}
    virtual ~Dialog() = default;
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    controls::Form& Form() { return form_; }
    const std::wstring& Title() const { return title_; }
    void SetTitle(std::wstring title) { title_ = std::move(title); }
    void SetContent(LayoutPtr content) { content_ = std::move(content); }
    /// Smallest client area in which nothing is clipped.
    Size MinimumSize(const TextMeasure& measure) const;
    /// What it opens with: room to breathe where something grows.
    Size ComfortableSize(const TextMeasure& measure) const;
    /// Something in it has a use for more room.
    bool Resizable() const { return content_ && content_->GrowsDown(); }
    void Layout(Size client, const TextMeasure& measure);

    /// Return and Escape press these where the widget with the focus has no use for the key. Nothing by default.
    void SetDefaultButton(Button* button) { default_ = button; }
    void SetCancelButton(Button* button) { cancel_ = button; }
    /// Gesture: focused widget, navigator, the two buttons. Tab goes round.
    KeyOutcome RouteKey(const KeyEvent& key);
    /// Gesture: the window's own close button.
    void Dismiss();

    /// Ends a run; also from within a handler of one of its widgets. Never asks.
    void Close();
    bool Closed() const { return closed_; }
    /// A run begins.
    void Open() { closed_ = false; }
    /// For whoever runs it: raised once by Close.
    std::function<void()> onClosed;

  private:
    controls::Form form_;
    std::wstring title_;
    LayoutPtr content_;
    Button* default_ = nullptr;
    Button* cancel_ = nullptr;
    bool closed_ = true;
};

/// Shows a dialog and returns when it was closed. Raises platform::WaitAbandoned when the component goes meanwhile:
/// what the caller holds may be gone by then.
using DialogRunner = std::function<void(Dialog&)>;

} // namespace orv::controls
