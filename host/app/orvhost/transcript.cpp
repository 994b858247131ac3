#include "host/app/orvhost/transcript.h"

#include <algorithm>
#include <string>

#include "host/app/orvhost/system.h"
#include "host/sim/utf8.h"
#include "text/excerpt.h"

namespace orv::host {
namespace {

void Write(DWORD stream, std::string_view bytes) {
    const HANDLE handle = GetStdHandle(stream);
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE)
        return;
    DWORD written = 0;
    // One call a line keeps lines of several threads whole.
    WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

/// The line breaks of `text` are the program's own: they stay, as `lineBreak`.
std::wstring PrintableLines(std::wstring_view text, std::wstring_view lineBreak) {
    std::wstring printable;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(L'\n'), text.size());
        std::wstring_view line = text.substr(0, end);
        if (line.ends_with(L'\r'))
            line.remove_suffix(1);
        printable += text::Printable(line);
        if (end < text.size())
            printable += lineBreak;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return printable;
}

} // namespace

void Transcript::Line(std::wstring_view line) {
    Write(STD_OUTPUT_HANDLE, sim::ToUtf8(PrintableLines(line, L" / ")) + "\n");
}

void Transcript::Complain(std::string_view utf8) {
    Write(STD_ERROR_HANDLE, sim::ToUtf8(PrintableLines(sim::FromUtf8(utf8), L"\n")) + "\n");
}

void Transcript::Print(std::string_view utf8) {
    Write(STD_OUTPUT_HANDLE, utf8);
}

} // namespace orv::host
