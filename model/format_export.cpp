#include "model/format_export.h"

#include <fstream>

#include "device/parameter_access.h"
#include "text/texts.h"

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

void WriteString(std::ostream& out, const char* caption, const std::wstring& text, device::ParameterAccess& access) {
    const device::Value bytes = access.StringToBytes(text);
    out << caption << Narrow(access.BytesToDisplayText(bytes, BytesForm::Display)) << " ("
        << Narrow(access.BytesToDisplayText(bytes, BytesForm::Hexadecimal)) << ")\r\n";
}

void WriteItem(std::ostream& out, const OutItem& item) {
    std::string key = Narrow(item.GetItemTypeKey()).substr(0, kKeyLength);
    key.resize(kKeyColumns, ' ');
    out << '\t' << key << FormatName(item.FormatType()) << '\t' << int{item.FormatLength()} << "\r\n";
}

/// As text, whatever the locale says of file names.
std::wstring Name(const std::filesystem::path& file) {
    if constexpr (sizeof(wchar_t) == sizeof(char16_t))
        return file.wstring();
    const std::u32string name = file.u32string();
    return {name.begin(), name.end()};
}

} // namespace

void WriteFormatStructure(const OutFormatConfig& root, device::DeviceState& state, std::ostream& out) {
    device::ParameterAccess access(state);
    for (const AdvancedFormat& format : root.AdvancedFormats()) {
        if (format.Transports() == 0)
            continue;
        out << "Format #" << format.Index() << "\r\n" << std::string(44, '-') << "\r\n";
        WriteString(out, "Header:     ", format.Header(), access);
        WriteString(out, "Terminator: ", format.Terminator(), access);
        for (const OutItem& item : format.OutItems())
            WriteItem(out, item);
        out << "\r\n";
    }
}

void ExportFormatStructure(const OutFormatConfig& root, device::DeviceState& state, const std::filesystem::path& file) {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    if (out)
        WriteFormatStructure(root, state, out);
    out.close();
    if (!out)
        throw Error(error_number::kFileAccess, text::Load(text::Id::ErrFileAccess) + L": " + Name(file));
}

} // namespace orv::model
