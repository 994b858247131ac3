#include "platform/win32/pump.h"

#include "platform/win32/made.h"
#include "platform/win32/module.h"
#include "platform/win32/procedure_scope.h"
#include "platform/win32/window_class.h"

namespace orv::platform::win32 {
namespace {

constexpr wchar_t kClassName[] = L"OrvOutFormat.Pump";
constexpr UINT kRunTask = WM_APP + 1;

class Nesting {
  public:
    explicit Nesting(int& depth) : depth_(depth) { ++depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    ~Nesting() { --depth_; }

  private:
    int& depth_;
};

} // namespace

SystemPump::SystemPump() {
    WNDCLASSEXW type{};
    type.lpfnWndProc = &SystemPump::Procedure;
    type.lpszClassName = kClassName;
    RequireWindowClass(type);
    window_.Reset(Made(CreateWindowExW(0, kClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, OwnModule(), nullptr),
                       kClassName));
    SetWindowLongPtrW(window_.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

SystemPump::~SystemPump() {
    closing_ = true;
    SetWindowLongPtrW(window_.Get(), GWLP_USERDATA, 0);
    window_.Reset();
}

Wait SystemPump::PumpUntil(const std::function<bool()>& predicate) {
    const Nesting nested(depth_);
    for (;;) {
        if (closing_)
            return Wait::Closing;
        if (predicate())
            return Wait::Satisfied;
        MSG message;
        if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            // The look above may have dispatched sent messages without handing one out: look again before sleeping.
            if (closing_ || predicate())
                continue;
            MsgWaitForMultipleObjectsEx(0, nullptr, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
            continue;
        }
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return Wait::Quit;
        }
        Dispatch(message);
    }
}

void SystemPump::ProcessPending() {
    const Nesting nested(depth_);
    MSG message;
    while (!closing_ && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        Dispatch(message);
    }
}

SystemPump::PreTranslation SystemPump::AddPreTranslate(PreTranslate hook) {
    preTranslates_.push_front(std::move(hook));
    return {*this, preTranslates_.begin()};
}

void SystemPump::Dispatch(MSG& message) {
    for (const PreTranslate& hook : preTranslates_)
        if (hook(message))
            return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void SystemPump::Post(std::function<void()> task) {
    {
        const std::lock_guard guard(lock_);
        if (closing_)
            return;
        tasks_.push_back(std::move(task));
    }
    PostMessageW(window_.Get(), kRunTask, 0, 0);
}

void SystemPump::Close() {
    std::deque<std::function<void()>> dropped;
    {
        const std::lock_guard guard(lock_);
        closing_ = true;
        dropped.swap(tasks_);
    }
    PostMessageW(window_.Get(), WM_NULL, 0, 0);
}

void SystemPump::RunOne() {
    std::function<void()> task;
    {
        const std::lock_guard guard(lock_);
        if (tasks_.empty())
            return;
        task = std::move(tasks_.front());
        tasks_.pop_front();
    }
    try {
        task();
    } catch (const WaitAbandoned&) {
    } catch (...) {
        if (failed_)
            failed_();
    }
}

LRESULT CALLBACK SystemPump::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const ProcedureScope running;
    auto* self = reinterpret_cast<SystemPump*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message != kRunTask || self == nullptr)
        return DefWindowProcW(window, message, wparam, lparam);
    try {
        self->RunOne();
    } catch (...) {
        // Not even the failure could be told.
    }
    return 0;
}

} // namespace orv::platform::win32
