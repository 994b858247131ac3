#include "platform/win32/message_boxes.h"

#include <string>

namespace orv::platform::win32 {
namespace {

constexpr std::size_t kNested = 16; ///< boxes inside boxes that open without memory

UINT StyleOf(const MessageBox& box) {
    UINT style = box.buttons == Buttons::YesNo ? MB_YESNO : MB_OK;
    if (box.buttons == Buttons::YesNo && box.preset == Answer::No)
        style |= MB_DEFBUTTON2;
    switch (box.icon) {
    case Icon::None:
        break;
    case Icon::Information:
        style |= MB_ICONINFORMATION;
        break;
    case Icon::Warning:
        style |= MB_ICONWARNING;
        break;
    case Icon::Critical:
        style |= MB_ICONERROR;
        break;
    }
    return style;
}

void PostNo(HWND box) {
    // The only button of an OK box goes by either number, by the release of the system.
    for (const int id : {IDNO, IDOK, IDCANCEL}) {
        if (const HWND button = GetDlgItem(box, id)) {
            PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(MAKELONG(id, BN_CLICKED)),
                         reinterpret_cast<LPARAM>(button));
            return;
        }
    }
}

} // namespace

/// Learns the window of the box that opens next on this thread; boxes nest, and so do watches.
class SystemMessageBoxes::Watch {
  public:
    explicit Watch(SystemMessageBoxes& boxes) : boxes_(boxes), slot_(boxes.open_.size()), outer_(current_) {
        boxes_.open_.push_back(nullptr);
        current_ = this;
        hook_ = SetWindowsHookExW(WH_CBT, &Watch::Created, nullptr, GetCurrentThreadId());
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch() {
        Unhook();
        current_ = outer_;
        boxes_.open_.pop_back();
    }

  private:
    static LRESULT CALLBACK Created(int code, WPARAM wparam, LPARAM lparam) {
        // Activation comes when the buttons exist, so that a Close in between finds them.
        if (code == HCBT_ACTIVATE && current_ != nullptr)
            current_->Activated(reinterpret_cast<HWND>(wparam));
        return CallNextHookEx(nullptr, code, wparam, lparam);
    }
    void Activated(HWND window) {
        wchar_t name[16] = {};
        GetClassNameW(window, name, 16);
        if (std::wstring_view(name) != L"#32770")
            return;
        boxes_.open_[slot_] = window;
        Unhook();
        if (boxes_.closing_)
            PostNo(window);
    }
    void Unhook() {
        if (hook_ != nullptr)
            UnhookWindowsHookEx(hook_);
        hook_ = nullptr;
    }

    static thread_local Watch* current_;
    SystemMessageBoxes& boxes_;
    std::size_t slot_;
    Watch* outer_;
    HHOOK hook_ = nullptr;
};

thread_local SystemMessageBoxes::Watch* SystemMessageBoxes::Watch::current_ = nullptr;

SystemMessageBoxes::SystemMessageBoxes(const ActivationContext& context, const ModalHooks& hooks)
    : context_(context), hooks_(hooks) {
    open_.reserve(kNested);
}

SystemMessageBoxes::~SystemMessageBoxes() = default;

int SystemMessageBoxes::Open(const wchar_t* text, const wchar_t* title, UINT style) {
    const HWND owner = OwnerOf(hooks_);
    // A box inside a box of ours belongs to that one, or the user could answer the outer one first.
    const HWND parent = !open_.empty() && open_.back() != nullptr ? open_.back() : owner;
    const ModalScope modal(hooks_);
    Watch watch(*this);
    const ActivationScope active(context_);
    return MessageBoxW(parent, text, title, style);
}

void SystemMessageBoxes::ShowPlain(const wchar_t* text, const wchar_t* title) noexcept {
    if (closing_)
        return;
    try {
        Open(text, title, MB_OK | MB_ICONERROR);
    } catch (...) {
        // The container refused to make room for a box, or boxes are nested deeper than was provided for.
        Beep();
    }
}

Answer SystemMessageBoxes::Show(const MessageBox& box) {
    const Answer refused = box.buttons == Buttons::YesNo ? Answer::No : Answer::Ok;
    if (closing_)
        return refused;
    switch (Open(box.text.c_str(), box.title.c_str(), StyleOf(box))) {
    case IDYES:
        return Answer::Yes;
    case IDOK:
        return Answer::Ok;
    default:
        return refused;
    }
}

void SystemMessageBoxes::Beep() {
    MessageBeep(MB_ICONWARNING);
}

void SystemMessageBoxes::Close() {
    closing_ = true;
    for (auto box = open_.rbegin(); box != open_.rend(); ++box)
        if (*box != nullptr)
            PostNo(*box);
}

} // namespace orv::platform::win32
