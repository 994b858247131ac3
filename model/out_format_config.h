#pragma once
// Root of one device's output format: what belongs to the whole of it, and the parts it owns.
#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "device/device_state.h"
#include "device/mib_param_cache.h"
#include "model/advanced_formats.h"
#include "model/codes.h"
#include "model/field.h"
#include "model/standard_format.h"

namespace orv::model {

inline constexpr int kCustomCodeIDCount = 19;
inline constexpr std::int32_t kFirstCustomCodeIDParameter = 400;
inline constexpr std::int32_t kAllTransports = -1;

/// How far a save came.
struct SaveReport {
    std::size_t queued = 0;
    std::size_t written = 0;
    std::wstring stoppedAt;    ///< entry of the write that failed; empty when none did
    std::int32_t endError = 0; ///< code with which the device refused to end the session; 0 when it did not
    std::vector<device::LeftOut> leftOut;
};

/// What a save would write, in order, and what it would leave out.
struct SavePlan {
    std::vector<device::MIBParameter> writes;
    std::vector<device::LeftOut> leftOut;
};

class OutFormatConfig : public Marked {
  public:
    explicit OutFormatConfig(device::DeviceState& state)
        : state_(state), standardFormat_(state), advancedFormats_(state, *this), codes_(state) {}
    OutFormatConfig(const OutFormatConfig&) = delete;
    OutFormatConfig& operator=(const OutFormatConfig&) = delete;

    /// Name of a transport (0..255): the device's, else the default one; empty past 15 without a device's name.
    std::wstring TransportDesc(std::uint8_t index) const;
    /// Bit i for transport i; -1 for all.
    std::int32_t AvailableTransports() const { return availableTransports_; }
    const std::wstring& NotUsedCodeRelTypes() const { return notUsedCodeRelTypes_; }
    const std::wstring& NotUsedGlobalTypes() const { return notUsedGlobalTypes_; }
    bool SupportedCodeRelItem(std::int32_t itemType) const;
    bool SupportedGlobalItem(std::int32_t itemType) const;

    Property<bool> Advanced; ///< the item-based formats are in use instead of the standard one
    Property<std::int32_t> CodeID;
    Property<std::int32_t> GlobNoReadMsgType;
    /// Index 0..18; raises 9 (subscript) beyond. Empty for an entry that the device never defined.
    std::wstring CustomCodeID(int index) const;
    /// The user's text. Raises 381 for an entry that the device never defined.
    void CustomCodeID(int index, std::wstring text);
    bool CustomCodeIDDefined(int index) const;
    /// Mark of an entry: behind those of the table.
    static constexpr int CustomCodeCell(int index) { return 3 + index; }

    model::Codes& Codes() { return codes_; }
    const model::Codes& Codes() const { return codes_; }
    model::StandardFormat& StandardFormat() { return standardFormat_; }
    const model::StandardFormat& StandardFormat() const { return standardFormat_; }
    model::AdvancedFormats& AdvancedFormats() { return advancedFormats_; }
    const model::AdvancedFormats& AdvancedFormats() const { return advancedFormats_; }

    /// Reads the whole model from the current device. A failing host call flies; what was read stays.
    void Reload();
    /// Before a Reload that replaces the model instead of refreshing it: an identifier that comes back empty would keep
    /// what it holds, which may be another device's or a change that was given up.
    void ForgetIdentifiers() { customCodes_ = {}; }
    /// Queues every parameter and commits them; shows what failed. True when everything was written.
    bool Save(bool interactive);
    const SaveReport& LastSave() const { return lastSave_; }
    /// What a save would write now, in order. Changes nothing.
    SavePlan Plan() const;
    /// Parts of it: what is set for all codes, and what is set beside the advanced formats.
    void SaveCodeSettings(device::MIBParamCache& cache) const;
    void SaveFormatSettings(device::MIBParamCache& cache) const;

    /// The plain settings of the root itself.
    static std::span<const Field<OutFormatConfig>> Fields();

  private:
    struct CustomCode {
        std::wstring text;
        bool defined = false;
    };

    const CustomCode& CustomCodeAt(int index) const;
    void ReadCustomCodes();
    void ReadTransports();
    static std::int32_t ParseMask(const std::wstring& masks, std::int64_t position);
    void QueueAll(device::MIBParamCache& cache) const;
    void SaveKind(device::MIBParamCache& cache) const;
    void SaveIdentifiers(device::MIBParamCache& cache) const;
    void SaveNoRead(device::MIBParamCache& cache) const;
    void ReportFailedSave(std::int32_t sapError);

    device::DeviceState& state_;
    model::StandardFormat standardFormat_;
    model::AdvancedFormats advancedFormats_;
    model::Codes codes_;
    std::array<CustomCode, kCustomCodeIDCount> customCodes_;
    std::int32_t availableTransports_ = 0;
    std::wstring notUsedCodeRelTypes_;
    std::wstring notUsedGlobalTypes_;
    std::wstring transportDescription_;
    SaveReport lastSave_;
    std::size_t queuedCharacters_ = 0; ///< of the last save's entry names
};

} // namespace orv::model
