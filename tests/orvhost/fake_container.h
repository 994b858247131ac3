#pragma once
// The rest of a host, as the container's objects see it.
#include "host/app/orvhost/container_events.h"

namespace orv::host {

class FakeContainer final : public ContainerEvents {
  public:
    FakeContainer()
        : frame_(CreateWindowExW(0, WC_STATICW, L"", WS_OVERLAPPEDWINDOW, 10, 10, 400, 300, nullptr, nullptr, Program(),
                                 nullptr)),
          area_(CreateWindowExW(0, WC_STATICW, L"", WS_CHILD, 5, 7, 320, 200, frame_.Get(), nullptr, Program(),
                                nullptr)) {}
    HWND Frame() override { return frame_.Get(); }
    HWND Area() override { return area_; }
    void SetStatusText(const std::wstring& text) override { status = text; }
    void SetModeless(bool on) override { modal += on ? -1 : 1; }
    void LeaveControl(bool) override { ++left; }
    bool ControlVisible() override { return visible; }
    void SetControlVisible(bool on) override { visible = on; }
    bool ControlEnabled() override { return enabled; }
    void SetControlEnabled(bool on) override { enabled = on; }
    IDispatch* Control() override { return nullptr; }

    std::wstring status;
    int modal = 0;
    int left = 0;
    bool visible = true;
    bool enabled = true;

  private:
    OwnedWindow frame_;
    HWND area_; // goes with the frame
};

} // namespace orv::host
