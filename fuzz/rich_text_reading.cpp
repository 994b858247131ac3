#include "fuzz/rich_text_reading.h"

#include <cstdlib>

#include "fuzz/fuzz.h"

namespace orv::fuzz {
namespace {

class Reader {
  public:
    explicit Reader(std::string_view text) : rest_(text) {}

    std::vector<RichCharacter> Read() {
        while (!rest_.empty()) {
            const char c = Take();
            if (c == '{')
                ++depth_;
            else if (c == '}')
                --depth_;
            else if (c == '\\')
                Escape();
            else
                Put(static_cast<wchar_t>(static_cast<unsigned char>(c)));
            Require(depth_ > 0 || rest_.empty(), "nothing stands behind the outermost group");
        }
        Require(depth_ == 0, "every group is closed");
        return std::move(out_);
    }

  private:
    char Take() {
        Require(!rest_.empty(), "an escape is complete");
        const char c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }
    /// Groups inside the outermost one are tables.
    void Put(wchar_t c) {
        Require(depth_ > 0, "text stands in a group");
        if (depth_ == 1)
            out_.push_back({c, colour_});
    }
    void Escape() {
        if (rest_.starts_with('\'')) {
            Require(rest_.size() >= 3, "a byte has two digits");
            Put(static_cast<wchar_t>(std::strtol(std::string(rest_.substr(1, 2)).c_str(), nullptr, 16)));
            rest_.remove_prefix(3);
        } else if (const std::string word = Letters(); word.empty()) {
            Put(static_cast<wchar_t>(Take()));
        } else {
            Obey(word, Digits());
        }
    }
    std::string Letters() {
        std::string letters;
        while (!rest_.empty() && rest_.front() >= 'a' && rest_.front() <= 'z')
            letters += Take();
        return letters;
    }
    /// With the one blank that ends a word.
    int Digits() {
        std::string digits;
        while (!rest_.empty() && (rest_.front() == '-' || (rest_.front() >= '0' && rest_.front() <= '9')))
            digits += Take();
        if (rest_.starts_with(' '))
            Take();
        return std::atoi(digits.c_str());
    }
    void Obey(const std::string& word, int number) {
        if (word == "par")
            Put(L'\r');
        else if (word == "cf")
            colour_ = number;
        else if (word == "u") {
            Put(static_cast<wchar_t>(static_cast<std::uint16_t>(number)));
            Require(Take() == '?', "a character of many bytes has one that stands in for it");
        }
    }

    std::string_view rest_;
    std::vector<RichCharacter> out_;
    int depth_ = 0;
    int colour_ = 0;
};

} // namespace

std::vector<RichCharacter> ReadRichText(std::string_view text) {
    return Reader(text).Read();
}

} // namespace orv::fuzz
