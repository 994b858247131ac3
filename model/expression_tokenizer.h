#pragma once
// Splits a combination expression into tokens.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orv::model {

enum class TokenKind : std::uint8_t { Operand, And, Choice, Open, Close, End };

/// "&", "|", "^", "[" and "]" are tokens by themselves; any run of other characters, blanks included, is one.
class ExpressionTokenizer {
  public:
    struct Token {
        std::wstring_view text; ///< empty when the text is used up
        TokenKind kind = TokenKind::End;
    };

    /// `text` must outlive the tokenizer and its tokens.
    explicit ExpressionTokenizer(std::wstring_view text) : text_(text) {}

    Token Next() {
        const std::size_t begin = position_;
        if (begin == text_.size())
            return {};
        const TokenKind kind = KindOf(text_[position_++]);
        if (kind == TokenKind::Operand)
            while (position_ < text_.size() && KindOf(text_[position_]) == TokenKind::Operand)
                ++position_;
        return {text_.substr(begin, position_ - begin), kind};
    }

  private:
    static constexpr auto kKinds = [] {
        std::array<TokenKind, 128> kinds{}; // operands
        kinds['&'] = TokenKind::And;
        kinds['|'] = kinds['^'] = TokenKind::Choice;
        kinds['['] = TokenKind::Open;
        kinds[']'] = TokenKind::Close;
        return kinds;
    }();

    static constexpr TokenKind KindOf(wchar_t c) {
        const auto at = static_cast<std::size_t>(c);
        return at < kKinds.size() ? kKinds[at] : TokenKind::Operand;
    }

    std::wstring_view text_;
    std::size_t position_ = 0;
};

} // namespace orv::model
