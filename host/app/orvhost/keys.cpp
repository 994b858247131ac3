#include <array>
#include <stdexcept>

#include "host/app/orvhost/control_driver.h"
#include "host/sim/utf8.h"

namespace orv::host {
namespace {

struct KeyName {
    const wchar_t* name;
    WORD key;
};
constexpr std::array kKeys = {KeyName{L"Tab", VK_TAB},       KeyName{L"Return", VK_RETURN}, KeyName{L"Esc", VK_ESCAPE},
                              KeyName{L"Back", VK_BACK},     KeyName{L"Delete", VK_DELETE}, KeyName{L"Home", VK_HOME},
                              KeyName{L"End", VK_END},       KeyName{L"Left", VK_LEFT},     KeyName{L"Right", VK_RIGHT},
                              KeyName{L"Up", VK_UP},         KeyName{L"Down", VK_DOWN},     KeyName{L"Space", VK_SPACE},
                              KeyName{L"PageUp", VK_PRIOR},  KeyName{L"PageDown", VK_NEXT}, KeyName{L"F1", VK_F1},
                              KeyName{L"Insert", VK_INSERT}, KeyName{L"F4", VK_F4},         KeyName{L"F6", VK_F6}};

bool TakePrefix(std::wstring_view& name, std::wstring_view prefix) {
    if (!name.starts_with(prefix))
        return false;
    name.remove_prefix(prefix.size());
    return true;
}

} // namespace

KeyStroke ParseKey(const std::wstring& name) {
    KeyStroke stroke;
    std::wstring_view rest = name;
    for (bool more = true; more;) {
        const bool shift = TakePrefix(rest, L"Shift+");
        const bool control = TakePrefix(rest, L"Ctrl+");
        const bool alt = TakePrefix(rest, L"Alt+");
        stroke.shift |= shift;
        stroke.control |= control;
        stroke.alt |= alt;
        more = shift || control || alt;
    }
    for (const KeyName& known : kKeys) {
        if (rest == known.name)
            stroke.key = known.key;
    }
    const bool letter =
        rest.size() == 1 && ((rest[0] >= L'A' && rest[0] <= L'Z') || (rest[0] >= L'0' && rest[0] <= L'9'));
    if (letter)
        stroke.key = static_cast<WORD>(rest[0]);
    if (stroke.key == 0)
        throw std::runtime_error("unknown key " + sim::Excerpt(sim::ToUtf8(name)));
    return stroke;
}

void TypeText(const std::wstring& text) {
    const HWND focus = GetFocus();
    if (focus == nullptr)
        throw std::runtime_error("nothing has the keyboard");
    for (const wchar_t character : text)
        PostMessageW(focus, WM_CHAR, character, 1);
}

} // namespace orv::host
