// A string table in another language replaces every text at once, and only where that language is the user's.
#include "platform/win32/system.h"

#include <gtest/gtest.h>

#include "text/texts.h"

namespace orv::tests {
namespace {

#define ORV_WIDE_(text) L##text
#define ORV_WIDE(text) ORV_WIDE_(text)

constexpr struct {
    text::Id id;
    const wchar_t* english;
} kTexts[] = {
#define ORV_TEXT(name, number, english) {text::Id::name, ORV_WIDE(english)},
#include "text/texts.def"
#undef ORV_TEXT
};

constexpr LANGID kEnglish = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
constexpr LANGID kGerman = MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN);
constexpr LANGID kFrench = MAKELANGID(LANG_FRENCH, SUBLANG_FRENCH);

/// Texts are looked for in the language of the calling thread.
class Language {
  public:
    explicit Language(LANGID language) : locale_(GetThreadLocale()), language_(GetThreadUILanguage()) {
        SetThreadLocale(MAKELCID(language, SORT_DEFAULT));
        SetThreadUILanguage(language);
    }
    Language(const Language&) = delete;
    Language& operator=(const Language&) = delete;
    ~Language() {
        SetThreadUILanguage(language_);
        SetThreadLocale(locale_);
    }

  private:
    LCID locale_;
    LANGID language_;
};

TEST(Translation, EveryTextFollowsTheLanguageOfTheUser) {
    for (const auto& [language, translated] : {std::pair{kGerman, true}, {kEnglish, false}, {kFrench, false}}) {
        const Language of(language);
        for (const auto& text : kTexts) {
            const std::wstring mark = L"#" + std::to_wstring(static_cast<int>(text.id)) + L" ";
            EXPECT_EQ(text::Load(text.id), (translated ? mark : std::wstring()) + text.english) << language;
        }
    }
}

} // namespace
} // namespace orv::tests
