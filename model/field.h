#pragma once
// One row of a class's table: which parameter carries which property, and how. The order of the rows is the order on
// the wire, both ways.
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>
#include <variant>

#include "device/mib_param_cache.h"
#include "device/parameter_access.h"
#include "model/property.h"

namespace orv::model {

using device::WireType;

/// How a text is read.
enum class ReadAs {
    Value,      ///< the value itself, converted
    String,     ///< bytes through the code page; a failed read is the empty string
    ByteString, ///< bytes through the code page; failures propagate
};

/// Seven switches in seven parameters that follow one another.
using SevenFlags = IndexedProperty<bool, 7>;

template <typename Class>
struct Field {
    using Member =
        std::variant<Property<bool> Class::*, Property<std::int16_t> Class::*, Property<std::int32_t> Class::*,
                     Property<std::uint8_t> Class::*, Property<std::wstring> Class::*, SevenFlags Class::*>;

    const wchar_t* name;    ///< of the property
    std::int32_t parameter; ///< of SevenFlags: the first of the seven
    WireType type;          ///< as which it is written
    Member member;
    ReadAs readAs = ReadAs::Value;
};

/// Where a class's parameters stand: the element of each, and the level they are read under (default: the current).
struct FieldPlace {
    std::int16_t element = 0;
    std::optional<std::int32_t> accessLevel = {};
};

namespace field {

inline void Assign(Property<bool>& property, const device::Value& value) {
    property(device::ToBool(value));
}
inline void Assign(Property<std::int16_t>& property, const device::Value& value) {
    property(device::ToInt16(value));
}
inline void Assign(Property<std::int32_t>& property, const device::Value& value) {
    property(device::ToInt32(value));
}
inline void Assign(Property<std::uint8_t>& property, const device::Value& value) {
    property(device::ToByte(value));
}

inline std::wstring ReadText(device::ParameterAccess& access, std::int32_t number, ReadAs form,
                             const FieldPlace& place) {
    switch (form) {
    case ReadAs::String:
        return access.ReadString(number, place.element, place.accessLevel);
    case ReadAs::ByteString:
        return access.ReadByteString(number, place.element, place.accessLevel);
    case ReadAs::Value:
        break;
    }
    return access.ReadText(number, place.element, place.accessLevel);
}

/// A switch is written as 1 or 0, never as -1.
inline device::Value FlagValue(bool on) {
    return on ? std::int16_t{1} : std::int16_t{0};
}

} // namespace field

/// Reads one row. A failed read flies and leaves the property as it was.
template <typename Class>
void LoadField(const Field<Class>& row, Class& object, device::ParameterAccess& access, const FieldPlace& place) {
    std::visit(
        [&](auto member) {
            auto& property = object.*member;
            if constexpr (std::is_same_v<decltype(member), Property<std::wstring> Class::*>) {
                property(field::ReadText(access, row.parameter, row.readAs, place));
            } else if constexpr (std::is_same_v<decltype(member), SevenFlags Class::*>) {
                for (int i = 0; i < SevenFlags::kCount; ++i)
                    property(i, device::ToBool(access.Read(row.parameter + i, place.element, place.accessLevel)));
            } else {
                field::Assign(property, access.Read(row.parameter, place.element, place.accessLevel));
            }
        },
        row.member);
}

/// Queues one row.
template <typename Class>
void SaveField(const Field<Class>& row, const Class& object, device::ParameterAccess& access,
               device::MIBParamCache& cache, std::int16_t element) {
    std::visit(
        [&](auto member) {
            const auto& property = object.*member;
            if constexpr (std::is_same_v<decltype(member), Property<std::wstring> Class::*>) {
                if (row.type == WireType::ByteArray)
                    cache.Add(row.parameter, row.type, access.StringToBytes(property()), element);
                else
                    cache.Add(row.parameter, row.type, property(), element);
            } else if constexpr (std::is_same_v<decltype(member), SevenFlags Class::*>) {
                for (int i = 0; i < SevenFlags::kCount; ++i)
                    cache.Add(row.parameter + i, row.type, field::FlagValue(property(i)), element);
            } else if constexpr (std::is_same_v<decltype(member), Property<bool> Class::*>) {
                cache.Add(row.parameter, row.type, field::FlagValue(property()), element);
            } else {
                cache.Add(row.parameter, row.type, property(), element);
            }
        },
        row.member);
}

} // namespace orv::model
