#include "host/sim/line_protocol.h"

#include <algorithm>

#include "host/sim/utf8.h"
#include "text/bytes.h"
#include "text/error.h"

namespace orv::sim {
namespace {

bool IsControl(wchar_t c) {
    return static_cast<char32_t>(c) < U' ' || c == 0x7F;
}

void AppendEscaped(std::string& line, wchar_t c) {
    switch (c) {
    case L'\\':
        line += "\\\\";
        return;
    case L' ':
        line += "\\s";
        return;
    case L'\n':
        line += "\\n";
        return;
    case L'\r':
        line += "\\r";
        return;
    case L'\t':
        line += "\\t";
        return;
    default:
        line += "\\x" + ToUtf8(text::Hex2(static_cast<std::uint8_t>(c)));
    }
}

bool NeedsEscape(wchar_t c) {
    return IsControl(c) || c == L' ' || c == L'\\';
}

std::string Escape(std::wstring_view field) {
    if (field.empty())
        return "\\e";
    std::string line;
    std::size_t plain = 0;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (!NeedsEscape(field[i]))
            continue;
        line += ToUtf8(field.substr(plain, i - plain));
        AppendEscaped(line, field[i]);
        plain = i + 1;
    }
    return line + ToUtf8(field.substr(plain));
}

/// Reads the escape behind a backslash at `at`, moved to its last character. False for an unknown one.
bool Unescape(std::wstring_view field, std::size_t& at, std::wstring& out) {
    if (++at >= field.size())
        return false;
    switch (field[at]) {
    case L'\\':
        out += L'\\';
        return true;
    case L's':
        out += L' ';
        return true;
    case L'n':
        out += L'\n';
        return true;
    case L'r':
        out += L'\r';
        return true;
    case L't':
        out += L'\t';
        return true;
    case L'x':
        break;
    default:
        return false;
    }
    if (at + 2 >= field.size())
        return false;
    try {
        out += static_cast<wchar_t>(text::FromHex(field.substr(at + 1, 2)).at(0));
    } catch (const Error&) {
        return false;
    }
    at += 2;
    return true;
}

std::optional<std::wstring> ReadField(std::string_view field) {
    if (field == "\\e")
        return std::wstring();
    const std::wstring wide = FromUtf8(field);
    std::wstring out;
    for (std::size_t i = 0; i < wide.size(); ++i) {
        if (IsControl(wide[i])) // would have come escaped
            return {};
        if (wide[i] != L'\\')
            out += wide[i];
        else if (!Unescape(wide, i, out))
            return {};
    }
    return out;
}

} // namespace

std::string FormatLine(std::string_view verb, std::initializer_list<std::wstring_view> fields) {
    std::string line(verb);
    for (const std::wstring_view field : fields)
        line += " " + Escape(field);
    return line + "\n";
}

std::optional<ProtocolLine> ParseLine(std::string_view line) {
    if (!IsUtf8(line))
        return {};
    ProtocolLine parsed;
    bool first = true;
    while (true) {
        const std::size_t space = line.find(' ');
        const std::string_view part = line.substr(0, space);
        if (part.empty())
            return {};
        if (first) {
            if (std::any_of(part.begin(), part.end(), [](char c) { return IsControl(static_cast<unsigned char>(c)); }))
                return {};
            parsed.verb = part;
        } else if (auto field = ReadField(part)) {
            parsed.fields.push_back(std::move(*field));
        } else {
            return {};
        }
        first = false;
        if (space == std::string_view::npos)
            return parsed;
        line.remove_prefix(space + 1);
    }
}

std::vector<LineSplitter::Line> LineSplitter::Feed(std::string_view bytes) {
    std::vector<Line> lines;
    while (!bytes.empty()) {
        const std::size_t end = bytes.find('\n');
        const std::string_view piece = bytes.substr(0, end);
        if (!skipping_ && partial_.size() + piece.size() > kMaximumLine) {
            lines.push_back({{}, true});
            partial_.clear();
            skipping_ = true;
        }
        if (!skipping_)
            partial_ += piece;
        if (end == std::string_view::npos)
            break;
        if (!skipping_) {
            if (!partial_.empty() && partial_.back() == '\r')
                partial_.pop_back();
            lines.push_back({std::move(partial_), false});
        }
        partial_.clear();
        skipping_ = false;
        bytes.remove_prefix(end + 1);
    }
    return lines;
}

} // namespace orv::sim
