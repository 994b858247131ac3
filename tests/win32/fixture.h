#pragma once
// A form with real windows inside a window that plays the container's.
#include "platform/win32/owned.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "controls/form.h"
#include "controls/win32/peer_host.h"
#include "platform/win32/activation.h"
#include "platform/win32/pump.h"

namespace orv::tests {

class RecordingBoxes : public platform::MessageBoxes {
  public:
    platform::Answer Show(const platform::MessageBox& box) override {
        shown.push_back(box.text);
        return platform::Answer::Ok;
    }
    void Beep() override { ++beeps; }
    void Close() override {}
    std::vector<std::wstring> shown;
    int beeps = 0;
};

/// Dispatches messages until `done` or a generous limit; answers whether it came about.
bool Within(const std::function<bool()>& done, DWORD milliseconds = 5000);

class Windows : public testing::Test {
  protected:
    Windows();
    ~Windows() override;
    /// Call when the widgets are there.
    void Show();
    HWND WindowOf(std::wstring_view name, int index = -1) const { return host->WindowOf(name, index); }
    /// All that is pending, handed on as a container does that calls the accelerator entry first (or does not).
    void Drain();
    void PostClick(HWND window, int x, int y) const;
    static std::wstring TextOf(HWND window);

    RecordingBoxes boxes;
    platform::win32::ActivationContext context;
    platform::win32::SystemPump pump;
    controls::Form form{boxes, pump};
    platform::win32::OwnedWindow container;
    controls::win32::PeerHooks hooks;
    std::unique_ptr<controls::win32::PeerHost> host;
    bool translates = true; ///< the container knows its duty
};

} // namespace orv::tests
