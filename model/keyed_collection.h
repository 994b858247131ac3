#pragma once
// Ordered, 1-based, keyed collection that owns its members.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "text/error.h"

namespace orv::model {

/// An empty key is no key. Positions are 1..Count. Raises 5 (invalid argument) for a position or a key that does not
/// exist, and for a key that is taken.
template <typename Member>
class KeyedCollection {
  public:
    std::int32_t Count() const { return static_cast<std::int32_t>(slots_.size()); }

    Member& Item(std::int32_t position) { return *slots_[Offset(position)].member; }
    const Member& Item(std::int32_t position) const { return *slots_[Offset(position)].member; }
    Member& Item(const std::wstring& key) { return *slots_[Offset(PositionOf(key))].member; }

    /// 0 when no member has the key.
    std::int32_t PositionOf(const std::wstring& key) const {
        for (std::size_t i = 0; i < slots_.size(); ++i)
            if (!key.empty() && slots_[i].key == key)
                return static_cast<std::int32_t>(i) + 1;
        return 0;
    }

    /// Before the member at `position`; at the end when `position` is past it.
    Member& Insert(std::int32_t position, std::unique_ptr<Member> member, const std::wstring& key = {}) {
        if (PositionOf(key) != 0)
            throw Error(error_number::kInvalidArgument);
        const auto at =
            position > Count() ? slots_.end() : slots_.begin() + static_cast<std::ptrdiff_t>(Offset(position));
        return *slots_.insert(at, Slot{key, std::move(member)})->member;
    }
    Member& Append(std::unique_ptr<Member> member, const std::wstring& key = {}) {
        return Insert(Count() + 1, std::move(member), key);
    }

    /// The caller owns what it takes out.
    std::unique_ptr<Member> Take(std::int32_t position) {
        const auto at = slots_.begin() + static_cast<std::ptrdiff_t>(Offset(position));
        auto member = std::move(at->member);
        slots_.erase(at);
        return member;
    }
    void Clear() { slots_.clear(); }

  private:
    struct Slot {
        std::wstring key;
        std::unique_ptr<Member> member;
    };

    std::size_t Offset(std::int32_t position) const {
        if (position < 1 || position > Count())
            throw Error(error_number::kInvalidArgument);
        return static_cast<std::size_t>(position) - 1;
    }

    std::vector<Slot> slots_;
};

} // namespace orv::model
