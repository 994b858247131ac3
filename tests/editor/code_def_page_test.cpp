#include "fixture.h"

namespace orv::editor {
namespace {

constexpr std::int32_t kUnlisted = 77;

struct CodeDefPageTest : test::EditorFixture {
    CodeDefPageTest() : EditorFixture(test::With(401, [](sim::ParameterDescription& p) { p.values = {Bytes{}}; })) {}
    controls::ComboBox& CodeID() { return Get<controls::ComboBox>(L"cboCodeID"); }
    bool FrameEnabled() { return editor->Root().Find(L"fraCustomCodeID")->EffectivelyEnabled(); }
    void SelectCodeID(std::int32_t data) {
        for (std::size_t i = 0; i < CodeID().Entries().size(); ++i)
            if (CodeID().Entries()[i].data == data)
                CodeID().Select(static_cast<int>(i));
    }
};

TEST_F(CodeDefPageTest, TheIdentifierFrameIsEnabledForUserDefinedAlone) {
    for (const std::int32_t stored : {0, 2, 3}) {
        root.CodeID(stored);
        Click(L"CodeDef");
        EXPECT_EQ(CodeID().SelectedData(), stored);
        EXPECT_EQ(FrameEnabled(), stored == 2);
    }
    EXPECT_FALSE(editor->Modified());
    SelectCodeID(2);
    EXPECT_TRUE(FrameEnabled());
    EXPECT_EQ(root.CodeID(), 2);
    EXPECT_TRUE(editor->Modified());
    SelectCodeID(1);
    EXPECT_FALSE(FrameEnabled());
    EXPECT_EQ(root.CodeID(), 1);
}

TEST_F(CodeDefPageTest, AStoredValueThatTheDeviceDoesNotListIsShownAndKept) {
    root.CodeID(kUnlisted);
    Click(L"CodeDef");
    EXPECT_EQ(CodeID().Entries()[static_cast<std::size_t>(CodeID().Selected())].text, L"77");
    EXPECT_EQ(root.CodeID(), kUnlisted);
    EXPECT_FALSE(editor->Modified());
}

TEST_F(CodeDefPageTest, EachIdentifierHasABoxAndTheUndefinedOneSaysWhyItIsDisabled) {
    SelectCodeID(2);
    for (int id = 0; id < 19; ++id)
        EXPECT_EQ(editor->Root().Find(L"mbeCustomCodeID", id) != nullptr, id != 8) << id;
    EXPECT_EQ(Box(L"mbeCustomCodeID", 0).Text(), L"A");
    EXPECT_FALSE(Box(L"mbeCustomCodeID", 1).EffectivelyEnabled());
    EXPECT_NE(Box(L"mbeCustomCodeID", 1).ToolTip().find(L"never defined"), std::wstring::npos);
    EXPECT_EQ(editor->Root().Find(L"lblCustomCodeID", 0)->PlainCaption(), L"Industrial 2 of 5");
    editor->Form().SetFocus(Box(L"mbeCustomCodeID", 0));
    editor->Form().RouteKey({.key = controls::Key::Tab});
    EXPECT_TRUE(Box(L"mbeCustomCodeID", 2).Focused());
}

TEST_F(CodeDefPageTest, AnIdentifierIsStoredWhenItIsLeft) {
    SelectCodeID(2);
    editor->SetModified(false);
    editor->Form().SetFocus(Box(L"mbeCustomCodeID", 5));
    Box(L"mbeCustomCodeID", 5).TypeText(L"\r");
    EXPECT_TRUE(editor->Modified());
    EXPECT_EQ(root.CustomCodeID(5), L"F");
    editor->Form().SetFocus(CodeID());
    EXPECT_EQ(root.CustomCodeID(5), L"\rF") << "the caret stood before the content";
}

TEST_F(CodeDefPageTest, TheGlobalNoReadMessageIsARootProperty) {
    auto& box = Get<controls::ComboBox>(L"cboGlobNoRead");
    const std::int32_t before = root.GlobNoReadMsgType();
    box.Select(box.Selected() == 2 ? 1 : 2);
    EXPECT_NE(root.GlobNoReadMsgType(), before);
    EXPECT_EQ(root.GlobNoReadMsgType(), box.SelectedData());
    EXPECT_TRUE(editor->Modified());
}

} // namespace
} // namespace orv::editor
