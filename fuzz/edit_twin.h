#pragma once
// What an edit box is held against: the same edits on tokens, with positions counted in tokens, and everything that was
// there before.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "text/bytes.h"

namespace orv::fuzz {

struct Token {
    std::uint8_t byte = 0;
    bool breaksLine = false;
    bool operator==(const Token&) const = default;
    std::wstring Shown() const { return breaksLine ? L"\r" : text::ByteToken(byte, true, true); }
};

using Tokens = std::vector<Token>;

/// Displayed characters.
std::size_t Width(std::span<const Token> tokens);

/// What can be taken back, as whole contents.
class Versions {
  public:
    enum class Kind { Alone, Typing, Backspace, Delete };

    void Begin(const Tokens& tokens);
    void Add(const Tokens& tokens, Kind kind);
    /// A step back leads to where edits of one kind began.
    void Back(const Tokens& tokens);
    void Forth(const Tokens& tokens);

  private:
    struct Version {
        Tokens tokens;
        Kind kind;
    };
    struct Range {
        std::size_t first = 0;
        std::size_t last = 0;
    };
    /// Neighbours that hold the same, as after typing over a selection what it holds: which of them an edit box stands
    /// at cannot be seen.
    Range Alike(std::size_t at) const;
    /// Whether a step back from `from` can end at `tokens`, and where.
    std::optional<std::size_t> Before(std::size_t from, const Tokens& tokens) const;

    std::vector<Version> versions_;
    std::vector<std::size_t> left_;
    std::size_t at_ = 0;
};

struct Twin {
    Tokens tokens;
    std::size_t caret = 0;
    std::size_t anchor = 0;
    std::size_t limit = 0; ///< displayed characters; 0 is none

    std::size_t Low() const { return caret < anchor ? caret : anchor; }
    std::size_t High() const { return caret < anchor ? anchor : caret; }
    std::size_t Offset(std::size_t index) const { return Width(std::span(tokens).first(index)); }
    std::wstring Text() const;
    Bytes Data(std::size_t from, std::size_t to) const;
    /// Tokens that end at or before an offset, and those that begin before it.
    std::size_t Below(std::size_t offset) const;
    std::size_t Above(std::size_t offset) const;

    void Put(std::size_t from, std::size_t to) {
        anchor = from;
        caret = to;
    }
    void Erase();
    /// In place of the selection, as many as fit; one always does where nothing else is left.
    void Insert(std::span<const Token> added);
    void Insert(const Bytes& bytes);
};

} // namespace orv::fuzz
