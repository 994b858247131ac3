#pragma once
// Splits a combination expression into tokens.
#include <string_view>

namespace orv::model {

enum class TokenKind { Operand, And, Choice, Open, Close, End };

/// "&", "|", "^", "[" and "]" are tokens by themselves; any run of other characters, blanks included, is one.
class ExpressionTokenizer {
  public:
    /// `text` must outlive the tokenizer and its tokens.
    explicit ExpressionTokenizer(std::wstring_view text) : text_(text) {}

    /// Empty when the text is used up.
    std::wstring_view Next();
    static TokenKind KindOf(std::wstring_view token);

  private:
    std::wstring_view text_;
    std::size_t position_ = 0;
};

} // namespace orv::model
