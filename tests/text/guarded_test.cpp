#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "platform/guarded.h"
#include "text/excerpt.h"

namespace orv::platform {
namespace {

class Boxes : public MessageBoxes {
  public:
    Answer Show(const MessageBox& box) override {
        if (noMemory)
            throw std::bad_alloc();
        shown.push_back(box);
        return Answer::Ok;
    }
    void ShowPlain(const wchar_t* text, const wchar_t* title) noexcept override {
        if (canShowPlain)
            plain.push_back({text, title});
        else
            Beep();
    }
    void Beep() override { ++beeps; }
    void Close() override {}
    std::vector<MessageBox> shown;
    std::vector<MessageBox> plain;
    bool canShowPlain = true;
    bool noMemory = false;
    int beeps = 0;
};

TEST(Guarded, NamesTheHandlerWithNumberAndDescription) {
    Boxes boxes;
    EXPECT_FALSE(Guarded(boxes, L"AddOnControl.cmdApply_Click", [] { throw Error(9); }));
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].text, L"AddOnControl.cmdApply_Click\n9: Subscript out of range");
    EXPECT_EQ(boxes.shown[0].title, L"Output Format Addon");
}

TEST(Guarded, ShowsAHostsDescriptionAsItIsUnlessItCouldSpoilTheBox) {
    Boxes boxes;
    const std::pair<std::wstring, std::wstring> cases[] = {
        {L"The \"host\" says <no> {twice}. \u00FC", L"The \"host\" says <no> {twice}. \u00FC"},
        {L"The host says no.\r\n", L"The host says no."},
        {L"no\n\nA.b\n0: saved", L"no<LF><LF>A.b<LF>0: saved"},
        {std::wstring(60000, L'x'), std::wstring(197, L'x') + L"..."},
    };
    for (const auto& [description, shown] : cases) {
        EXPECT_FALSE(Guarded(boxes, L"A.b", [&] { throw Error(-1, description); }));
        EXPECT_EQ(boxes.shown.back().text, L"A.b\n-1: " + shown);
    }
}

TEST(Guarded, KeepsQuietOfAbandonedWaitsAndSurvivesEverythingElse) {
    Boxes boxes;
    EXPECT_FALSE(Guarded(boxes, L"A.b", [] { throw WaitAbandoned{}; }));
    EXPECT_TRUE(boxes.shown.empty());
    EXPECT_FALSE(Guarded(boxes, L"A.b", [] { throw std::runtime_error("odd"); }));
    EXPECT_FALSE(Guarded(boxes, L"A.b", [] { throw 3; }));
    ASSERT_THAT(boxes.shown, testing::SizeIs(1));
    EXPECT_EQ(boxes.shown[0].text, L"A.b\n5: odd");
    EXPECT_EQ(boxes.beeps, 1);
    EXPECT_TRUE(boxes.plain.empty());
}

TEST(Guarded, SaysWithoutMemoryWhatItCan) {
    Boxes boxes;
    EXPECT_FALSE(Guarded(boxes, L"A.b", [] { throw std::bad_alloc(); }));
    boxes.noMemory = true;
    EXPECT_FALSE(Guarded(boxes, L"A.b", [] { throw Error(5); }));
    EXPECT_FALSE(Guarded(boxes, L"A.b", [] { throw Error(-1, L"\x1B" + std::wstring(5000, L'x')); }));
    EXPECT_TRUE(boxes.shown.empty());
    ASSERT_THAT(boxes.plain, testing::SizeIs(3));
    EXPECT_EQ(boxes.plain[0].text, L"A.b\n7: Out of memory");
    EXPECT_EQ(boxes.plain[0].title, L"Output Format Addon");
    EXPECT_EQ(boxes.plain[1].text, L"A.b\n" + std::to_wstring(5) + L": " + Error(5).Description());
    EXPECT_EQ(boxes.plain[2].text, L"A.b\n-1: <ESC>" + std::wstring(192, L'x') + L"...");
    boxes.canShowPlain = false;
    EXPECT_FALSE(Guarded(boxes, L"A.b", [] { throw Error(5); }));
    EXPECT_EQ(boxes.beeps, 1);
}

TEST(Restoring, RunsOnEveryWayOutAndNeverReplacesAnErrorInFlight) {
    int restored = 0;
    {
        const Restoring guard([&] { ++restored; });
    }
    EXPECT_THROW(
        {
            const Restoring guard([&] {
                ++restored;
                throw Error(6);
            });
        },
        Error);
    try {
        const Restoring guard([&] {
            ++restored;
            throw Error(6);
        });
        throw Error(9);
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), 9);
    }
    EXPECT_EQ(restored, 3);
}

} // namespace
} // namespace orv::platform
