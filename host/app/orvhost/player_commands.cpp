#include <array>

#include "host/app/orvhost/commands.h"
#include "host/app/orvhost/control_driver.h"
#include "host/app/orvhost/frame_menu.h"
#include "host/app/orvhost/item_driver.h"
#include "host/app/orvhost/player.h"
#include "host/app/orvhost/window_picture.h"
#include "host/sim/utf8.h"

namespace orv::host {
namespace {

constexpr DWORD kSettle = 250; // milliseconds that windows get to paint

/// Keys held down while a stroke is dispatched.
class HeldKeys {
  public:
    explicit HeldKeys(const KeyStroke& stroke) {
        GetKeyboardState(before_.data());
        auto state = before_;
        state[VK_SHIFT] = stroke.shift ? kDown : BYTE{0};
        state[VK_CONTROL] = stroke.control ? kDown : BYTE{0};
        state[VK_MENU] = stroke.alt ? kDown : BYTE{0};
        SetKeyboardState(state.data());
    }
    HeldKeys(const HeldKeys&) = delete;
    HeldKeys& operator=(const HeldKeys&) = delete;
    ~HeldKeys() { SetKeyboardState(before_.data()); }

  private:
    static constexpr BYTE kDown = 0x80;
    std::array<BYTE, 256> before_{};
};

void Compare(const std::wstring& found, const std::wstring& expected) {
    if (found != expected)
        throw std::runtime_error("it is \"" + sim::Excerpt(sim::ToUtf8(found)) + "\", not \"" +
                                 sim::Excerpt(sim::ToUtf8(expected)) + "\"");
}

/// A text that is too long for a script may end in "*".
void ExpectValue(const std::wstring& found, const std::wstring& expected) {
    if (!Matches(found, expected))
        Compare(found, expected);
}

void Require(bool holds, const char* otherwise) {
    if (!holds)
        throw std::runtime_error(otherwise);
}

/// False when the command is none of these; so below.
bool ExecuteOnItems(const ScriptCommand& command, const ControlDriver& control) {
    const auto window = [&] { return control.FindUsable(command.name, command.index); };
    switch (command.verb) {
    case Verb::Click:
    case Verb::DoubleClick:
        ClickItem(window(), FindItem(window(), command.text), command.verb == Verb::DoubleClick);
        return true;
    case Verb::Check:
    case Verb::Uncheck:
        CheckItem(window(), FindItem(window(), command.text), command.verb == Verb::Check);
        return true;
    case Verb::Drag:
        DragItem(window(), FindItem(window(), command.text), control.FindUsable(command.target, kNoIndex),
                 command.number);
        return true;
    default:
        return false;
    }
}

bool ExpectOfControl(const ScriptCommand& command, const ControlDriver& control) {
    const auto window = [&] { return control.Find(command.name, command.index); };
    switch (command.verb) {
    case Verb::ExpectEnabled:
        control.FindUsable(command.name, command.index);
        return true;
    case Verb::ExpectDisabled:
        Require(!IsWindowEnabled(window()), "it is enabled");
        return true;
    case Verb::ExpectVisible:
        Require(IsWindowVisible(window()), "it is not visible");
        return true;
    case Verb::ExpectHidden:
        Require(!IsWindowVisible(window()), "it is visible");
        return true;
    case Verb::ExpectNode:
        Require(control.HasNode(command.text), "there is no such node");
        return true;
    case Verb::ExpectValue:
        ExpectValue(control.Value(command.name, command.index), command.text);
        return true;
    default:
        return false;
    }
}

} // namespace

void Player::Post(int command) {
    PostMessageW(host_.FrameWindow(), WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void Player::Execute(const ScriptCommand& command) {
    switch (command.verb) {
    case Verb::Show:
        return Post(kShow);
    case Verb::Activate:
        return Post(kActivate);
    case Verb::Close:
        return Post(kCloseAddOn);
    case Verb::Terminate:
        return host_.Terminate();
    case Verb::Quit:
        PostMessageW(host_.FrameWindow(), WM_CLOSE, 0, 0);
        ended_ = true;
        return;
    case Verb::ExpectBox:
        return boxes_.Expect({command.line, command.text, command.answer});
    case Verb::ExpectFile:
        return boxes_.ExpectFile(command.text);
    case Verb::ExpectHost:
    case Verb::ExpectDevice:
    case Verb::ExpectResult:
        return Compare(Asked(command),
                       command.verb == Verb::ExpectResult ? std::to_wstring(command.number) : command.text);
    case Verb::Picture:
        return TakeShot(command.text);
    case Verb::Save:
        return host_.SaveTo(command.text);
    case Verb::Menu:
        return RunMenu(command.text);
    case Verb::Key:
        return SendKey(command.text);
    case Verb::Type:
        return TypeText(command.text);
    case Verb::WaitIdle:
        host_.Pump().PumpFor(kSettle, [] { return false; });
        return;
    case Verb::PrintHost:
    case Verb::PrintDevice:
    case Verb::PrintResult:
        return Print(command);
    default:
        return ExecuteOnControl(command);
    }
}

void Player::ExecuteOnControl(const ScriptCommand& command) {
    const HWND dialog = OpenDialog();
    const ControlDriver control(dialog != nullptr ? dialog : host_.ControlWindow());
    if (ExecuteOnItems(command, control) || ExpectOfControl(command, control))
        return;
    switch (command.verb) {
    case Verb::Select:
        return control.SelectNode(command.text);
    case Verb::Focus:
        return control.Focus(command.name, command.index);
    case Verb::Set:
        return control.Set(command.name, command.index, command.text);
    case Verb::Enter:
        return control.Enter(command.name, command.index, command.text);
    case Verb::Press:
        return control.Press(command.name, command.index);
    case Verb::PrintEnabled:
        return host_.Say(IsWindowEnabled(control.Find(command.name, command.index)) ? L"= enabled" : L"= disabled");
    case Verb::PrintValue:
        return host_.Say(L"= " + control.Value(command.name, command.index));
    default:
        throw std::logic_error("a command without a meaning");
    }
}

std::wstring Player::Asked(const ScriptCommand& command) {
    switch (command.verb) {
    case Verb::PrintResult:
    case Verb::ExpectResult:
        return std::to_wstring(host_.Result());
    case Verb::PrintHost:
    case Verb::ExpectHost:
        return host_.HostValue(command.number, command.element);
    default:
        return host_.DeviceValue(command.number, command.element);
    }
}

void Player::Print(const ScriptCommand& command) {
    host_.Say(L"= " + Asked(command));
}

void Player::SendKey(const std::wstring& name) {
    const KeyStroke stroke = ParseKey(name);
    const HWND focus = GetFocus();
    if (focus == nullptr)
        throw std::runtime_error("nothing has the keyboard");
    const HeldKeys held(stroke);
    MSG down{focus, stroke.alt ? UINT{WM_SYSKEYDOWN} : UINT{WM_KEYDOWN}, stroke.key, stroke.alt ? 0x20000001 : 1, 0,
             {}};
    MSG up{focus,      stroke.alt ? UINT{WM_SYSKEYUP} : UINT{WM_KEYUP},
           stroke.key, static_cast<LPARAM>(0xC0000001 | (stroke.alt ? 0x20000000u : 0u)),
           0,          {}};
    inKey_ = true;
    host_.Pump().Handle(down);
    inKey_ = false;
    if (IsWindow(focus))
        host_.Pump().Handle(up);
}

void Player::RunMenu(const std::wstring& caption) {
    const int command = FindCommand(GetMenu(host_.FrameWindow()), caption);
    if (command == 0)
        throw std::runtime_error("the menu does not offer \"" + sim::Excerpt(sim::ToUtf8(caption)) + "\" now");
    Post(command);
}

void Player::TakeShot(const std::wstring& name) {
    const HWND frame = host_.FrameWindow();
    host_.Pump().PumpFor(kSettle, [] { return false; });
    RedrawWindow(frame, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN | RDW_FRAME);
    SavePicture(TakePicture(frame), shots_ / name);
}

} // namespace orv::host
