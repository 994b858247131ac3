#include "model/groups.h"

#include <limits>
#include <vector>

#include "device/value.h"
#include "model/expression_tokenizer.h"
#include "text/restoring.h"
#include "text/texts.h"

namespace orv::model {
namespace {

/// States of the parser. What a state stands for is what was read last.
enum State : std::uint8_t {
    kError,
    kGroupExpected, ///< at the beginning, after "&"
    kGroupComplete, ///< after a code outside brackets, after "]"
    kChoiceOutside, ///< after "|" or "^" outside brackets
    kCodeExpected,  ///< after "[", after "|" or "^" inside brackets
    kCodeInside,    ///< after a code inside brackets
    kAccepted,
};

// Next state by state and kind of token.
// clang-format off
constexpr State kNext[7][6] = {
    //                  operand         &               | ^             [              ]               end
    /*kError*/         {kError,         kError,         kError,         kError,        kError,         kError},
    /*kGroupExpected*/ {kGroupComplete, kError,         kError,         kCodeExpected, kError,         kError},
    /*kGroupComplete*/ {kError,         kGroupExpected, kChoiceOutside, kError,        kError,         kAccepted},
    /*kChoiceOutside*/ {kGroupComplete, kError,         kError,         kError,        kError,         kError},
    /*kCodeExpected*/  {kCodeInside,    kError,         kError,         kError,        kError,         kError},
    /*kCodeInside*/    {kError,         kError,         kCodeExpected,  kError,        kGroupComplete, kError},
    /*kAccepted*/      {kAccepted,      kAccepted,      kAccepted,      kAccepted,     kAccepted,      kAccepted},
};
// clang-format on

constexpr std::size_t kMostGroups = std::numeric_limits<std::int16_t>::max();

/// Brackets do not nest. One left open passes here; the parser finds it.
bool BracketsLookRight(std::wstring_view text) {
    int depth = 0;
    for (const wchar_t c : text) {
        depth += c == L'[' ? 1 : c == L']' ? -1 : 0;
        if (depth < 0 || depth > 1)
            return false;
    }
    return true;
}

class Parser {
  public:
    Parser(Groups& groups, std::wstring_view text) : groups_(groups), tokens_(text) { codes_.reserve(16); }

    bool Run() {
        Token token = tokens_.Next();
        if (token.kind != TokenKind::Operand && token.kind != TokenKind::Open)
            return false;
        group_ = &groups_.Add();
        State state = kGroupExpected;
        for (;;) {
            state = Enter(kNext[state][static_cast<int>(token.kind)], token);
            if (state == kError || state == kAccepted)
                return state == kAccepted;
            // A blank between two tokens counts for nothing; one at the very beginning is an operand. That is meant.
            do
                token = tokens_.Next();
            while (token.text.size() == 1 && token.text.front() == L' ');
        }
    }

  private:
    using Token = ExpressionTokenizer::Token;

    /// Does what entering a state asks for; kError when that is not possible.
    State Enter(State state, const Token& token) {
        switch (state) {
        case kGroupExpected:
            Complete();
            group_ = &groups_.Add();
            break;
        case kGroupComplete:
        case kCodeInside:
            if (token.kind == TokenKind::Operand)
                AddCode(token.text);
            break;
        case kChoiceOutside:
            // An optional group ends with its bracket.
            return !group_->IsOptional() && Join(token) ? state : kError;
        case kCodeExpected:
            group_->IsOptional(true);
            return token.kind == TokenKind::Open || Join(token) ? state : kError;
        case kAccepted:
            Complete();
            break;
        case kError:
            break;
        }
        return state;
    }

    void AddCode(std::wstring_view text) {
        const wchar_t* begin = text.data();
        const wchar_t* end = begin + text.size();
        while (begin != end && *begin == L' ')
            ++begin;
        while (begin != end && end[-1] == L' ')
            --end;
        codes_.emplace_back(begin, static_cast<std::size_t>(end - begin));
    }

    /// One group never mixes OR and XOR.
    bool Join(const Token& token) {
        const std::int32_t join = token.text.front() == L'|' ? kJoinedByOr : kJoinedByXor;
        if (group_->Multiple() != kJoinUndecided && group_->Multiple() != join)
            return false;
        group_->Multiple(join);
        return true;
    }

    /// The group gets its codes; one of a single code counts as joined by XOR.
    void Complete() {
        if (group_->Multiple() != kJoinedByOr)
            group_->Multiple(kJoinedByXor);
        group_->SetCodes(codes_);
        codes_.clear();
    }

    Groups& groups_;
    ExpressionTokenizer tokens_;
    Group* group_ = nullptr;
    std::vector<std::wstring_view> codes_; ///< of the group that is read
};

} // namespace

bool Groups::ParseExpression(std::wstring_view expression) {
    Clear();
    // The parser refuses wrong brackets by itself; but it would raise for too many groups in front of them.
    if (expression.size() > kMostGroups && !BracketsLookRight(expression))
        return false;
    if (expression.find_first_not_of(L' ') == std::wstring_view::npos)
        return true;
    bool parsed = false;
    const Restoring clear([&] {
        if (!parsed)
            Clear();
    });
    parsed = Parser(*this, expression).Run();
    return parsed;
}

std::wstring Groups::GetExpression(bool display) const {
    const std::wstring joiner = display ? text::Load(text::Id::JoinAnd) : L"&";
    std::wstring text;
    text.reserve(groups_.size() * 12);
    for (const Group& group : groups_) {
        const std::size_t before = text.size();
        if (before > 0)
            text += joiner;
        if (display)
            text += L'(';
        if (!group.AppendTo(text, display))
            text.resize(before);
        else if (display)
            text += L')';
    }
    return text;
}

std::size_t Groups::Offset(std::int32_t position) const {
    if (position < 1 || position > Count())
        throw Error(error_number::kInvalidArgument);
    return static_cast<std::size_t>(position) - 1;
}

Group& Groups::Item(const std::wstring& key) {
    const auto found = keys_.find(key);
    if (found == keys_.end())
        throw Error(error_number::kInvalidArgument);
    return Item(found->second);
}

Group& Groups::Add(const std::wstring& key) {
    const std::int16_t index = device::CheckedInt16(std::int64_t{Count()} + 1);
    if (!key.empty() && keys_.contains(key))
        throw Error(error_number::kInvalidArgument);
    Group& added = groups_.emplace_back(index, &memory_);
    if (!key.empty())
        keys_.emplace(key, index);
    return added;
}

void Groups::Remove(std::int32_t position) {
    groups_.erase(groups_.begin() + static_cast<std::ptrdiff_t>(Offset(position)));
    std::erase_if(keys_, [position](const auto& key) { return key.second == position; });
    for (auto& key : keys_)
        key.second -= key.second > position ? 1 : 0;
    std::int16_t index = 0;
    for (Group& group : groups_)
        group.index_ = ++index;
}

void Groups::Clear() {
    groups_.clear();
    keys_.clear();
    memory_.release();
}

} // namespace orv::model
