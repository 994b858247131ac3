#include "device/parameter_access.h"

#include "platform/guarded.h"
#include "text/bytes.h"

namespace orv::device {
namespace {

constexpr std::int32_t kWideToBytes = 128;
constexpr std::int32_t kBytesToWide = 64;
constexpr std::int32_t kUsEnglish = 1033;

Configuration& Required(const std::shared_ptr<Configuration>& configuration) {
    if (!configuration)
        throw Error(error_number::kObjectNotSet);
    return *configuration;
}

} // namespace

std::shared_ptr<ParameterTable> ParameterAccess::Table(const Target& target) {
    const auto records = Required(state_.configuration).GetDeviceRecords();
    const auto record = records ? records->Record(target.cluster, target.device) : nullptr;
    auto table = record ? record->GetParameterTable(0) : nullptr;
    if (!table)
        throw Error(error_number::kObjectNotSet);
    return table;
}

EntryHandle ParameterAccess::Resolve(ParameterTable& table, const ParameterId& id, std::int32_t accessLevel) {
    if (const auto* path = std::get_if<std::wstring>(&id))
        return table.FindByPath(*path, accessLevel);
    state_.common->calls.Increment();
    return table.FindByNumber(std::get<std::int32_t>(id));
}

Value ParameterAccess::Read(const ParameterId& id, std::int16_t element, std::optional<std::int32_t> accessLevel) {
    const std::int32_t level = accessLevel.value_or(state_.current.accessLevel);
    // The host's own setting must look untouched to it whatever happens in between.
    const auto configuration = state_.configuration;
    const std::int32_t remembered = Required(configuration).AccessLevel();
    configuration->SetAccessLevel(level);
    return Restored(
        [&] {
            const auto table = Table(state_.current);
            const EntryHandle entry = Resolve(*table, id, level);
            return entry != 0 ? table->GetValue(entry, element) : Value();
        },
        [&] { configuration->SetAccessLevel(remembered); });
}

std::wstring ParameterAccess::ReadString(const ParameterId& id, std::int16_t element,
                                         std::optional<std::int32_t> accessLevel) {
    try {
        return ReadByteString(id, element, accessLevel);
    } catch (const Error&) {
        // A failed string read is the empty string, on purpose and without a word.
        return {};
    }
}

std::wstring ParameterAccess::ReadByteString(const ParameterId& id, std::int16_t element,
                                             std::optional<std::int32_t> accessLevel) {
    return AsByteString(Read(id, element, accessLevel));
}

std::wstring ParameterAccess::ReadText(const ParameterId& id, std::int16_t element,
                                       std::optional<std::int32_t> accessLevel) {
    return AsText(Read(id, element, accessLevel));
}

// A text may come as its bytes and bytes as their text: which of the two a host hands out is the host's affair.
std::wstring ParameterAccess::AsText(Value value) {
    const auto* bytes = std::get_if<Bytes>(&value);
    return bytes != nullptr ? BytesToString(*bytes) : ToText(std::move(value));
}

std::wstring ParameterAccess::AsByteString(Value value) {
    if (auto* text = std::get_if<std::wstring>(&value))
        return std::move(*text);
    return BytesToString(ToBytes(std::move(value)));
}

Bytes ParameterAccess::StringToBytes(const std::wstring& text) {
    return state_.Support().TextToBytes(text, kWideToBytes, kUsEnglish);
}

std::wstring ParameterAccess::BytesToString(const Bytes& bytes) {
    return state_.Support().BytesToText(bytes, kBytesToWide, kUsEnglish);
}

void ParameterAccess::Write(const std::wstring& path, const Value& value) {
    Write(path, value, state_.current);
}

void ParameterAccess::Write(const std::wstring& path, const Value& value, const Target& target) {
    line_.assign(L"  Writing ").append(path).append(L" = ");
    AppendLogForm(line_, value);
    state_.platform.debug.Line(line_.append(L"..."));
    const auto table = Table(target);
    const EntryHandle entry = table->FindByPath(path, target.accessLevel);
    if (entry == 0)
        throw Error(error_number::kInvalidArgument);
    table->SetValue(entry, value);
    state_.platform.debug.Line(L"  Write OK!");
}

std::int16_t ParameterAccess::DeviceAddress(const Target& target) {
    const std::int16_t base = CheckedInt16(std::int64_t{target.cluster} * 32);
    return CheckedInt16(std::int64_t{base} + target.device);
}

std::wstring ParameterAccess::ClusterOrDeviceDescription(std::int16_t device) {
    if (device == 0)
        return ReadText(std::wstring(L"/Cluster/Descr"));
    // The description belongs to that device's own record, whichever is current.
    Target& current = state_.current;
    const platform::Restoring restore([&current, before = current.device] { current.device = before; });
    current.device = device;
    return ReadText(std::wstring(L"/Cluster/Device/Descr"));
}

std::wstring ParameterAccess::ByteToDisplayText(std::uint8_t byte, bool brackets, bool nameSpace) {
    const std::wstring name = byte > 127 ? L"$" + state_.Support().HexByte(byte) : text::ByteName(byte, nameSpace);
    if (name.empty())
        return {static_cast<wchar_t>(byte)};
    return brackets ? L"<" + name + L">" : name;
}

std::wstring ParameterAccess::BytesToDisplayText(const Value& value, BytesForm form) {
    if (const auto* text = std::get_if<std::wstring>(&value))
        return BytesToDisplayText(StringToBytes(*text), form);
    const auto* bytes = std::get_if<Bytes>(&value);
    if (bytes == nullptr)
        return L"????";
    std::wstring result;
    for (const std::uint8_t byte : *bytes) {
        if (form == BytesForm::Display) {
            result += ByteToDisplayText(byte, true, true);
            continue;
        }
        if (!result.empty())
            result += L' ';
        const std::wstring digits = state_.Support().HexByte(byte);
        result += digits.size() < 2 ? L"0" + digits : digits;
    }
    return result;
}

Bytes ParameterAccess::HexTextToBytes(const std::wstring& digits) {
    return text::FromHex(digits);
}

Description ParameterAccess::Describe(std::int32_t number, bool& present, std::optional<std::int32_t> accessLevel) {
    const auto configuration = state_.configuration;
    const std::int32_t remembered = accessLevel ? Required(configuration).AccessLevel() : 0;
    if (accessLevel)
        configuration->SetAccessLevel(*accessLevel);
    const platform::Restoring restore([&] {
        if (accessLevel)
            configuration->SetAccessLevel(remembered);
    });
    const auto table = Table(state_.current);
    const EntryHandle entry = Resolve(*table, number, accessLevel.value_or(state_.current.accessLevel));
    present = entry != 0;
    return present ? table->Describe(entry) : Description{};
}

std::int32_t ParameterAccess::ElementCount(std::int32_t number, std::optional<std::int32_t> accessLevel) {
    bool present = false;
    const Description description = Describe(number, present, accessLevel);
    return present ? description.elementCount : 0;
}

std::wstring ParameterAccess::ValueLabel(std::int32_t number, std::int32_t value,
                                         std::optional<std::int32_t> accessLevel) {
    bool present = false;
    const Description description = Describe(number, present, accessLevel);
    for (const Choice& choice : description.choices)
        if (choice.value == value)
            return choice.label;
    return {};
}

ControlSetup ParameterAccess::SetupFor(std::int32_t number) {
    ControlSetup setup;
    setup.description = Describe(number, setup.present);
    return setup;
}

std::wstring ParameterAccess::EntryName(std::int32_t number, std::int16_t element, const Target& target) {
    const auto table = Table(target);
    const EntryHandle entry = Resolve(*table, number, target.accessLevel);
    return entry != 0 ? table->EntryName(entry, element, target.accessLevel) : std::wstring();
}

} // namespace orv::device
