#include "host/app/orvhost/box_watch.h"

#include <gtest/gtest.h>

namespace orv::host {
namespace {

BoxWatch* watch = nullptr;

void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD) {
    if (watch != nullptr && watch->Look())
        watch->AnswerAll();
}

struct BoxWatchTest : testing::Test {
    BoxWatch boxes;
    std::vector<std::wstring> said;
    std::vector<std::string> failures;
    UINT_PTR timer = SetTimer(nullptr, 0, 30, &Look);

    BoxWatchTest() {
        watch = &boxes;
        boxes.say = [this](const std::wstring& line) { said.push_back(line); };
        boxes.fail = [this](const std::string& reason) { failures.push_back(reason); };
    }
    ~BoxWatchTest() override {
        KillTimer(nullptr, timer);
        watch = nullptr;
    }
};

TEST_F(BoxWatchTest, AnswersAsExpectedInTheirOrder) {
    boxes.Expect({1, L"anyway", BoxAnswer::Yes});
    boxes.Expect({2, L"anyway", BoxAnswer::No});
    boxes.Expect({3, L"Done", BoxAnswer::Ok});
    EXPECT_EQ(MessageBoxW(nullptr, L"Wrong.\nSave anyway?", L"Warning", MB_YESNO | MB_DEFBUTTON2), IDYES);
    EXPECT_EQ(MessageBoxW(nullptr, L"Save anyway?", L"Warning", MB_YESNO), IDNO);
    EXPECT_EQ(MessageBoxW(nullptr, L"Done", L"", MB_OK), IDOK);
    EXPECT_FALSE(boxes.ExpectationsLeft());
    EXPECT_TRUE(failures.empty());
    ASSERT_EQ(said.size(), 6u);
    EXPECT_EQ(said[0], L"box: [Warning] Wrong.\nSave anyway?");
    EXPECT_EQ(said[3], L"answer: no");
}

TEST_F(BoxWatchTest, AnUnexpectedBoxIsAFailureAndTheExpectationStays) {
    boxes.Expect({1, L"something else", BoxAnswer::Yes});
    EXPECT_EQ(MessageBoxW(nullptr, L"Delete all?", L"Warning", MB_YESNO), IDNO);
    ASSERT_EQ(failures.size(), 1u);
    EXPECT_NE(failures[0].find("Delete all?"), std::string::npos);
    EXPECT_TRUE(boxes.ExpectationsLeft());
}

} // namespace
} // namespace orv::host
