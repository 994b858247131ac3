#pragma once
// The editor over the bench host, loaded as the component loads it; saves are recorded, not run.
#include <deque>

#include <gtest/gtest.h>

#include "controls/combo_box.h"
#include "controls/mb_edit.h"
#include "controls/output_strip.h"
#include "controls/simple_widgets.h"
#include "controls/tree.h"
#include "editor/editor.h"
#include "model/catalogue.h"
#include "tests/support/bench.h"

namespace orv::test {

struct EditorFixture : testing::Test, editor::Commands {
    Bench bench;
    model::OutFormatConfig root{bench.state};
    model::ToolItems catalogue{bench.state, root};
    std::unique_ptr<editor::Editor> editor;
    std::vector<bool> saves; ///< the `interactive` of each
    int closes = 0;
    int readings = 0;
    std::function<void()> whileSaving;
    bool rootFails = false; ///< whoever asks the editor for the root meets an error

    EditorFixture() : EditorFixture(Sample("tiny.json")) {}
    explicit EditorFixture(const sim::SystemDescription& system) : bench(system, {}, 0) {
        bench.Open(3);
        editor = std::make_unique<editor::Editor>(
            bench.state,
            [this]() -> model::OutFormatConfig& {
                if (rootFails)
                    throw Error(error_number::kOverflow);
                return root;
            },
            [this]() -> model::ToolItems& { return catalogue; }, *this);
        editor->runDialog = [this](controls::Dialog& dialog) { RunDialog(dialog); };
        Load();
    }

    void Load() {
        editor->ShowFirstPage();
        root.Reload();
        model::FillCatalogue(catalogue);
        editor->ValuesRead();
        editor->BuildTree();
        editor->SelectFirstNode();
        editor->SetModified(false);
    }
    void Save(bool interactive) override {
        saves.push_back(interactive);
        if (whileSaving)
            whileSaving();
    }
    void CloseAddOn() override { ++closes; }
    void ReadAgain() override { ++readings; }

    /// What the user does in the next dialogs; none left: each is dismissed.
    std::deque<std::function<void(controls::Dialog&)>> inDialog;
    void RunDialog(controls::Dialog& dialog) {
        dialog.Open();
        dialog.Form().FocusFirst();
        if (inDialog.empty()) {
            dialog.Dismiss();
            return;
        }
        const auto act = std::move(inDialog.front());
        inDialog.pop_front();
        act(dialog);
        EXPECT_TRUE(dialog.Closed()) << "the dialog would stand open for ever";
    }

    template <typename T>
    T& Get(const wchar_t* name, int index = controls::Widget::kNoIndex) {
        auto* widget = dynamic_cast<T*>(editor->Root().Find(name, index));
        if (!widget)
            throw std::logic_error("no such widget");
        return *widget;
    }
    controls::MBEdit& Box(const wchar_t* name, int index = controls::Widget::kNoIndex) {
        return Get<controls::MBEdit>(name, index);
    }
    controls::Button& Button(const wchar_t* name) { return Get<controls::Button>(name); }
    bool Visible(const wchar_t* name) { return editor->Root().Find(name)->EffectivelyVisible(); }
    std::wstring Caption(const wchar_t* name) { return editor->Root().Find(name)->PlainCaption(); }
    void Click(const wchar_t* key) { Get<controls::Tree>(L"tvw").Click(key); }
    const std::vector<platform::MessageBox>& Boxes() { return bench.platform.boxes.shown; }
};

/// The tiny sample with one device parameter changed or, without a change, taken away.
inline sim::SystemDescription With(std::int32_t number, const std::function<void(sim::ParameterDescription&)>& change) {
    sim::SystemDescription system = Sample("tiny.json");
    auto& parameters = system.devices.front().parameters;
    if (!change)
        std::erase_if(parameters, [number](const auto& p) { return p.number == number; });
    for (sim::ParameterDescription& parameter : parameters)
        if (change && parameter.number == number)
            change(parameter);
    return system;
}

} // namespace orv::test
