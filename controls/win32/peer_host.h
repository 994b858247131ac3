#pragma once
// The windows of one form: makes the peers, knows them by window and by name, routes keys and focus.
#include "platform/win32/owned.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "controls/form.h"
#include "controls/peer.h"
#include "controls/win32/accessible_names.h"
#include "controls/win32/font_metrics.h"
#include "controls/win32/key_messages.h"
#include "controls/win32/pictures.h"
#include "controls/win32/tool_tips.h"
#include "platform/win32/activation.h"

namespace orv::controls::win32 {

class WindowPeer;

struct PeerHooks {
    /// Before a window of the form that got the focus tells its widget: the control becomes active.
    std::function<void()> activate;
    /// Layout of the form, with the host as its measure: first thing in Attach, and anew after each change of font.
    std::function<void()> layout;
    /// A key that the form did not use. `leave`: Tab went past the last (Shift+Tab: first) stop. True when the
    /// container has dealt with it.
    std::function<bool(MSG& message, bool leave)> passOn;
    /// Takes keys in place of the form; for a dialog, which knows more of them.
    std::function<KeyOutcome(const KeyEvent&)> route = {};
};

/// Form and context outlive the host.
class PeerHost final : public PeerFactory, public TextMeasure {
  public:
    PeerHost(Form& form, const platform::win32::ActivationContext& context, PeerHooks hooks);
    ~PeerHost() override;
    PeerHost(const PeerHost&) = delete;
    PeerHost& operator=(const PeerHost&) = delete;

    /// Makes all windows that are wanted below `parent`, the control's own window.
    void Attach(HWND parent);
    /// Destroys them. The form's state stays.
    void Detach();
    /// Makes them anew: another resolution, theme or font.
    void Remake();
    bool Attached() const { return parent_ != nullptr; }

    /// For the control's window procedure, before it does anything else: changes of resolution, theme, font and
    /// colours, the focus, the search for a window by name. A value when the message was one of these and ends here.
    std::optional<LRESULT> HandleControlMessage(UINT message, WPARAM wparam, LPARAM lparam);
    /// For TranslateAccelerator and for the pump: true when the message is dealt with.
    bool TranslateKey(MSG& message);
    /// The control's own window got the focus, or the container activates the control: back to where it was.
    void TakeFocus();

    /// Nothing while the widget has no window. The arrows of the number box "txt..." are "ud...".
    HWND WindowOf(std::wstring_view name, int index = Widget::kNoIndex) const;
    /// Registered message that asks the control's window for one of its windows: an atom with the name, global or
    /// else of the process (AddAtom), and the index or -1.
    static UINT FindMessage();

    int Width(std::wstring_view text) const override { return metrics_.Width(text); }
    int LineHeight() const override { return metrics_.LineHeight(); }
    int Dpi() const override { return metrics_.Dpi(); }

    std::unique_ptr<Peer> Make(Widget& widget) override;

    // For the peers.
    enum class KeyVerdict { Done, Window, Nobody };
    HWND Parent() const { return parent_; }
    HFONT Font() const { return metrics_.Font(); }
    const platform::win32::ActivationContext& Context() const { return context_; }
    ToolTips& Tips() { return tips_; }
    AccessibleNames& Names() { return names_; }
    /// Of the resolution that the windows are made for; a list that goes when they are made anew.
    Pictures& Images() { return images_; }
    int IdOf(const Widget& widget);
    void Register(HWND window, WindowPeer& peer) { peers_[window] = &peer; }
    void Unregister(HWND window) { peers_.erase(window); }
    WindowPeer* PeerOf(HWND window) const;
    KeyVerdict KeyArrived(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    void FocusGained(Widget& widget);
    void FocusWentTo(HWND window);
    /// Shows the exception in flight; for window procedures, which none may leave.
    void ReportFailure();

  private:
    struct Seen {
        HWND window = nullptr;
        UINT message = 0;
        WPARAM wparam = 0;
        LPARAM lparam = 0;
        bool operator==(const Seen&) const = default;
    };

    HWND ArrowsOf(std::wstring_view name, int index) const;
    HWND FindByAtom(ATOM atom, int index) const;
    KeyOutcome Route(const KeyEvent& event);
    void ShowCues();
    bool Ours(HWND window) const;

    Form& form_;
    const platform::win32::ActivationContext& context_;
    PeerHooks hooks_;
    HWND parent_ = nullptr;
    FontMetrics metrics_;
    ToolTips tips_;
    AccessibleNames names_;
    Pictures images_;
    platform::win32::OwnedModule richEdit_;
    std::unordered_map<HWND, WindowPeer*> peers_;
    std::map<std::pair<std::wstring, int>, int> ids_;
    KeyMessages keys_;
    Seen seen_; ///< routed by TranslateKey and on its way to its window
    KeyVerdict seenAs_ = KeyVerdict::Nobody;
    bool remaking_ = false;
};

} // namespace orv::controls::win32
