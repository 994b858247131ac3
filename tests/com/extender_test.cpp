// The slave question: what becomes visible, who says so, and what the host is told.
#include "tests/com/running.h"

namespace orv::tests {
namespace {

constexpr ExtenderKind kKinds[] = {ExtenderKind::None, ExtenderKind::Applies, ExtenderKind::OnlyKeeps,
                                   ExtenderKind::Refuses};

class SlaveQuestion : public Running, public testing::WithParamInterface<ExtenderKind> {
  protected:
    bool Visible() const { return (GetWindowLongW(container->ControlWindow(), GWL_STYLE) & WS_VISIBLE) != 0; }
    Manners Given() const {
        Manners manners;
        manners.extender = GetParam();
        return manners;
    }
    bool Keeps() const { return GetParam() == ExtenderKind::Applies || GetParam() == ExtenderKind::OnlyKeeps; }
};

TEST_P(SlaveQuestion, HidesTheEditorUntilItIsAnsweredYes) {
    Start(Given(), 1);
    bench->Gate().KeepLog(true);
    BoxAnswers answers(IDYES);
    bool visibleMeanwhile = true;
    answers.meanwhile = [&] { visibleMeanwhile = Visible(); };
    EXPECT_EQ(Gui()->Activate(), S_OK);
    ASSERT_EQ(answers.texts.size(), 1u) << testing::PrintToString(answers.texts);
    EXPECT_NE(answers.texts[0].find(L"Slave Device"), std::wstring::npos);
    EXPECT_FALSE(visibleMeanwhile);
    EXPECT_TRUE(Visible());
    EXPECT_EQ(Result(), 2);
    EXPECT_EQ(container->Wrote("Visible off") && container->Wrote("Visible on"), Keeps());
    EXPECT_EQ(bench->Gate().Count("ConfigurationManager.GetConfiguration"), 0) << "visible again is no show";
    EXPECT_TRUE(container->Wrote("EnableModeless off"));
    EXPECT_TRUE(container->Wrote("EnableModeless on"));
}

TEST_P(SlaveQuestion, AnsweredNoLoadsNothingAndAsksTheHostToClose) {
    Start(Given(), 1);
    {
        const BoxAnswers answers(IDNO);
        EXPECT_EQ(Gui()->Activate(), S_OK);
    }
    EXPECT_EQ(Result(), -1);
    EXPECT_FALSE(Visible());
    EXPECT_EQ(bench->Application()->closeCount, 1);
    // A host that shows it nevertheless begins anew.
    EXPECT_EQ(container->Verb(OLEIVERB_SHOW), S_OK);
    const BoxAnswers answers(IDYES);
    EXPECT_EQ(Gui()->Activate(), S_OK);
    EXPECT_EQ(Result(), 2);
    EXPECT_EQ(bench->OpenConfigurations(), 1);
}

INSTANTIATE_TEST_SUITE_P(Extenders, SlaveQuestion, testing::ValuesIn(kKinds));

TEST_F(Running, UnloadingIsAnsweredByTheContainersUserMode) {
    for (const auto mode : {std::optional<bool>(), std::optional(true), std::optional(false)}) {
        Manners manners;
        manners.userMode = mode;
        Start(manners);
        VARIANT_BOOL agreed = 7;
        EXPECT_EQ(Gui()->RequestUnload(&agreed), S_OK);
        EXPECT_EQ(agreed, addon::com::FromBool(mode.value_or(true)));
        container.reset();
    }
}

} // namespace
} // namespace orv::tests
