// The properties of the edit box that are kept with a form, as texts.
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <string>

#include "controls/mb_edit.h"
#include "text/error.h"

namespace orv::controls {
namespace {

using Value = std::wstring;

constexpr int kLargestFont = 999; ///< points; far beyond any use, far below what a size is reckoned with

[[noreturn]] void Mismatch() {
    throw Error(error_number::kTypeMismatch);
}

Value FromBoolean(bool value) {
    return value ? L"True" : L"False";
}

bool ToBoolean(const Value& value) {
    if (value != L"True" && value != L"False")
        Mismatch();
    return value == L"True";
}

template <typename Number>
Number ToNumber(std::wstring_view value, int base = 10) {
    // A character that is no digit of the code page must not become one by losing its upper half.
    if (std::any_of(value.begin(), value.end(), [](wchar_t c) { return static_cast<std::uint32_t>(c) > 0x7F; }))
        Mismatch();
    const std::string digits(value.begin(), value.end());
    Number number{};
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
    if (error != std::errc{} || end != digits.data() + digits.size())
        Mismatch();
    return number;
}

Value FromColour(const std::optional<ColourValue>& colour) {
    if (!colour)
        return {};
    Value value = L"&H";
    for (int shift = 24; shift >= 0; shift -= 8)
        value += text::Hex2(static_cast<std::uint8_t>(*colour >> shift));
    return value;
}

std::optional<ColourValue> ToColour(const Value& value) {
    if (value.empty())
        return std::nullopt;
    if (!value.starts_with(L"&H"))
        Mismatch();
    return ToNumber<ColourValue>(std::wstring_view(value).substr(2), 16);
}

/// "Face;10;bold;italic"
Value FromFont(const std::optional<FontChoice>& font) {
    if (!font)
        return {};
    return font->face + L";" + std::to_wstring(font->points) + (font->bold ? L";bold" : L"") +
           (font->italic ? L";italic" : L"");
}

std::optional<FontChoice> ToFont(const Value& value) {
    if (value.empty())
        return std::nullopt;
    const std::size_t end = value.find(L';');
    if (end == Value::npos)
        Mismatch();
    FontChoice font{.face = value.substr(0, end)};
    std::wstring_view rest = std::wstring_view(value).substr(end + 1);
    font.italic = rest.ends_with(L";italic");
    rest.remove_suffix(font.italic ? 7 : 0);
    font.bold = rest.ends_with(L";bold");
    rest.remove_suffix(font.bold ? 5 : 0);
    font.points = ToNumber<int>(rest);
    if (font.points < 1 || font.points > kLargestFont)
        Mismatch();
    return font;
}

/// Sets one member of the look.
template <typename Member, typename T>
void Change(MBEdit& box, Member MBEditLook::*member, T value) {
    MBEditLook look = box.Look();
    look.*member = std::move(value);
    box.SetLook(look);
}

struct Property {
    const wchar_t* name;
    Value (*get)(const MBEdit&);
    void (*set)(MBEdit&, const Value&);
};

/// In the order in which they are set: the content last, when what it depends on is there.
constexpr std::array kProperties = {
    Property{L"MaxLength", [](const MBEdit& box) { return std::to_wstring(box.MaxLength()); },
             [](MBEdit& box, const Value& value) { box.SetMaxLength(ToNumber<std::size_t>(value)); }},
    Property{L"Multiline", [](const MBEdit& box) { return FromBoolean(box.Multiline()); },
             [](MBEdit& box, const Value& value) { box.SetMultiline(ToBoolean(value)); }},
    Property{L"AutoSelect", [](const MBEdit& box) { return FromBoolean(box.AutoSelect()); },
             [](MBEdit& box, const Value& value) { box.SetAutoSelect(ToBoolean(value)); }},
    Property{L"MaskReturn", [](const MBEdit& box) { return FromBoolean(box.MaskReturn()); },
             [](MBEdit& box, const Value& value) { box.SetMaskReturn(ToBoolean(value)); }},
    Property{L"TextColor", [](const MBEdit& box) { return FromColour(box.Look().textColor); },
             [](MBEdit& box, const Value& value) { Change(box, &MBEditLook::textColor, ToColour(value)); }},
    Property{L"SpecialColor", [](const MBEdit& box) { return FromColour(box.Look().specialColor); },
             [](MBEdit& box, const Value& value) { Change(box, &MBEditLook::specialColor, ToColour(value)); }},
    Property{L"Tooltips", [](const MBEdit& box) { return FromBoolean(box.Tooltips()); },
             [](MBEdit& box, const Value& value) { box.SetTooltips(ToBoolean(value)); }},
    Property{L"BackColor", [](const MBEdit& box) { return FromColour(box.Look().backColor); },
             [](MBEdit& box, const Value& value) { Change(box, &MBEditLook::backColor, ToColour(value)); }},
    Property{L"Enabled", [](const MBEdit& box) { return FromBoolean(box.Enabled()); },
             [](MBEdit& box, const Value& value) { box.SetEnabled(ToBoolean(value)); }},
    Property{L"Font", [](const MBEdit& box) { return FromFont(box.Look().font); },
             [](MBEdit& box, const Value& value) { Change(box, &MBEditLook::font, ToFont(value)); }},
    Property{L"BorderStyle", [](const MBEdit& box) { return std::to_wstring(box.Look().borderStyle); },
             [](MBEdit& box, const Value& value) { Change(box, &MBEditLook::borderStyle, ToNumber<int>(value)); }},
    Property{L"Locked", [](const MBEdit& box) { return FromBoolean(box.Locked()); },
             [](MBEdit& box, const Value& value) { box.SetLocked(ToBoolean(value)); }},
    Property{L"MousePointer", [](const MBEdit& box) { return std::to_wstring(box.Look().mousePointer); },
             [](MBEdit& box, const Value& value) { Change(box, &MBEditLook::mousePointer, ToNumber<int>(value)); }},
    Property{L"MouseIcon", [](const MBEdit& box) { return box.Look().mouseIcon; },
             [](MBEdit& box, const Value& value) { Change(box, &MBEditLook::mouseIcon, value); }},
    Property{L"Text", [](const MBEdit& box) { return box.Text(); },
             [](MBEdit& box, const Value& value) { box.SetText(value); }},
    // The text alone does not tell the byte 13 from the four bytes that look like it.
    Property{L"Data", [](const MBEdit& box) { return text::Hex(box.Data()); },
             [](MBEdit& box, const Value& value) { box.SetData(text::FromHex(value)); }},
};

} // namespace

MBEdit::PropertyList MBEdit::Properties() const {
    PropertyList list;
    for (const Property& property : kProperties)
        list.emplace_back(property.name, property.get(*this));
    return list;
}

void MBEdit::SetProperties(const PropertyList& properties) {
    for (const Property& property : kProperties)
        for (const auto& [name, value] : properties)
            if (name == property.name)
                property.set(*this, value);
}

} // namespace orv::controls
