#pragma once
// The code groups of the combination expression, parsed from its device form and printed to it.
#include <cstdint>
#include <deque>
#include <map>
#include <memory_resource>
#include <string>
#include <string_view>

#include "model/group.h"

namespace orv::model {

/// Grammar of the device form: groups joined by "&"; a group is codes joined by all "|" (OR) or all "^" (XOR), and in
/// square brackets when it is optional. A code is any run of other characters, blanks around it cut off.
class Groups {
  public:
    Groups() = default;
    Groups(const Groups&) = delete;
    Groups& operator=(const Groups&) = delete;

    /// Replaces all groups by those of the expression. False on a syntax error; there are no groups then. Raises 6
    /// (overflow) past 32767 groups.
    bool ParseExpression(std::wstring_view expression);
    /// The device form, or the readable form: "(1 OR 2) AND ([3])".
    std::wstring GetExpression(bool display) const;

    std::int32_t Count() const { return static_cast<std::int32_t>(groups_.size()); }
    /// Raise 5 (invalid argument) for one that does not exist. Valid until a group is removed.
    Group& Item(std::int32_t position) { return groups_[Offset(position)]; }
    const Group& Item(std::int32_t position) const { return groups_[Offset(position)]; }
    Group& Item(const std::wstring& key);
    auto begin() { return groups_.begin(); }
    auto end() { return groups_.end(); }
    auto begin() const { return groups_.begin(); }
    auto end() const { return groups_.end(); }

    /// How many groups the device holds.
    std::int16_t MaxCount() const { return maxCount_; }
    void MaxCount(std::int16_t count) { maxCount_ = count; } ///< told by the load of the codes
    /// False for a group beyond those whose strings the device holds. One that holds none at all is not asked.
    bool HasPlace(const Group& group) const { return maxCount_ == 0 || group.Index() <= maxCount_; }

    /// Appends a group with empty strings; it has no key when `key` is empty. Raises 5 for a key that is taken.
    Group& Add(const std::wstring& key = {});
    /// Takes one out and numbers the rest 1..Count. Raises 5 for a position that does not exist.
    void Remove(std::int32_t position);
    void Clear();

  private:
    std::size_t Offset(std::int32_t position) const;

    /// Of the lists of codes; given back when all groups go. The first piece is one that allocators keep at hand.
    std::pmr::monotonic_buffer_resource memory_{896};
    std::deque<Group> groups_;                  ///< so that a group stays where it is while others are added
    std::map<std::wstring, std::int32_t> keys_; ///< positions of the few that have a key
    std::int16_t maxCount_ = 0;
};

} // namespace orv::model
