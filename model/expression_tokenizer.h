#pragma once
// Splits a combination expression into tokens.
#include <string_view>

namespace orv::model {

enum class TokenKind { Operand, And, Choice, Open, Close, End };

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
    static constexpr TokenKind KindOf(wchar_t c) {
        switch (c) {
        case L'&':
            return TokenKind::And;
        case L'|':
        case L'^':
            return TokenKind::Choice;
        case L'[':
            return TokenKind::Open;
        case L']':
            return TokenKind::Close;
        default:
            return TokenKind::Operand;
        }
    }

    std::wstring_view text_;
    std::size_t position_ = 0;
};

} // namespace orv::model
