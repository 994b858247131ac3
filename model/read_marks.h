#pragma once
// Which values of an object were never read, and why. A save leaves them out until the user puts values of his own
// there: what nobody saw is not written over.
#include <cstdint>
#include <exception>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "device/value.h"
#include "text/excerpt.h"

namespace orv::model {

/// A value is a cell: the row of the class's table, and for seven switches in one row (always the last) the rows that
/// would follow. Settings of a class without a row number theirs behind the table. At most 32.
class ReadMarks {
  public:
    bool Any() const { return unread_ != 0; }
    bool Has(int cell) const { return (unread_ & Bit(cell)) != 0; }

    /// Before cells are read that may never be asked for, because one before them fails.
    void SetAll(int cells) {
        unread_ = cells < 32 ? Bit(cells) - 1 : ~std::uint32_t{0};
        asked_ = 0;
        failures_.clear();
    }
    void Ask(int cell) {
        unread_ |= Bit(cell);
        asked_ |= Bit(cell);
        Forget(cell);
    }
    /// The read raised, or its answer could not be converted.
    void Fail(int cell, const Error& error) noexcept {
        unread_ |= Bit(cell);
        try {
            Forget(cell);
            failures_.emplace_back(cell, text::Excerpt(error.Description()));
        } catch (const std::exception&) { // the reason is lost for want of memory, the mark is not
        }
    }
    /// A value was read, or the user put one there.
    void Clear(int cell) {
        unread_ &= ~Bit(cell);
        Forget(cell);
    }

    /// False for a cell that was never asked for.
    bool Asked(int cell) const { return (asked_ & Bit(cell)) != 0; }
    /// An excerpt of the failure's description; empty where there was none, but no value either.
    std::wstring Failure(int cell) const {
        for (const auto& [failed, description] : failures_)
            if (failed == cell)
                return description;
        return {};
    }

  private:
    static constexpr std::uint32_t Bit(int cell) { return std::uint32_t{1} << cell; }
    void Forget(int cell) {
        std::erase_if(failures_, [cell](const auto& failure) { return failure.first == cell; });
    }

    std::uint32_t unread_ = 0;
    std::uint32_t asked_ = 0;
    std::vector<std::pair<int, std::wstring>> failures_;
};

/// Part of every class that has a table.
class Marked {
  public:
    const ReadMarks& Marks() const { return marks_; }
    /// Every change of a value by the user comes through here.
    void Stored(int cell) { marks_.Clear(cell); }

    /// Reads one value: `take` gets the answer, Empty included. What fails flies and leaves the cell marked, as an
    /// answer without a value does.
    template <typename Read, typename Take>
    void ReadCell(int cell, const Read& read, const Take& take) {
        marks_.Ask(cell);
        try {
            device::Value value = read();
            const bool known = !std::holds_alternative<std::monostate>(value);
            take(std::move(value));
            if (known)
                marks_.Clear(cell);
        } catch (const Error& error) {
            marks_.Fail(cell, error);
            throw;
        }
    }
    /// The same for one whose failure is no reason to stop. False then.
    template <typename Read, typename Take>
    bool TryCell(int cell, const Read& read, const Take& take) {
        try {
            ReadCell(cell, read, take);
            return true;
        } catch (const Error&) {
            return false;
        }
    }

  protected:
    ReadMarks& OwnMarks() { return marks_; }

  private:
    ReadMarks marks_;
};

} // namespace orv::model
