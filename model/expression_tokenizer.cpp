#include "model/expression_tokenizer.h"

namespace orv::model {
namespace {

constexpr TokenKind KindOfCharacter(wchar_t c) {
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

} // namespace

std::wstring_view ExpressionTokenizer::Next() {
    const std::size_t begin = position_;
    if (begin == text_.size())
        return {};
    ++position_;
    if (KindOfCharacter(text_[begin]) == TokenKind::Operand)
        while (position_ < text_.size() && KindOfCharacter(text_[position_]) == TokenKind::Operand)
            ++position_;
    return text_.substr(begin, position_ - begin);
}

TokenKind ExpressionTokenizer::KindOf(std::wstring_view token) {
    return token.empty() ? TokenKind::End : KindOfCharacter(token.front());
}

} // namespace orv::model
