#include "controls/mb_edit_core.h"

#include "controls/typed_byte.h"

namespace orv::controls {
namespace {

struct Name {
    std::wstring token;
    std::uint8_t byte;
};

const std::vector<Name>& Names() {
    static const std::vector<Name> names = [] {
        std::vector<Name> all;
        for (int byte = 0; byte < 256; ++byte) {
            std::wstring token = text::ByteToken(static_cast<std::uint8_t>(byte), true, true);
            if (token.size() > 1)
                all.push_back({std::move(token), static_cast<std::uint8_t>(byte)});
        }
        return all;
    }();
    return names;
}

const Name* NameAt(std::wstring_view text) {
    for (const Name& name : Names())
        if (text.starts_with(name.token))
            return &name;
    return nullptr;
}

} // namespace

Bytes MBEditCore::Parse(std::wstring_view text) {
    Bytes bytes;
    while (!text.empty()) {
        const Name* name = text[0] == L'<' ? NameAt(text) : nullptr;
        bytes.push_back(name ? name->byte : TypedByte(text[0]).value_or('?'));
        text.remove_prefix(name ? name->token.size() : 1);
    }
    return bytes;
}

} // namespace orv::controls
