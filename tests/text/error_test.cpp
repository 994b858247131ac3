// The texts of the product's own errors.
#include <gtest/gtest.h>

#include <set>

#include "text/error.h"

namespace orv {
namespace {

TEST(ErrorTexts, EveryNumberHasItsOwnAndAnyOtherIsUnexpected) {
    std::set<std::wstring> texts;
    const std::int32_t numbers[] = {error_number::kInvalidArgument, error_number::kOverflow,
                                    error_number::kOutOfMemory,     error_number::kSubscript,
                                    error_number::kTypeMismatch,    error_number::kFileAccess,
                                    error_number::kObjectNotSet,    error_number::kPropertyArrayIndex};
    for (const std::int32_t number : numbers) {
        const Error error(number);
        EXPECT_EQ(error.Number(), number);
        EXPECT_FALSE(error.Description().empty()) << number;
        EXPECT_TRUE(texts.insert(error.Description()).second) << number << " has the text of another";
    }
    EXPECT_EQ(Error(4711).Description(), Error(-1).Description());
    EXPECT_TRUE(texts.insert(Error(4711).Description()).second) << "unexpected is none of them";
}

TEST(ErrorTexts, TheNarrowFormNamesTheNumberAndLosesNoLine) {
    EXPECT_STREQ(Error(13, L"no \x4E00 number").what(), "error 13: no ? number");
}

} // namespace
} // namespace orv
