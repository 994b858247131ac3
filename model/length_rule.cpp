#include "model/length_rule.h"

#include <algorithm>

namespace orv::model {

std::uint8_t LeadingNumber(std::wstring_view text) {
    unsigned number = 0;
    for (const wchar_t c : text) {
        if (c < L'0' || c > L'9')
            break;
        number = std::min(number * 10 + static_cast<unsigned>(c - L'0'), 255U);
    }
    return static_cast<std::uint8_t>(number);
}

LengthRule ParseLengthRule(std::wstring_view text) {
    LengthRule rule;
    if (text.empty())
        return rule;
    if (text == L"*") {
        rule.kind = LengthRule::Kind::Any;
        return rule;
    }
    if (const auto points = text.find(L".."); points != std::wstring_view::npos) {
        rule.kind = LengthRule::Kind::Range;
        rule.minimum = LeadingNumber(text);
        rule.maximum = LeadingNumber(text.substr(points + 2));
        return rule;
    }
    rule.kind = LengthRule::Kind::List;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t comma = std::min(text.find(L',', begin), text.size());
        rule.lengths.push_back(LeadingNumber(text.substr(begin, comma - begin)));
        begin = comma + 1;
    }
    return rule;
}

bool LengthRule::Allows(std::uint8_t length) const {
    switch (kind) {
    case Kind::Any:
        return true;
    case Kind::Range:
        return length >= minimum && length <= maximum;
    case Kind::List:
        return std::find(lengths.begin(), lengths.end(), length) != lengths.end();
    case Kind::NotAllowed:
        break;
    }
    return false;
}

} // namespace orv::model
