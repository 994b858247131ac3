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
    versions_.resize(Alike(at_).last + 1);
    at_ = versions_.size();
    versions_.push_back({tokens, kind});
    left_.clear();
}

Versions::Range Versions::Alike(std::size_t at) const {
    Range range{at, at};
    while (range.first > 0 && versions_[range.first - 1].tokens == versions_[at].tokens)
        --range.first;
    while (range.last + 1 < versions_.size() && versions_[range.last + 1].tokens == versions_[at].tokens)
        ++range.last;
    return range;
}

std::optional<std::size_t> Versions::Before(std::size_t from, const Tokens& tokens) const {
    const Kind kind = versions_[from].kind;
    for (std::size_t at = from; at-- > 0;) {
        if (versions_[at].tokens == tokens)
            return at;
        if (versions_[at].kind != kind || kind == Kind::Alone)
            break;
    }
    return std::nullopt;
}

void Versions::Back(const Tokens& tokens) {
    const Range range = Alike(at_);
    Require(range.last > 0, "there is something to take back");
    left_.push_back(at_);
    std::optional<std::size_t> before;
    for (std::size_t from = range.first; from <= range.last && !before; ++from)
        before = Before(from, tokens);
    Require(before.has_value(), "a step back leads to what was there");
    at_ = before.value_or(0);
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
        if (limit != 0 && !tokens.empty() && Width(tokens) + token.Shown().size() > limit)
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
