#pragma once
// The definition tree with all its fields, as it is printed.
#include <string>
#include <vector>

#include "cli/device_file.h"
#include "cli/fields.h"

namespace orv::cli {

struct DefinitionNode {
    Section section;
    std::wstring title; ///< what the tree of the editor calls it; empty where it has no node
    bool inUse = true;
    std::vector<DefinitionNode> children;
};

struct Definition {
    DefinitionNode settings;
    DefinitionNode codes;               ///< children: the slots
    std::vector<DefinitionNode> groups; ///< none but with combination by expression
    DefinitionNode standard;
    std::vector<DefinitionNode> formats; ///< children: their items
};

/// Refers to the model of `file`.
Definition Describe(DeviceFile& file);

/// Names of the transports whose bits are set.
std::vector<std::wstring> TransportNames(const model::OutFormatConfig& model, std::int32_t transports);

/// What the device calls the field's value; empty when it does not enumerate it.
std::wstring ChoiceLabel(const FieldRef& field, device::ParameterAccess& access);

/// "not on this device", "above the access level"; empty for a field that a save would write.
std::wstring AbsenceNote(const FieldRef& field, device::ParameterAccess& access);

} // namespace orv::cli
