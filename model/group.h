#pragma once
// Codes that belong together in the combination expression.
#include <cstdint>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/field.h"

namespace orv::model {

/// How the codes of a group are joined; any other number is not yet decided, and printed as "?".
inline constexpr std::int32_t kJoinedByOr = -1;
inline constexpr std::int32_t kJoinedByXor = 0;
inline constexpr std::int32_t kJoinUndecided = -2;

class Group : public Marked {
  public:
    /// The list of codes lives in `memory`, which must outlive the group.
    explicit Group(std::int16_t index, std::pmr::memory_resource* memory = std::pmr::get_default_resource())
        : index_(index), codes_(memory) {
        Multiple(kJoinUndecided);
    }

    std::int16_t Index() const { return index_; } ///< 1-based position, kept by the collection
    Property<bool> IsOptional;
    Property<std::int32_t> Multiple;
    Property<std::wstring> NoReadString;
    Property<std::wstring> MultipleReadString;

    /// References to codes, in order: the operands of the expression as they stand.
    const std::pmr::vector<std::wstring>& Codes() const { return codes_; }
    void AddCode(std::wstring reference) { codes_.push_back(std::move(reference)); }
    /// All of them at once.
    void SetCodes(std::span<const std::wstring_view> references) {
        codes_.assign(references.begin(), references.end());
    }
    void ClearCodes() { codes_.clear(); }
    /// Its two strings as those of `other`, read or not.
    void TakeStrings(const Group& other) {
        NoReadString = other.NoReadString;
        MultipleReadString = other.MultipleReadString;
        OwnMarks() = other.Marks();
    }

    /// Appends the group to `text`: device form ("[1|2]"), or the readable form ("[1 OR 2]") when `display`.
    /// True when anything was appended.
    bool AppendTo(std::wstring& text, bool display) const;
    std::wstring Text(bool display) const;

    /// Its two strings; the expression carries the rest.
    static std::span<const Field<Group>> Fields();

  private:
    friend class Groups;

    std::int16_t index_;
    std::pmr::vector<std::wstring> codes_;
};

} // namespace orv::model
