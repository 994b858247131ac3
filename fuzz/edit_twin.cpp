#include "fuzz/edit_twin.h"

#include "fuzz/fuzz.h"

namespace orv::fuzz {

std::size_t Width(std::span<const Token> tokens) {
    std::size_t width = 0;
    for (const Token& token : tokens)
        width += token.Shown().size();
    return width;
}

void Versions::Begin(const Tokens& tokens) {
    versions_ = {{tokens, Kind::Alone}};
    at_ = 0;
    left_.clear();
}

void Versions::Add(const Tokens& tokens, Kind kind) {
    versions_.resize(at_ + 1);
    versions_.push_back({tokens, kind});
    ++at_;
    left_.clear();
}

void Versions::Back(const Tokens& tokens) {
    Require(at_ > 0, "there is something to take back");
    left_.push_back(at_);
    const Kind kind = versions_[at_].kind;
    for (--at_; versions_[at_].tokens != tokens; --at_)
        Require(at_ > 0 && versions_[at_].kind == kind && kind != Kind::Alone, "a step back leads to what was there");
}

void Versions::Forth(const Tokens& tokens) {
    Require(!left_.empty(), "there is something to do again");
    at_ = left_.back();
    left_.pop_back();
    Require(versions_[at_].tokens == tokens, "a step forth leads to where the step back began");
}

std::wstring Twin::Text() const {
    std::wstring text;
    for (const Token& token : tokens)
        text += token.Shown();
    return text;
}

Bytes Twin::Data(std::size_t from, std::size_t to) const {
    Bytes data;
    for (std::size_t i = from; i < to; ++i)
        data.push_back(tokens[i].byte);
    return data;
}

std::size_t Twin::Below(std::size_t offset) const {
    std::size_t index = 0;
    for (std::size_t end = 0; index < tokens.size(); ++index)
        if ((end += tokens[index].Shown().size()) > offset)
            break;
    return index;
}

std::size_t Twin::Above(std::size_t offset) const {
    const std::size_t below = Below(offset);
    return Offset(below) >= offset ? below : below + 1;
}

void Twin::Erase() {
    const auto at = [this](std::size_t index) { return tokens.begin() + static_cast<std::ptrdiff_t>(index); };
    tokens.erase(at(Low()), at(High()));
    Put(Low(), Low());
}

void Twin::Insert(std::span<const Token> added) {
    Erase();
    for (const Token& token : added) {
        if (limit != 0 && Width(tokens) + token.Shown().size() > limit)
            return;
        tokens.insert(tokens.begin() + static_cast<std::ptrdiff_t>(caret), token);
        Put(caret + 1, caret + 1);
    }
}

void Twin::Insert(const Bytes& bytes) {
    Tokens added;
    for (const std::uint8_t byte : bytes)
        added.push_back({byte, false});
    if (!added.empty())
        Insert(std::span<const Token>(added));
}

} // namespace orv::fuzz
