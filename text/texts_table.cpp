#include "text/texts.h"

namespace orv::text {

#define ORV_WIDE_(text) L##text
#define ORV_WIDE(text) ORV_WIDE_(text)

std::wstring_view Find(Id id) noexcept {
    switch (id) {
#define ORV_TEXT(name, number, english)                                                                                \
    case Id::name:                                                                                                     \
        return ORV_WIDE(english);
#include "text/texts.def"
#undef ORV_TEXT
    }
    return {};
}

} // namespace orv::text
