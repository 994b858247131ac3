#include "host/app/orvhost/host_pump.h"

#include "host/app/orvhost/transcript.h"

namespace orv::host {
namespace {

constexpr wchar_t kClass[] = L"OrvHost.Pump";
constexpr UINT kRun = WM_APP + 1;

} // namespace

HostPump::HostPump() {
    RegisterWindowClass(kClass, &HostPump::Procedure, nullptr);
    window_ =
        OwnedWindow(Made(CreateWindowExW(0, kClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, Program(), nullptr)));
    SetWindowLongPtrW(window_.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

HostPump::~HostPump() {
    Close();
    SetWindowLongPtrW(window_.Get(), GWLP_USERDATA, 0);
}

void HostPump::Handle(MSG& message) {
    if (filter_ && filter_(message))
        return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

platform::Wait HostPump::PumpUntil(const std::function<bool()>& predicate) {
    for (;;) {
        if (closed_)
            return platform::Wait::Closing;
        if (predicate())
            return platform::Wait::Satisfied;
        MSG message;
        if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            MsgWaitForMultipleObjectsEx(0, nullptr, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
            continue;
        }
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return platform::Wait::Quit;
        }
        Handle(message);
    }
}

bool HostPump::PumpFor(DWORD milliseconds, const std::function<bool()>& predicate) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (!predicate()) {
        ProcessPending();
        const ULONGLONG now = GetTickCount64();
        if (predicate())
            break;
        if (now >= end)
            return false;
        MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(end - now), QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
    return true;
}

void HostPump::ProcessPending() {
    MSG message;
    while (!closed_ && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        Handle(message);
    }
}

void HostPump::Post(std::function<void()> task) {
    {
        const std::lock_guard guard(lock_);
        if (closed_)
            return;
        tasks_.push_back(std::move(task));
    }
    PostMessageW(window_.Get(), kRun, 0, 0);
}

void HostPump::Close() {
    std::deque<std::function<void()>> dropped;
    const std::lock_guard guard(lock_);
    closed_ = true;
    dropped.swap(tasks_);
}

void HostPump::RunOne() {
    std::function<void()> task;
    {
        const std::lock_guard guard(lock_);
        if (tasks_.empty())
            return;
        task = std::move(tasks_.front());
        tasks_.pop_front();
    }
    task();
}

LRESULT CALLBACK HostPump::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    auto* const self = reinterpret_cast<HostPump*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message != kRun || self == nullptr)
        return DefWindowProcW(window, message, wparam, lparam);
    try {
        self->RunOne();
    } catch (const std::exception& failure) {
        Transcript::Complain(failure.what());
    } catch (...) {
        Transcript::Complain("a posted task failed");
    }
    return 0;
}

} // namespace orv::host
