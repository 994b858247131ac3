#include "model/out_format_config.h"

#include "device/mib_param_cache.h"
#include "device/parameter_access.h"
#include "text/restoring.h"
#include "text/texts.h"

namespace orv::model {
namespace {

using device::ParameterAccess;
using enum device::WireType;

enum Parameter : std::int32_t {
    kNotUsedCodeRelTypes = 370,
    kNotUsedGlobalTypes = 371,
    kAvailableTransports = 601,
    kTransportDescription = 603,
};

// Beside the table: the custom identifiers (400 and up) stand between the second row and the third, and on loading
// everything that the root owns as well.
const Field<OutFormatConfig> kFields[] = {
    {L"Advanced", 330, Int16, &OutFormatConfig::Advanced},
    {L"CodeID", 399, Int32, &OutFormatConfig::CodeID},
    {L"GlobNoReadMsgType", 372, Int32, &OutFormatConfig::GlobNoReadMsgType},
};
const Field<OutFormatConfig>& kAdvanced = kFields[0];
const Field<OutFormatConfig>& kCodeID = kFields[1];
const Field<OutFormatConfig>& kGlobNoReadMsgType = kFields[2];

constexpr const wchar_t* kDefaultTransports[] = {
    L"SerMain",      L"SerAux",      L"DeviceNet",   L"Profibus",    L"EmailClient", L"EthernetIP",
    L"ProfiNet",     L"FTPClient",   L"FTPServer",   L"HTTPClient",  L"HTTPServer",  L"ModbusClient",
    L"SystemSocket", L"UserSocket1", L"UserSocket2", L"UserSocket3",
};

/// Element `index` (0-based) of a comma-separated list, or nothing past its end. Elements are taken as they are.
bool ListElement(const std::wstring& list, std::size_t index, std::wstring& element) {
    std::size_t begin = 0;
    for (; index > 0; --index) {
        const std::size_t comma = list.find(L',', begin);
        if (comma == std::wstring::npos)
            return false;
        begin = comma + 1;
    }
    element = list.substr(begin, list.find(L',', begin) - begin);
    return true;
}

std::wstring Trimmed(const std::wstring& text) {
    const auto first = text.find_first_not_of(L' ');
    return first == std::wstring::npos ? std::wstring() : text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

bool ListsNumber(const std::wstring& list, std::int32_t number) {
    return (L" " + Trimmed(list) + L" ").find(L" " + std::to_wstring(number) + L" ") != std::wstring::npos;
}

} // namespace

std::span<const Field<OutFormatConfig>> OutFormatConfig::Fields() {
    return kFields;
}

std::wstring OutFormatConfig::TransportDesc(std::uint8_t index) const {
    std::wstring name;
    if (ListElement(transportDescription_, index, name) && !name.empty())
        return name;
    return index < std::size(kDefaultTransports) ? kDefaultTransports[index] : L"";
}

bool OutFormatConfig::SupportedCodeRelItem(std::int32_t itemType) const {
    return !ListsNumber(notUsedCodeRelTypes_, itemType);
}

bool OutFormatConfig::SupportedGlobalItem(std::int32_t itemType) const {
    return !ListsNumber(notUsedGlobalTypes_, itemType);
}

const OutFormatConfig::CustomCode& OutFormatConfig::CustomCodeAt(int index) const {
    if (index < 0 || index >= kCustomCodeIDCount)
        throw Error(error_number::kSubscript);
    return customCodes_[static_cast<std::size_t>(index)];
}

std::wstring OutFormatConfig::CustomCodeID(int index) const {
    const CustomCode& code = CustomCodeAt(index);
    return code.defined ? code.text : std::wstring();
}

void OutFormatConfig::CustomCodeID(int index, std::wstring text) {
    if (!CustomCodeAt(index).defined)
        throw Error(error_number::kPropertyArrayIndex);
    customCodes_[static_cast<std::size_t>(index)].text = std::move(text);
    Stored(CustomCodeCell(index));
}

bool OutFormatConfig::CustomCodeIDDefined(int index) const {
    return CustomCodeAt(index).defined;
}

void OutFormatConfig::Reload() {
    ParameterAccess access(state_);
    OwnMarks().SetAll(CustomCodeCell(kCustomCodeIDCount));
    // Only 1 is on; any other value, even one that other switches take for on, is the standard format.
    ReadCell(
        CellOf(kAdvanced), [&] { return access.Read(kAdvanced.parameter); },
        [&](const device::Value& value) { Advanced(device::ToInt32(value) == 1); });
    LoadField(kCodeID, *this, access, {});
    ReadCustomCodes();
    codes_.Load();
    standardFormat_.Load();
    advancedFormats_.Load();
    notUsedCodeRelTypes_ = access.ReadText(kNotUsedCodeRelTypes);
    notUsedGlobalTypes_ = access.ReadText(kNotUsedGlobalTypes);
    LoadField(kGlobNoReadMsgType, *this, access, {});
    ReadTransports();
}

void OutFormatConfig::ReadCustomCodes() {
    ParameterAccess access(state_);
    for (int i = 0; i < kCustomCodeIDCount; ++i) {
        CustomCode& code = customCodes_[static_cast<std::size_t>(i)];
        const bool answered = TryCell(
            CustomCodeCell(i), [&] { return access.Read(kFirstCustomCodeIDParameter + i); },
            [&](device::Value value) {
                std::wstring text = access.AsByteString(std::move(value));
                // An entry that comes back empty keeps what it was: it may have been defined by an earlier load.
                if (!text.empty())
                    code = {std::move(text), true};
            });
        // One that was never defined has nothing to lose.
        if (answered && !code.defined)
            OwnMarks().Clear(CustomCodeCell(i));
    }
}

void OutFormatConfig::ReadTransports() {
    ParameterAccess access(state_);
    const std::int32_t modelIndex = device::ToInt32(access.Read(std::wstring(L"/SystemInfo/Model/ModelIndex")));
    const std::wstring masks = access.ReadText(kAvailableTransports);
    availableTransports_ = ParseMask(masks, modelIndex - std::int64_t{1});
    transportDescription_ = access.ReadText(kTransportDescription);
}

/// Entry `position` of the masks, one a device model, in hexadecimal. All transports when it is not there or does not
/// read.
std::int32_t OutFormatConfig::ParseMask(const std::wstring& masks, std::int64_t position) {
    std::wstring digits;
    if (position < 0 || !ListElement(masks, static_cast<std::size_t>(position), digits))
        return kAllTransports;
    digits = Trimmed(digits);
    if (digits.empty() || digits.size() > 8 ||
        digits.find_first_not_of(L"0123456789abcdefABCDEF") != std::wstring::npos)
        return kAllTransports;
    return static_cast<std::int32_t>(std::stoul(digits, nullptr, 16));
}

bool OutFormatConfig::Save(bool interactive) {
    if (state_.cache)
        state_.cache->Clear();
    else
        state_.cache = std::make_unique<device::MIBParamCache>(state_);
    // Released after every save, whatever became of it: the next one starts from the model.
    const Restoring release([this] { state_.cache.reset(); });
    state_.cache->Reserve(lastSave_.queued, queuedCharacters_);
    codes_.Normalise(*state_.cache);
    QueueAll(*state_.cache);
    const bool saved = state_.cache->Save(interactive, false);
    queuedCharacters_ = state_.cache->Characters();
    lastSave_ = {state_.cache->Count(), state_.cache->WrittenCount(), state_.cache->StoppedAt(),
                 state_.cache->EndError(), state_.cache->WhatIsLeftOut()};
    if (!saved)
        ReportFailedSave(state_.cache->LastSAPError());
    return saved;
}

SavePlan OutFormatConfig::Plan() const {
    device::MIBParamCache cache(state_);
    QueueAll(cache);
    return {cache.Parameters(), cache.WhatIsLeftOut()};
}

void OutFormatConfig::QueueAll(device::MIBParamCache& cache) const {
    SaveKind(cache);
    SaveIdentifiers(cache);
    SaveNoRead(cache);
    codes_.Save(cache);
    standardFormat_.Save(cache);
    advancedFormats_.Save(cache);
}

void OutFormatConfig::SaveKind(device::MIBParamCache& cache) const {
    ParameterAccess access(state_);
    SaveField(kAdvanced, *this, access, cache, 0);
}

void OutFormatConfig::SaveIdentifiers(device::MIBParamCache& cache) const {
    ParameterAccess access(state_);
    SaveField(kCodeID, *this, access, cache, 0);
    for (int i = 0; i < kCustomCodeIDCount; ++i)
        if (Marks().Has(CustomCodeCell(i)))
            LeaveOutNotRead(cache, kFirstCustomCodeIDParameter + i, 0, Marks(), CustomCodeCell(i));
        else if (CustomCodeIDDefined(i))
            cache.Add(kFirstCustomCodeIDParameter + i, ByteArray, access.StringToBytes(CustomCodeID(i)));
}

void OutFormatConfig::SaveNoRead(device::MIBParamCache& cache) const {
    ParameterAccess access(state_);
    SaveField(kGlobNoReadMsgType, *this, access, cache, 0);
}

void OutFormatConfig::SaveCodeSettings(device::MIBParamCache& cache) const {
    SaveIdentifiers(cache);
    SaveNoRead(cache);
    codes_.SaveSettings(cache);
}

void OutFormatConfig::SaveFormatSettings(device::MIBParamCache& cache) const {
    SaveKind(cache);
    standardFormat_.Save(cache);
}

void OutFormatConfig::ReportFailedSave(std::int32_t sapError) {
    using text::Id;
    platform::MessageBox box;
    if (sapError != 0)
        box.text = text::Load(Id::SaveFailed) + L"\n" + text::Load(Id::MibSapError) + std::to_wstring(sapError);
    else if (state_.common->lastTransportError !=
             0) // never cleared: it may stem from an earlier save, and is shown all the same
        box.text = text::Load(Id::CommunicationError) + std::to_wstring(state_.common->lastTransportError);
    else
        return;
    box.title = text::Load(Id::ErrorTitle);
    box.icon = platform::Icon::Warning;
    state_.platform.boxes.Show(box);
}

} // namespace orv::model
