#pragma once
// The host's objects as the product needs them, abstract. Implemented by the adapters over the host's COM objects and
// by the portable bench host. All calls come on the user-interface thread; each may raise orv::Error with the host's
// number.
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "device/value.h"

namespace orv::device {

/// Entry of a parameter table; 0 is no entry.
using EntryHandle = std::int32_t;

struct Choice {
    std::int32_t value = 0;
    std::wstring label;
    bool operator==(const Choice&) const = default;
};

/// What the device description says of one entry.
struct Description {
    std::int32_t elementCount = 1;
    std::vector<Choice> choices; ///< in the description's order; empty when not enumerated
    bool hasRange = false;       ///< minimum and maximum are meaningful
    std::int32_t minimum = 0;
    std::int32_t maximum = 0;
    std::int32_t maximumStringLength = 0; ///< characters; 0 when not stated
};

/// A device's parameters.
class ParameterTable {
  public:
    virtual ~ParameterTable() = default;
    /// 0 when the number is unknown or its level is above the configuration's current one.
    virtual EntryHandle FindByNumber(std::int32_t number) = 0;
    /// Takes a path and the name of an element ("/X/Y[3]"); the handle leads back to that element. 0 when unknown
    /// or above `accessLevel`.
    virtual EntryHandle FindByPath(const std::wstring& path, std::int32_t accessLevel) = 0;
    /// Name that addresses `element` (0-based) of the entry; empty when its level is above `accessLevel`.
    virtual std::wstring EntryName(EntryHandle entry, std::int16_t element, std::int32_t accessLevel) = 0;
    virtual Value GetValue(EntryHandle entry, std::int16_t element) = 0;
    /// Sets the element that the handle was found for (0 for one found by number).
    virtual void SetValue(EntryHandle entry, const Value& value) = 0;
    virtual Description Describe(EntryHandle entry) = 0;
    /// The table's own interactive-mode switch.
    virtual void SetInteractiveMode(bool on) = 0;
};

class DeviceRecord {
  public:
    virtual ~DeviceRecord() = default;
    virtual std::shared_ptr<ParameterTable> GetParameterTable(std::int32_t argument) = 0;
};

class DeviceRecords {
  public:
    virtual ~DeviceRecords() = default;
    virtual std::shared_ptr<DeviceRecord> Record(std::int16_t cluster, std::int16_t device) = 0;
};

/// Receives the service's answers, on the user-interface thread, possibly before the request has returned.
class MibSapEvents {
  public:
    virtual ~MibSapEvents() = default;
    virtual void Connected() = 0;
    virtual void Error(std::int32_t code) = 0;
    virtual void ResponseReceived(const std::wstring& text) = 0;
};

/// The host's asynchronous MIB/SAP service (`IOrvMIBSAPMonitor`). Each request is answered by one event, later.
class MibSapService {
  public:
    virtual ~MibSapService() = default;
    /// The service keeps a reference to `events` until Disconnect or the next Connect.
    virtual void Connect(std::int32_t deviceAddress, std::shared_ptr<MibSapEvents> events) = 0;
    virtual void Disconnect() = 0;
    virtual void StartSession(const std::wstring& accessLevel, const std::wstring& password) = 0;
    /// `mode` is "V" or "P".
    virtual void EndSession(const std::wstring& mode) = 0;
    virtual void GetEntry(const std::wstring& entry) = 0;
    virtual void SetNumericEntry(const std::wstring& entry, const std::wstring& decimal) = 0;
    virtual void SetStringEntry(const std::wstring& entry, const std::wstring& text) = 0;
};

class Configuration {
  public:
    virtual ~Configuration() = default;
    virtual std::int32_t AccessLevel() = 0;
    virtual void SetAccessLevel(std::int32_t level) = 0;
    /// The configuration's own interactive-mode switch.
    virtual bool InteractiveMode() = 0;
    virtual void SetInteractiveMode(bool on) = 0;
    virtual std::shared_ptr<MibSapService> GetMibSapService() = 0;
    virtual std::shared_ptr<DeviceRecords> GetDeviceRecords() = 0;
};

class ConfigurationManager {
  public:
    virtual ~ConfigurationManager() = default;
    virtual std::shared_ptr<Configuration> GetConfiguration() = 0;
    virtual void ReleaseConfiguration(const std::shared_ptr<Configuration>& configuration) = 0;
};

/// The application object that the host registers itself with.
class HostApplication {
  public:
    virtual ~HostApplication() = default;
    virtual void SetCaption(const std::wstring& caption) = 0;
    virtual void CloseAddOn() = 0;
    /// First of the calls that prepare the progress display; the product passes 0.
    virtual void PrepareProgress(std::int32_t argument) = 0;
    /// Name of the guide and the user's language (a Windows language identifier).
    virtual std::wstring HelpName() = 0;
    virtual std::int32_t HelpLanguage() = 0;
    /// The two texts of the suggested export name: descriptions of cluster and device.
    virtual std::wstring ExportNameFirst() = 0;
    virtual std::wstring ExportNameSecond() = 0;
};

/// Handle of a window, as an integer; 0 is none.
using WindowHandle = std::intptr_t;

/// Conversions, list helpers and the progress display.
class SupportObject {
  public:
    virtual ~SupportObject() = default;
    /// `conversion` 128 (wide text to single bytes).
    virtual Bytes TextToBytes(const std::wstring& text, std::int32_t conversion, std::int32_t locale) = 0;
    /// `conversion` 64 (single bytes to wide text).
    virtual std::wstring BytesToText(const Bytes& bytes, std::int32_t conversion, std::int32_t locale) = 0;
    /// Two hexadecimal digits.
    virtual std::wstring HexByte(std::uint8_t byte) = 0;
    /// `list` with `item` appended behind `separator`; no separator before the first.
    virtual std::wstring AppendToList(const std::wstring& list, const std::wstring& item,
                                      const std::wstring& separator) = 0;
    virtual std::int32_t Minimum(std::int32_t a, std::int32_t b) = 0;
    /// Second and third of the calls that prepare the progress display.
    virtual void ResetProgress() = 0;
    virtual void SetProgressOwner(WindowHandle owner) = 0;
    virtual void ShowProgress(const std::wstring& text, const std::wstring& title) = 0;
    virtual void SetProgress(float percent) = 0;
    virtual void SetProgressText(const std::wstring& text) = 0;
    virtual void Settle(float value) = 0;
    virtual void HideProgress() = 0;
    /// Stores what is still being typed in a field of the panel.
    virtual void CommitPanel(WindowHandle panel) = 0;
    /// Numeric value of a combo box's selected entry.
    virtual std::int32_t ComboValue(WindowHandle combo) = 0;
    /// What the host wants done when an edit box gets the focus.
    virtual void EditGotFocus(WindowHandle edit) = 0;
};

/// Makes new instances of the host's classes.
class HostFactory {
  public:
    virtual ~HostFactory() = default;
    virtual std::shared_ptr<ConfigurationManager> CreateConfigurationManager() = 0;
    virtual std::shared_ptr<SupportObject> CreateSupportObject() = 0;
};

} // namespace orv::device
