#pragma once
// Rows of cells in columns.
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace orv::cli {

class Table {
  public:
    /// `alignment` has a letter a column: "l" or "r".
    explicit Table(std::string_view alignment) : alignment_(alignment) {}

    /// One cell a column; cells at the end may be left out. What a terminal would act upon stands there by name.
    void Add(std::vector<std::wstring> row);
    bool Empty() const { return rows_.empty(); }

    /// As UTF-8, columns two blanks apart, each line behind `indent`; no blanks at the ends of lines.
    void Print(std::ostream& out, std::string_view indent = {}) const;

  private:
    std::string alignment_;
    std::vector<std::vector<std::wstring>> rows_;
};

} // namespace orv::cli
