#include "controls/win32/key_messages.h"

namespace orv::controls::win32 {
namespace {

bool Held(int key) {
    return GetKeyState(key) < 0;
}

// Numbers are the same on both sides; anything else reaches widgets as a character or not at all.
bool IsWidgetKey(WPARAM key, bool ctrl, bool alt) {
    switch (static_cast<Key>(key)) {
    case Key::Back:
    case Key::Tab:
    case Key::Return:
    case Key::Escape:
    case Key::PageUp:
    case Key::PageDown:
    case Key::End:
    case Key::Home:
    case Key::Left:
    case Key::Up:
    case Key::Right:
    case Key::Down:
    case Key::Insert:
    case Key::Delete:
    case Key::F4:
        return true;
    case Key::A:
    case Key::C:
    case Key::V:
    case Key::X:
    case Key::Y:
    case Key::Z:
        return ctrl && !alt;
    default:
        return false;
    }
}

bool IsKeyCharacter(WPARAM code) {
    return code == VK_BACK || code == VK_TAB || code == VK_RETURN || code == VK_ESCAPE;
}

KeyEvent KeyPress(WPARAM key) {
    KeyEvent event;
    event.key = static_cast<Key>(key);
    event.shift = Held(VK_SHIFT);
    event.ctrl = Held(VK_CONTROL);
    event.alt = Held(VK_MENU);
    return event;
}

} // namespace

bool KeyMessages::IsKeyMessage(UINT message) {
    return message == WM_KEYDOWN || message == WM_SYSKEYDOWN || message == WM_CHAR || message == WM_SYSCHAR;
}

KeyMessages::Result KeyMessages::Read(UINT message, WPARAM wparam) {
    Result result;
    const wchar_t expected[] = {expected_[0], expected_[1]};
    expected_[0] = expected_[1] = 0;
    switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        if (!IsWidgetKey(wparam, Held(VK_CONTROL), message == WM_SYSKEYDOWN || Held(VK_MENU)))
            return result;
        result.event = KeyPress(wparam);
        result.event.alt = result.event.alt || message == WM_SYSKEYDOWN;
        break;
    case WM_CHAR:
        if (wparam != 0 && (wparam == expected[0] || wparam == expected[1])) {
            result.reading = Reading::Repeat;
            return result;
        }
        if (IsKeyCharacter(wparam)) // of a program that sends characters alone
            result.event = KeyPress(wparam);
        else
            result.event.character = static_cast<wchar_t>(wparam);
        break;
    case WM_SYSCHAR:
        result.event.character = static_cast<wchar_t>(wparam);
        result.event.alt = true;
        break;
    default:
        return result;
    }
    result.reading = Reading::Event;
    return result;
}

void KeyMessages::ExpectCharacterOf(const KeyEvent& event) {
    switch (event.key) {
    case Key::None:
        break;
    case Key::Back:
        expected_[0] = 8;
        expected_[1] = 127; // with Ctrl
        break;
    case Key::Return:
        expected_[0] = 13;
        expected_[1] = 10; // with Ctrl
        break;
    case Key::Tab:
    case Key::Escape:
        expected_[0] = static_cast<wchar_t>(event.key);
        break;
    default:
        if (event.key >= Key::A && event.key <= Key::Z)
            expected_[0] = static_cast<wchar_t>(static_cast<int>(event.key) - static_cast<int>(Key::A) + 1);
    }
}

} // namespace orv::controls::win32
