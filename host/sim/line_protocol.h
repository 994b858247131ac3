#pragma once
// Lines of the device's protocol (docs/device-protocol.md): a verb and escaped fields, joined by single spaces.
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orv::sim {

/// Longest line in bytes, without its line break.
inline constexpr std::size_t kMaximumLine = 65536;

struct ProtocolLine {
    std::string verb;
    std::vector<std::wstring> fields;
};

/// With a line break at the end.
std::string FormatLine(std::string_view verb, std::initializer_list<std::wstring_view> fields);

/// `line` without its line break. Nothing when it is empty, not UTF-8 or holds a wrong escape or a control
/// character as it is.
std::optional<ProtocolLine> ParseLine(std::string_view line);

/// Cuts a stream of bytes into lines; what is longer than kMaximumLine is reported once and skipped.
class LineSplitter {
  public:
    struct Line {
        std::string text; ///< without its line break
        bool oversized = false;
    };
    std::vector<Line> Feed(std::string_view bytes);

  private:
    std::string partial_;
    bool skipping_ = false;
};

} // namespace orv::sim
