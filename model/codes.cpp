#include "model/codes.h"

#include <algorithm>

#include "model/device_shape.h"
#include "model/expression_fault.h"
#include "text/excerpt.h"
#include "text/filled.h"

namespace orv::model {
namespace {

using enum device::WireType;

enum Parameter : std::int32_t { kExpression = 191 };

const Field<Group> kGroupFields[] = {
    {L"NoReadString", 17, ByteArray, &Group::NoReadString, ReadAs::String},
    {L"MultipleReadString", 327, ByteArray, &Group::MultipleReadString, ReadAs::String},
};

/// Why an expression is kept as the device gave it.
std::wstring ExpressionReason(const std::wstring& expression) {
    const auto fault = FindFault(expression);
    if (!fault || fault->token.empty())
        return text::Filled(text::Id::ExpressionKeptToEnd, {{L"expression", text::Excerpt(expression)}});
    return text::Filled(text::Id::ExpressionKept, {{L"expression", text::Excerpt(expression)},
                                                   {L"character", std::to_wstring(fault->character)}});
}

std::int16_t ElementOf(const Group& group) {
    return device::CheckedInt16(std::int64_t{group.Index()} - 1);
}

} // namespace

std::span<const Field<Group>> Group::Fields() {
    return kGroupFields;
}

std::span<const Field<Codes>> Codes::Fields() {
    static const Field<Codes> fields[] = {
        {L"Combination", 72, Int32, &Codes::Combination},
        {L"Expression", kExpression, Text, &Codes::expression_}, // written with combination by expression only
        {L"NoReadMessage", 14, Int32, &Codes::NoReadMessage},
        {L"NoReadString", 9, ByteArray, &Codes::NoReadString, ReadAs::String},
        {L"MultiReadMessage", 15, Int32, &Codes::MultiReadMessage},
        {L"MultiReadString", 16, ByteArray, &Codes::MultiReadString, ReadAs::String},
    };
    return fields;
}

bool Codes::ExpressionIsRead() const {
    return !Marks().Has(CellOf(&Codes::expression_));
}

std::wstring Codes::KeptExpression() const {
    return ExpressionIsRead() ? std::wstring() : expression_();
}

void Codes::GroupsChanged() {
    Stored(CellOf(&Codes::expression_));
}

std::int32_t Codes::EnabledCount() const {
    return static_cast<std::int32_t>(
        std::count_if(slots_.begin(), slots_.end(), [](const CodeDef& code) { return code.Enabled(); }));
}

CodeDef* Codes::Code(std::int32_t position) {
    return position >= 1 && position <= slots_.Count() ? &slots_.Item(position) : nullptr;
}

const CodeDef* Codes::Code(std::int32_t position) const {
    return position >= 1 && position <= slots_.Count() ? &slots_.Item(position) : nullptr;
}

CodeDef& Codes::Add(std::int16_t index, const std::wstring& key) {
    return slots_.Append(std::make_unique<CodeDef>(state_, index), key);
}

bool Codes::Load() {
    device::ParameterAccess access(state_);
    OwnMarks().SetAll(RowCells<Codes>());
    for (const auto& field : Fields())
        LoadField(field, *this, access, {0, kCodesAccessLevel});
    LoadSlots();
    if (Combination() != kCombinationByExpression)
        expression_({});
    LoadGroups();
    return true;
}

void Codes::LoadSlots() {
    slots_.Clear();
    device::ParameterAccess access(state_);
    const std::int32_t count = CodeSlotCount(access);
    for (std::int32_t n = 1; n <= count; ++n)
        Add(device::CheckedInt16(n), Numbered(L"Code", n)).Load();
}

void Codes::LoadGroups() {
    // Without a word on how codes are combined nobody can say that the expression does not count.
    const bool counts = !Marks().Has(CellOf(&Codes::Combination));
    if (!groups_.ParseExpression(expression_()) || !counts) {
        OwnMarks().Ask(CellOf(&Codes::expression_));
        groups_.MaxCount(0);
        return;
    }
    device::ParameterAccess access(state_);
    groups_.MaxCount(device::CheckedInt16(GroupLimit(access)));
    for (Group& group : groups_)
        for (const auto& field : kGroupFields)
            LoadField(field, group, access, {ElementOf(group), kCodesAccessLevel});
}

void Codes::Normalise(device::MIBParamCache& cache) {
    if (ExpressionIsRead())
        expression_(groups_.GetExpression(false));
    for (CodeDef& code : slots_)
        code.Normalise(cache);
}

void Codes::Save(device::MIBParamCache& cache) const {
    SaveSettings(cache);
    for (const CodeDef& code : slots_)
        code.Save(cache);
    SaveGroups(cache);
}

void Codes::SaveSettings(device::MIBParamCache& cache) const {
    device::ParameterAccess access(state_);
    for (const auto& field : Fields())
        if (field.parameter != kExpression)
            SaveField(field, *this, access, cache, 0);
        else
            SaveExpression(cache);
}

void Codes::SaveExpression(device::MIBParamCache& cache) const {
    const auto& row = Fields()[1];
    if (Combination() != kCombinationByExpression)
        return;
    if (ExpressionIsRead())
        cache.Add(row.parameter, row.type, groups_.GetExpression(false));
    else if (KeptExpression().empty())
        LeaveOutNotRead(cache, row.parameter, 0, Marks(), CellOf(row));
    else
        cache.LeaveOut(device::LeftOut::Why::NotRead, row.parameter, 0, ExpressionReason(KeptExpression()));
}

void Codes::SaveGroups(device::MIBParamCache& cache) const {
    device::ParameterAccess access(state_);
    for (const Group& group : groups_)
        SaveGroup(group, access, cache);
}

void Codes::SaveGroup(const Group& group, device::ParameterAccess& access, device::MIBParamCache& cache) const {
    if (!groups_.HasPlace(group)) {
        cache.LeaveOutForWantOfPlace(
            text::Filled(text::Id::GroupWithoutPlace, {{L"group", std::to_wstring(group.Index())}}));
        return;
    }
    for (const auto& field : kGroupFields)
        SaveField(field, group, access, cache, ElementOf(group));
}

} // namespace orv::model
