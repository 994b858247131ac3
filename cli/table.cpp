#include "cli/table.h"

#include <algorithm>
#include <ostream>

#include "host/sim/utf8.h"
#include "text/excerpt.h"

namespace orv::cli {
namespace {

/// One long value must not push everything behind it off the screen in every other row.
constexpr std::size_t kWidest = 48;

} // namespace

void Table::Add(std::vector<std::wstring> row) {
    for (std::wstring& cell : row)
        cell = text::Printable(cell);
    rows_.push_back(std::move(row));
}

void Table::Print(std::ostream& out, std::string_view indent) const {
    std::vector<std::size_t> widths(alignment_.size());
    for (const auto& row : rows_)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], std::min(row[i].size(), kWidest));
    for (const auto& row : rows_) {
        std::wstring line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::wstring padding(widths[i] - std::min(widths[i], row[i].size()), L' ');
            line += (i == 0 ? L"" : L"  ") + (alignment_[i] == 'r' ? padding + row[i] : row[i] + padding);
        }
        line.erase(line.find_last_not_of(L' ') + 1);
        out << indent << sim::ToUtf8(line) << '\n';
    }
}

} // namespace orv::cli
