#include <algorithm>
#include <string_view>

#include "platform/win32/module.h"
#include "text/texts.h"

namespace orv::text {
namespace {

std::wstring_view Find(Id id) noexcept {
    // A length of 0 asks for the text in place, so that no text is cut.
    const wchar_t* text = nullptr;
    const int length =
        LoadStringW(platform::win32::OwnModule(), static_cast<UINT>(id), reinterpret_cast<LPWSTR>(&text), 0);
    return length > 0 && text != nullptr ? std::wstring_view(text, static_cast<std::size_t>(length))
                                         : std::wstring_view();
}

} // namespace

std::wstring Load(Id id) {
    return std::wstring(Find(id));
}

std::size_t LoadInto(Id id, wchar_t* buffer, std::size_t size) noexcept {
    const std::wstring_view text = Find(id).substr(0, size - 1);
    std::copy(text.begin(), text.end(), buffer);
    buffer[text.size()] = 0;
    return text.size();
}

} // namespace orv::text
