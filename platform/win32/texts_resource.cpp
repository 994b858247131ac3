#include "platform/win32/module.h"
#include "text/texts.h"

namespace orv::text {

std::wstring_view Find(Id id) noexcept {
    // A length of 0 asks for the text in place, so that no text is cut.
    const wchar_t* text = nullptr;
    const int length =
        LoadStringW(platform::win32::OwnModule(), static_cast<UINT>(id), reinterpret_cast<LPWSTR>(&text), 0);
    return length > 0 && text != nullptr ? std::wstring_view(text, static_cast<std::size_t>(length))
                                         : std::wstring_view();
}

} // namespace orv::text
