// A box that opens later although there is no memory left to remember it with.
#include <algorithm>

#include "editor/context.h"

namespace orv::editor {
namespace {

template <std::size_t Size>
void Keep(std::array<wchar_t, Size>& kept, std::wstring_view text) {
    text = text.substr(0, Size - 1);
    std::copy(text.begin(), text.end(), kept.data());
    kept[text.size()] = 0;
}

void Tell(Context::LateBox& late) {
    if (platform::MessageBoxes* boxes = std::exchange(late.boxes, nullptr))
        boxes->ShowPlain(late.text.data(), late.title.data());
}

} // namespace

void Context::LaterBoxes::ShowPlain(const wchar_t* text, const wchar_t* title) noexcept {
    if (late_.boxes != nullptr)
        return;
    Keep(late_.text, text);
    Keep(late_.title, title);
    late_.boxes = &services_.boxes;
    try {
        services_.pump.Post([kept = &late_] { Tell(*kept); });
    } catch (...) {
        late_.boxes = nullptr;
        services_.boxes.Beep();
    }
}

} // namespace orv::editor
