#include "model/groups.h"

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
constexpr State kNext[7][6] = {
    //                  operand         &               | ^             [              ]               end
    /*kError*/ {kError, kError, kError, kError, kError, kError},
    /*kGroupExpected*/ {kGroupComplete, kError, kError, kCodeExpected, kError, kError},
    /*kGroupComplete*/ {kError, kGroupExpected, kChoiceOutside, kError, kError, kAccepted},
    /*kChoiceOutside*/ {kGroupComplete, kError, kError, kError, kError, kError},
    /*kCodeExpected*/ {kCodeInside, kError, kError, kError, kError, kError},
    /*kCodeInside*/ {kError, kError, kCodeExpected, kError, kGroupComplete, kError},
    /*kAccepted*/ {kAccepted, kAccepted, kAccepted, kAccepted, kAccepted, kAccepted},
};

std::wstring_view Trimmed(std::wstring_view text) {
    const auto first = text.find_first_not_of(L' ');
    return first == std::wstring_view::npos ? std::wstring_view()
                                            : text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

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
    Parser(Groups& groups, std::wstring_view text) : groups_(groups), tokens_(text) {}

    bool Run() {
        std::wstring_view token = tokens_.Next();
        TokenKind kind = ExpressionTokenizer::KindOf(token);
        if (kind != TokenKind::Operand && kind != TokenKind::Open)
            return false;
        group_ = &groups_.Add();
        State state = kGroupExpected;
        for (;;) {
            state = Enter(kNext[state][static_cast<int>(kind)], token, kind);
            if (state == kError || state == kAccepted)
                return state == kAccepted;
            // A blank between two tokens counts for nothing; one at the very beginning is an operand. That is meant.
            do
                token = tokens_.Next();
            while (token == L" ");
            kind = ExpressionTokenizer::KindOf(token);
        }
    }

  private:
    /// Does what entering a state asks for; kError when that is not possible.
    State Enter(State state, std::wstring_view token, TokenKind kind) {
        switch (state) {
        case kGroupExpected:
            Decide();
            group_ = &groups_.Add();
            break;
        case kGroupComplete:
        case kCodeInside:
            if (kind == TokenKind::Operand)
                group_->AddCode(std::wstring(Trimmed(token)));
            break;
        case kChoiceOutside:
            // An optional group ends with its bracket.
            return !group_->IsOptional() && Join(token) ? state : kError;
        case kCodeExpected:
            group_->IsOptional(true);
            return kind == TokenKind::Open || Join(token) ? state : kError;
        case kAccepted:
            Decide();
            break;
        case kError:
            break;
        }
        return state;
    }

    /// One group never mixes OR and XOR.
    bool Join(std::wstring_view token) {
        const std::int32_t join = token == L"|" ? kJoinedByOr : kJoinedByXor;
        if (group_->Multiple() == (join == kJoinedByOr ? kJoinedByXor : kJoinedByOr))
            return false;
        group_->Multiple(join);
        return true;
    }

    /// A group of one code counts as joined by XOR.
    void Decide() {
        if (group_->Multiple() != kJoinedByOr)
            group_->Multiple(kJoinedByXor);
    }

    Groups& groups_;
    ExpressionTokenizer tokens_;
    Group* group_ = nullptr;
};

} // namespace

bool Groups::ParseExpression(std::wstring_view expression) {
    Clear();
    if (!BracketsLookRight(expression))
        return false;
    if (Trimmed(expression).empty())
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

Group& Groups::Add(const std::wstring& key) {
    return groups_.Append(std::make_unique<Group>(device::CheckedInt16(std::int64_t{Count()} + 1)), key);
}

void Groups::Remove(std::int32_t position) {
    groups_.Take(position);
    std::int16_t index = 0;
    for (Group& group : groups_)
        group.index_ = ++index;
}

} // namespace orv::model
