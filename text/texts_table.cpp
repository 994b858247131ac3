#include "text/texts.h"

#include <algorithm>
#include <string_view>

namespace orv::text {
namespace {

#define ORV_WIDE_(text) L##text
#define ORV_WIDE(text) ORV_WIDE_(text)

std::wstring_view Find(Id id) {
    switch (id) {
#define ORV_TEXT(name, number, english)                                                                                \
    case Id::name:                                                                                                     \
        return ORV_WIDE(english);
#include "text/texts.def"
#undef ORV_TEXT
    }
    return {};
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
