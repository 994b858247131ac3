#include "host/app/orvhost/transcript.h"

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

} // namespace

void Transcript::Line(std::wstring_view line) {
    // Own line breaks come from boxes; what else controls a terminal came from outside.
    std::wstring flat;
    for (const wchar_t c : line) {
        if (c == L'\n')
            flat += L" / ";
        else if (c != L'\r')
            flat += c;
    }
    Write(STD_OUTPUT_HANDLE, sim::ToUtf8(text::Printable(flat)) + "\n");
}

void Transcript::Complain(std::string_view utf8) {
    Write(STD_ERROR_HANDLE, std::string(utf8) + "\n");
}

void Transcript::Print(std::string_view utf8) {
    Write(STD_OUTPUT_HANDLE, utf8);
}

} // namespace orv::host
