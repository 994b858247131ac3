#pragma once
// What the edit box displays: characters, and a shadow cell for each of them.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "text/bytes.h"

namespace orv::controls {

/// One a displayed character.
struct ShadowCell {
    std::uint8_t value = 0;       ///< byte that the token stands for
    std::int16_t tokenLength = 1; ///< displayed characters of the token
    bool operator==(const ShadowCell&) const = default;
};

/// Characters and cells, always of the same length. A line break is the one token whose character (Return) is not
/// what its byte shows as. What fails for want of memory changes nothing.
class TokenText {
  public:
    static constexpr wchar_t kLineBreak = L'\r';

    const std::wstring& Text() const { return text_; }
    const std::vector<ShadowCell>& Cells() const { return cells_; }
    std::size_t Size() const { return text_.size(); }

    /// Displayed characters of a byte.
    static std::size_t LengthOf(std::uint8_t byte);
    void Assign(std::span<const std::uint8_t> bytes);
    /// Room for that many characters; what needs no more cannot fail afterwards.
    void Reserve(std::size_t size);
    void AppendLineBreak();
    void Append(const TokenText& other) { Splice(Size(), 0, other); }

    /// The borders of the token that contains `position`; a border is its own. Positions up to Size().
    std::size_t Floor(std::size_t position) const;
    std::size_t Ceiling(std::size_t position) const;

    // Both ends of these parts are borders.
    Bytes Data(std::size_t at, std::size_t length) const;
    TokenText Part(std::size_t at, std::size_t length) const;
    void Splice(std::size_t at, std::size_t length, const TokenText& with);

    bool operator==(const TokenText&) const = default;

  private:
    std::wstring text_;
    std::vector<ShadowCell> cells_;
};

} // namespace orv::controls
