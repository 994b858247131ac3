#pragma once
// The frame: menu, the control's area, log pane, status bar.
#include <string>

#include "host/app/orvhost/frame_menu.h"
#include "host/app/orvhost/log_pane.h"
#include "host/app/orvhost/system.h"

namespace orv::host {

/// What the user does with the frame.
class FrameListener {
  public:
    virtual ~FrameListener() = default;
    virtual void OnCommand(int command) = 0;
    virtual void OnCloseRequest() = 0;
    virtual void OnAreaResized() = 0;
    virtual void OnFrameActivated(bool active) = 0;
    /// One of the frame's own panes got the keyboard.
    virtual void OnPaneFocused() = 0;
};

class MainWindow {
  public:
    MainWindow(FrameListener& listener, int width, int height);
    ~MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    HWND Window() const { return window_; }
    HWND Area() const { return area_; }
    LogPane& Log() { return log_; }
    void Update(const FrameState& state);
    void SetStatusText(const std::wstring& text);
    void ToggleLog();
    /// Shortcuts of the frame and Tab from its panes; answers whether it has dealt with the message.
    bool Translate(MSG& message);
    void Destroy();

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    static LRESULT CALLBACK AreaProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);
    void CreateChildren();
    void Layout();
    void SetFonts();
    void FitStatusParts();
    void ChangeDpi(const RECT& place);
    LRESULT Notify(LPARAM lparam);
    void Activated(WPARAM wparam);
    void PaintArea();

    FrameListener& listener_;
    HWND window_ = nullptr; // destroyed by Destroy or with its owner's end
    HWND area_ = nullptr;
    HWND status_ = nullptr;
    HWND lastFocus_ = nullptr;
    LogPane log_;
    bool showsLog_ = true;
    OwnedFont font_;
    OwnedAccelerators accelerators_;
    FrameState state_;
    std::wstring statusText_;
};

} // namespace orv::host
