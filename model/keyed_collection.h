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
  public:
    struct Slot {
        std::wstring key;
        std::unique_ptr<Member> member;
    };

  private:
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
        BuildIndex();
        const auto found = index_.find(key);
        return found == index_.end() ? nullptr : found->second;
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
        if (key.empty() || (at == slots_.end() && IsBehindAll(key))) {
            slots_.insert(at, Slot{std::move(key), std::move(member)});
            return added;
        }
        BuildIndex();
        const auto [entry, isNew] = index_.emplace(key, &added);
        if (!isNew)
            throw Error(error_number::kInvalidArgument);
        try {
            slots_.insert(at, Slot{std::move(key), std::move(member)});
        } catch (...) {
            index_.erase(entry);
            throw;
        }
        return added;
    }
    Member& Append(std::unique_ptr<Member> member, std::wstring key = {}) {
        return Insert(Count() + 1, std::move(member), std::move(key));
    }
    void Reserve(std::int32_t count) { slots_.reserve(static_cast<std::size_t>(count)); }

    /// The caller owns what it takes out.
    std::unique_ptr<Member> Take(std::int32_t position) {
        const auto at = slots_.begin() + static_cast<std::ptrdiff_t>(Offset(position));
        auto member = std::move(at->member);
        if (isIndexed_ && !at->key.empty())
            index_.erase(at->key);
        slots_.erase(at);
        return member;
    }
    std::unique_ptr<Member> Take(const std::wstring& key) { return Take(PositionOf(key)); }
    /// All of them with their keys, to be used up from the end. What was in `spare` goes, its room is used next.
    void TakeAll(std::vector<Slot>& spare) {
        spare.clear();
        slots_.swap(spare);
        Clear();
    }
    void Clear() {
        slots_.clear();
        index_.clear();
        isIndexed_ = false;
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

    /// Without an index the keys stand in growing order: by length, then by character, as numbered ones do. So a load,
    /// which numbers what it reads, never pays for an index.
    bool IsBehindAll(const std::wstring& key) const {
        if (isIndexed_ || slots_.empty())
            return !isIndexed_;
        const std::wstring& last = slots_.back().key;
        return !last.empty() && (last.size() == key.size() ? last < key : last.size() < key.size());
    }
    void BuildIndex() const {
        if (isIndexed_)
            return;
        std::unordered_map<std::wstring, Member*> index(slots_.size());
        for (const Slot& slot : slots_)
            if (!slot.key.empty())
                index.emplace(slot.key, slot.member.get());
        index_ = std::move(index);
        isIndexed_ = true;
    }

    std::vector<Slot> slots_;
    mutable std::unordered_map<std::wstring, Member*> index_; ///< made when first needed
    mutable bool isIndexed_ = false;
};

} // namespace orv::model
