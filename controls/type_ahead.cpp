#include "controls/type_ahead.h"

#include <algorithm>
#include <cwctype>

namespace orv::controls {
namespace {

constexpr std::chrono::milliseconds kPause{1000};

bool Same(wchar_t one, wchar_t other) {
    return std::towupper(static_cast<std::wint_t>(one)) == std::towupper(static_cast<std::wint_t>(other));
}

bool Begins(const std::wstring& text, const std::wstring& beginning) {
    return text.size() >= beginning.size() && std::equal(beginning.begin(), beginning.end(), text.begin(), &Same);
}

} // namespace

bool TypeAhead::Typing(Clock::time_point now) const {
    return !typed_.empty() && now - last_ < kPause;
}

int TypeAhead::Find(wchar_t letter, int selected, int count, const std::function<const std::wstring&(int)>& textOf,
                    Clock::time_point now) {
    if (!Typing(now))
        typed_.clear();
    last_ = now;
    const bool repeated =
        std::all_of(typed_.begin(), typed_.end(), [letter](wchar_t typed) { return Same(typed, letter); });
    typed_ += letter;
    const std::wstring beginning = repeated ? std::wstring(1, letter) : typed_;
    // A first letter leaves the entry it is on; a further one stays as long as the entry still fits.
    const int from = std::max(selected, -1) + (repeated || selected < 0 ? 1 : 0);
    for (int step = 0; step < count; ++step) {
        const int candidate = (from + step) % count;
        if (Begins(textOf(candidate), beginning))
            return candidate;
    }
    return -1;
}

} // namespace orv::controls
