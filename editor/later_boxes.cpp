// A box that opens later although there is no memory left to remember it with.
#include <algorithm>
#include <array>

#include "editor/context.h"

namespace orv::editor {
namespace {

/// One is enough: a second failure before the first was told has nothing new to say.
struct Waiting {
    std::array<wchar_t, 512> text{};
    std::array<wchar_t, 64> title{};
    platform::MessageBoxes* boxes = nullptr;
};

template <std::size_t Size>
void Keep(std::array<wchar_t, Size>& kept, std::wstring_view text) {
    text = text.substr(0, Size - 1);
    std::copy(text.begin(), text.end(), kept.data());
    kept[text.size()] = 0;
}

void Tell(Waiting& waiting) {
    if (platform::MessageBoxes* boxes = std::exchange(waiting.boxes, nullptr))
        boxes->ShowPlain(waiting.text.data(), waiting.title.data());
}

} // namespace

void Context::LaterBoxes::ShowPlain(const wchar_t* text, const wchar_t* title) noexcept {
    static Waiting waiting;
    if (waiting.boxes != nullptr)
        return;
    Keep(waiting.text, text);
    Keep(waiting.title, title);
    waiting.boxes = &services_.boxes;
    try {
        services_.pump.Post([kept = &waiting] { Tell(*kept); });
    } catch (...) {
        waiting.boxes = nullptr;
        services_.boxes.Beep();
    }
}

} // namespace orv::editor
