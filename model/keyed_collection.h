#pragma once
// Ordered, 1-based, keyed collection that owns its members.
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "text/error.h"

namespace orv::model {

/// A key as collections number their members: "Item1".
inline std::wstring Numbered(std::wstring_view name, std::int32_t number) {
    char digits[12];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    std::wstring key;
    key.reserve(name.size() + static_cast<std::size_t>(end - digits));
    return key.append(name).append(std::begin(digits), end);
}

/// An empty key is no key. Positions are 1..Count. Raises 5 (invalid argument) for a position or a key that does not
/// exist, and for a key that is taken.
template <typename Member>
class KeyedCollection {
    struct Slot {
        const std::wstring* key; ///< of the index; null without one
        std::unique_ptr<Member> member;
    };

    template <typename Inner, typename Result>
    class Cursor {
      public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Member;
        using difference_type = std::ptrdiff_t;
        using pointer = Result*;
        using reference = Result&;

        Cursor() = default;
        explicit Cursor(Inner at) : at_(at) {}
        Result& operator*() const { return *at_->member; }
        Result* operator->() const { return at_->member.get(); }
        Cursor& operator++() {
            ++at_;
            return *this;
        }
        Cursor operator++(int) { return Cursor(at_++); }
        bool operator==(const Cursor&) const = default;

      private:
        Inner at_{};
    };

  public:
    std::int32_t Count() const { return static_cast<std::int32_t>(slots_.size()); }

    Member& Item(std::int32_t position) { return *slots_[Offset(position)].member; }
    const Member& Item(std::int32_t position) const { return *slots_[Offset(position)].member; }
    Member& Item(const std::wstring& key) { return Required(key); }
    const Member& Item(const std::wstring& key) const { return Required(key); }

    /// Null when no member has the key.
    Member* Find(const std::wstring& key) const {
        const auto found = keys_.find(key);
        return found == keys_.end() ? nullptr : found->second;
    }
    /// 0 when no member has the key.
    std::int32_t PositionOf(const std::wstring& key) const {
        const Member* member = Find(key);
        if (!member)
            return 0;
        const auto at = std::find_if(slots_.begin(), slots_.end(),
                                     [member](const Slot& slot) { return slot.member.get() == member; });
        return static_cast<std::int32_t>(at - slots_.begin()) + 1;
    }

    /// Members in order.
    auto begin() { return Cursor<typename std::vector<Slot>::iterator, Member>(slots_.begin()); }
    auto end() { return Cursor<typename std::vector<Slot>::iterator, Member>(slots_.end()); }
    auto begin() const { return Cursor<typename std::vector<Slot>::const_iterator, const Member>(slots_.begin()); }
    auto end() const { return Cursor<typename std::vector<Slot>::const_iterator, const Member>(slots_.end()); }

    /// Before the member at `position`; at the end when `position` is past it.
    Member& Insert(std::int32_t position, std::unique_ptr<Member> member, std::wstring key = {}) {
        Member& added = *member;
        const auto at =
            position > Count() ? slots_.end() : slots_.begin() + static_cast<std::ptrdiff_t>(Offset(position));
        const bool keyed = !key.empty();
        const auto [entry, isNew] = keyed ? keys_.emplace(std::move(key), &added) : std::pair(keys_.end(), true);
        if (!isNew)
            throw Error(error_number::kInvalidArgument);
        try {
            slots_.insert(at, Slot{keyed ? &entry->first : nullptr, std::move(member)});
        } catch (...) {
            if (keyed)
                keys_.erase(entry);
            throw;
        }
        return added;
    }
    Member& Append(std::unique_ptr<Member> member, std::wstring key = {}) {
        return Insert(Count() + 1, std::move(member), std::move(key));
    }
    void Reserve(std::int32_t count) {
        slots_.reserve(static_cast<std::size_t>(count));
        keys_.reserve(static_cast<std::size_t>(count));
    }

    /// The caller owns what it takes out.
    std::unique_ptr<Member> Take(std::int32_t position) {
        const auto at = slots_.begin() + static_cast<std::ptrdiff_t>(Offset(position));
        auto member = std::move(at->member);
        if (at->key)
            keys_.erase(*at->key);
        slots_.erase(at);
        return member;
    }
    std::unique_ptr<Member> Take(const std::wstring& key) { return Take(PositionOf(key)); }
    void Clear() {
        slots_.clear();
        keys_.clear();
    }

  private:
    std::size_t Offset(std::int32_t position) const {
        if (position < 1 || position > Count())
            throw Error(error_number::kInvalidArgument);
        return static_cast<std::size_t>(position) - 1;
    }
    Member& Required(const std::wstring& key) const {
        Member* member = Find(key);
        if (!member)
            throw Error(error_number::kInvalidArgument);
        return *member;
    }

    std::vector<Slot> slots_;
    std::unordered_map<std::wstring, Member*> keys_;
};

} // namespace orv::model
