#pragma once
// The model's fields by name: every object's own table, with where each field stands on the device.
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "model/field.h"
#include "model/out_format_config.h"

namespace orv::cli {

/// One of the switches of a field that holds seven.
struct SwitchField {
    model::SevenFlags* flags;
    int index;
};
struct CustomCodeField {
    model::OutFormatConfig* root;
    int index;
};
struct ExpressionField {
    model::Codes* codes;
};

/// Where one field's value is kept. Refers to the model.
using Place = std::variant<model::Property<bool>*, model::Property<std::int16_t>*, model::Property<std::int32_t>*,
                           model::Property<std::uint8_t>*, model::Property<std::wstring>*, SwitchField, CustomCodeField,
                           ExpressionField>;

struct FieldRef {
    std::wstring name;   ///< with its index: "MaxicodeEnable(2)"
    std::int32_t number; ///< of the parameter that carries it
    std::int32_t element;
    device::WireType type;
    Place place;
    const model::ReadMarks* marks; ///< of the object
    int cell;                      ///< of the field in them
    std::function<void()> stored;  ///< to be called behind each change

    bool IsRead() const { return !marks->Has(cell); }
};

/// One object of the model and its fields, in the order of its table.
struct Section {
    std::wstring name; ///< "Codes(3)"; empty for the root
    std::vector<FieldRef> fields;
};

Section RootSection(model::OutFormatConfig& model);
Section StandardSection(model::OutFormatConfig& model);
Section CodesSection(model::OutFormatConfig& model);
/// Positions are 1-based and must exist.
Section CodeSection(model::OutFormatConfig& model, std::int32_t code);
Section GroupSection(model::OutFormatConfig& model, std::int32_t group);
Section FormatSection(model::OutFormatConfig& model, std::int32_t format);
Section ItemSection(model::OutFormatConfig& model, std::int32_t format, std::int32_t item);

/// Every object, in the order of the definition tree.
std::vector<Section> AllSections(model::OutFormatConfig& model);

/// The field's value as it is shown, texts in display form without quotes.
std::wstring FieldText(const FieldRef& field, device::ParameterAccess& access);
/// The same as a parameter's value: numbers and switches as numbers.
device::Value FieldValue(const FieldRef& field);

} // namespace orv::cli
