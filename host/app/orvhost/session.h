#pragma once
// One life of the add-on in the host: created, shown, activated, closed.
#include <OrvAddon.h>

#include <cstdint>
#include <optional>
#include <string>

#include "host/app/orvhost/container_events.h"
#include "host/app/orvhost/site.h"

namespace orv::host {

class Session {
  public:
    struct Target {
        std::int16_t cluster = 0;
        std::int16_t device = 0;
    };

    /// Registers the host with a new add-on, names the target and enables it. Raises orv::Error.
    Session(ComPtr<IAddOn> addOn, ContainerEvents& events, const ComPtr<IOrvApplication>& application, Target target,
            bool withExtender);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    void SetTarget(Target target);
    /// In place, filling the area.
    void Show();
    bool Shown() const { return shown_; }
    void Activate();
    void Resize();
    std::int16_t Result();
    /// Whether the component lets itself be closed.
    bool MayUnload();

    /// The control's window; null before Show.
    HWND Window() const;
    IDispatch* Control() const { return dispatch_.Get(); }
    bool Visible() const { return visible_; }
    void SetVisible(bool visible);
    bool Enabled() const;
    void SetEnabled(bool enabled);

    /// Keys for the control first; answers whether it has dealt with the message.
    bool Translate(MSG& message);
    /// The keyboard goes to the control, as `message` (Tab) says to its first or last field; null: where it was.
    void Enter(MSG* message);
    /// The host's own windows take the keyboard.
    void Leave();
    void FrameActivated(bool active);

    /// Deactivates, closes, unregisters and lets go; answers the result. May run inside a wait of the component.
    std::int16_t Close();

  private:
    RECT AreaRect() const;
    void Verb(LONG verb, MSG* message = nullptr);

    ContainerEvents& events_;
    ComPtr<Site> site_;
    ComPtr<IAddOn> addOn_;
    ComPtr<IAddOnGUI> gui_;
    ComPtr<IDispatch> dispatch_;
    ComPtr<IOleObject> object_;
    bool shown_ = false;
    bool visible_ = true;
};

} // namespace orv::host
