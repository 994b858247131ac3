#pragma once
// The device's code slots and the settings that belong to all codes together.
#include <cstdint>
#include <span>
#include <string>

#include "device/device_state.h"
#include "model/code_def.h"
#include "model/groups.h"
#include "model/keyed_collection.h"

namespace orv::model {

/// The value of `Combination` that joins codes by an expression; the others are the device's.
inline constexpr std::int32_t kCombinationByExpression = 2;

class Codes : public Marked {
  public:
    explicit Codes(device::DeviceState& state) : state_(state) {}
    Codes(const Codes&) = delete;
    Codes& operator=(const Codes&) = delete;

    Property<std::int32_t> Combination;
    Property<std::int32_t> NoReadMessage;
    Property<std::wstring> NoReadString;
    Property<std::int32_t> MultiReadMessage;
    Property<std::wstring> MultiReadString;

    model::Groups& Groups() { return groups_; }
    const model::Groups& Groups() const { return groups_; }

    /// Slots, 1-based; the key of slot n is "Code" and n.
    std::int32_t Count() const { return slots_.Count(); }
    std::int32_t EnabledCount() const;
    /// Null for a position or a key that does not exist.
    CodeDef* Code(std::int32_t position);
    const CodeDef* Code(std::int32_t position) const;
    CodeDef* Code(const std::wstring& key) { return slots_.Find(key); }
    const CodeDef* Code(const std::wstring& key) const { return slots_.Find(key); }
    auto begin() { return slots_.begin(); }
    auto end() { return slots_.end(); }
    auto begin() const { return slots_.begin(); }
    auto end() const { return slots_.end(); }

    /// Label of a code-type value; empty when the device does not enumerate it. Raises 6 (overflow) outside 0..255.
    std::wstring CodeDescription(std::int32_t value) const { return SymbologyLabel(state_, value); }

    /// Appends a slot; it has no key when `key` is empty. Raises 5 for a key that is taken.
    CodeDef& Add(std::int16_t index, const std::wstring& key);
    /// Raise 5 for one that does not exist.
    void Remove(std::int32_t position) { slots_.Take(position); }
    void Remove(const std::wstring& key) { slots_.Take(key); }

    /// Reads the settings, then every slot, then the groups. A slot whose load fails is kept with what it had read. An
    /// expression that does not parse counts as not read.
    bool Load();
    /// What the device holds when its expression does not parse; it stays there until the groups are the user's. Else
    /// empty.
    std::wstring KeptExpression() const;
    bool ExpressionIsRead() const;
    /// The groups are the user's now, and so is the expression.
    void GroupsChanged();

    /// Puts expression and slots into the form that a save writes.
    void Normalise(device::MIBParamCache& cache);
    /// Queues the same that Load reads.
    void Save(device::MIBParamCache& cache) const;
    /// Parts of it: what belongs to all codes, the expression among it, and the groups' strings.
    void SaveSettings(device::MIBParamCache& cache) const;
    void SaveExpression(device::MIBParamCache& cache) const;
    void SaveGroups(device::MIBParamCache& cache) const;

    static std::span<const Field<Codes>> Fields();

  private:
    void LoadSlots();
    void LoadGroups();
    void SaveGroup(const Group& group, device::ParameterAccess& access, device::MIBParamCache& cache) const;

    device::DeviceState& state_;
    model::Groups groups_;
    KeyedCollection<CodeDef> slots_;
    Property<std::wstring> expression_; ///< of the last load or save; what is written is made from the groups
};

} // namespace orv::model
