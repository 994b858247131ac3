#include "model/format_export.h"

#include "device/parameter_access.h"

namespace orv::model {
namespace {

using device::BytesForm;

constexpr std::size_t kKeyLength = 24;
constexpr std::size_t kKeyColumns = 25;

/// Everything written here is a byte a character.
std::string Narrow(const std::wstring& text) {
    std::string narrow;
    for (const wchar_t c : text)
        narrow += static_cast<char>(static_cast<unsigned char>(c));
    return narrow;
}

std::string FormatName(std::int32_t format) {
    const bool known = format >= 0 && format < static_cast<std::int32_t>(std::size(kFormatNames));
    return known ? Narrow(kFormatNames[format]) : std::string();
}

std::string StringLine(const char* caption, const std::wstring& text, device::ParameterAccess& access) {
    const device::Value bytes = access.StringToBytes(text);
    return caption + Narrow(access.BytesToDisplayText(bytes, BytesForm::Display)) + " (" +
           Narrow(access.BytesToDisplayText(bytes, BytesForm::Hexadecimal)) + ")\r\n";
}

std::string ItemLine(const OutItem& item) {
    std::string key = Narrow(item.GetItemTypeKey()).substr(0, kKeyLength);
    key.resize(kKeyColumns, ' ');
    return '\t' + key + FormatName(item.FormatType()) + '\t' + std::to_string(item.FormatLength()) + "\r\n";
}

} // namespace

std::string FormatStructure(const OutFormatConfig& root, device::DeviceState& state) {
    device::ParameterAccess access(state);
    std::string text;
    for (const AdvancedFormat& format : root.AdvancedFormats()) {
        if (format.Transports() == 0)
            continue;
        text += "Format #" + std::to_string(format.Index()) + "\r\n" + std::string(44, '-') + "\r\n";
        text += StringLine("Header:     ", format.Header(), access);
        text += StringLine("Terminator: ", format.Terminator(), access);
        for (const OutItem& item : format.OutItems())
            text += ItemLine(item);
        text += "\r\n";
    }
    return text;
}

} // namespace orv::model
