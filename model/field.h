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
#include "model/read_marks.h"
#include "text/texts.h"

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

/// A switch is written as 1 or 0, never as -1.
inline device::Value FlagValue(bool on) {
    return on ? std::int16_t{1} : std::int16_t{0};
}

} // namespace field

/// Cell of a row's mark; of SevenFlags that of the first switch.
template <typename Class>
int CellOf(const Field<Class>& row) {
    return static_cast<int>(&row - Class::Fields().data());
}

template <typename Class, typename Member>
int CellOf(Member Class::*member) {
    for (const Field<Class>& row : Class::Fields())
        if (row.member == typename Field<Class>::Member(member))
            return CellOf(row);
    throw Error(error_number::kSubscript);
}

/// How many cells the rows of a class have.
template <typename Class>
int RowCells() {
    const auto rows = Class::Fields();
    const bool flags = std::holds_alternative<SevenFlags Class::*>(rows.back().member);
    return static_cast<int>(rows.size()) + (flags ? SevenFlags::kCount - 1 : 0);
}

/// Stores a value of the user's. The first form is that of all properties, the second of one switch of seven.
template <typename Class, typename T>
void Store(Class& object, Property<T> Class::*member, std::type_identity_t<T> value) {
    (object.*member)(std::move(value));
    object.Stored(CellOf(member));
}
template <typename Class>
void Store(Class& object, SevenFlags Class::*member, int index, bool on) {
    (object.*member)(index, on);
    object.Stored(CellOf(member) + index);
}

/// Reads one row. A failed read flies, but for a String, and leaves the property as it was. A property whose read
/// failed or answered nothing is marked.
template <typename Class>
void LoadField(const Field<Class>& row, Class& object, device::ParameterAccess& access, const FieldPlace& place) {
    // A failed string read is the empty string, on purpose and without a word; the mark tells it from one that is
    // empty.
    const auto read = [&](int part = 0) { return access.Read(row.parameter + part, place.element, place.accessLevel); };
    std::visit(
        [&](auto member) {
            auto& property = object.*member;
            const int cell = CellOf(row);
            if constexpr (std::is_same_v<decltype(member), Property<std::wstring> Class::*>) {
                const auto take = [&](device::Value v) {
                    property(row.readAs == ReadAs::Value ? access.AsText(std::move(v))
                                                         : access.AsByteString(std::move(v)));
                };
                if (row.readAs != ReadAs::String)
                    object.ReadCell(cell, read, take);
                else if (!object.TryCell(cell, read, take))
                    property({});
            } else if constexpr (std::is_same_v<decltype(member), SevenFlags Class::*>) {
                for (int i = 0; i < SevenFlags::kCount; ++i)
                    object.ReadCell(
                        cell + i, [&] { return read(i); },
                        [&](const device::Value& v) { property(i, device::ToBool(v)); });
            } else {
                object.ReadCell(cell, read, [&](const device::Value& v) { field::Assign(property, v); });
            }
        },
        row.member);
}

inline std::wstring NotReadReason(const ReadMarks& marks, int cell) {
    std::wstring reason = marks.Failure(cell);
    return !reason.empty() ? reason : text::Load(marks.Asked(cell) ? text::Id::NoValueRead : text::Id::NotAskedFor);
}

inline void LeaveOutNotRead(device::MIBParamCache& cache, std::int32_t number, std::int16_t element,
                            const ReadMarks& marks, int cell) {
    cache.LeaveOut(device::LeftOut::Why::NotRead, number, element, NotReadReason(marks, cell));
}

/// Queues one row, but for what was never read.
template <typename Class>
void SaveField(const Field<Class>& row, const Class& object, device::ParameterAccess& access,
               device::MIBParamCache& cache, std::int16_t element) {
    const int cell = CellOf(row);
    const auto& marks = object.Marks();
    std::visit(
        [&](auto member) {
            const auto& property = object.*member;
            if constexpr (std::is_same_v<decltype(member), SevenFlags Class::*>) {
                for (int i = 0; i < SevenFlags::kCount; ++i)
                    if (marks.Has(cell + i))
                        LeaveOutNotRead(cache, row.parameter + i, element, marks, cell + i);
                    else
                        cache.Add(row.parameter + i, row.type, field::FlagValue(property(i)), element);
            } else if (marks.Has(cell)) {
                LeaveOutNotRead(cache, row.parameter, element, marks, cell);
            } else if constexpr (std::is_same_v<decltype(member), Property<std::wstring> Class::*>) {
                if (row.type == WireType::ByteArray)
                    cache.Add(row.parameter, row.type, access.StringToBytes(property()), element);
                else
                    cache.Add(row.parameter, row.type, property(), element);
            } else if constexpr (std::is_same_v<decltype(member), Property<bool> Class::*>) {
                cache.Add(row.parameter, row.type, field::FlagValue(property()), element);
            } else {
                cache.Add(row.parameter, row.type, property(), element);
            }
        },
        row.member);
}

} // namespace orv::model
