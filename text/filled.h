#pragma once
// Texts with named places: "Stopped at {entry}". A translation may move the places.
#include <initializer_list>
#include <string>
#include <string_view>

#include "text/texts.h"

namespace orv::text {

struct Place {
    std::wstring_view name;
    std::wstring value;
};

/// The text of `id` with each place filled in. A name in braces that is no place stays as it is.
inline std::wstring Filled(Id id, std::initializer_list<Place> places) {
    const std::wstring_view text = Find(id);
    std::wstring filled;
    std::size_t begin = 0;
    for (std::size_t open = text.find(L'{'); open != std::wstring_view::npos; open = text.find(L'{', open + 1)) {
        const std::size_t close = text.find(L'}', open);
        if (close == std::wstring_view::npos)
            break;
        const std::wstring_view name = text.substr(open + 1, close - open - 1);
        for (const Place& place : places) {
            if (place.name != name)
                continue;
            filled.append(text.substr(begin, open - begin)).append(place.value);
            begin = close + 1;
            break;
        }
    }
    return filled.append(text.substr(begin));
}

} // namespace orv::text
