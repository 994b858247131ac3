#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "controls/mb_edit_core.h"

namespace orv::controls {
namespace {

/// The same edits on plain bytes, with positions counted in bytes: what the box must never depart from.
struct Model {
    Bytes data;
    std::size_t caret = 0;
    std::size_t anchor = 0;

    std::size_t Low() const { return std::min(caret, anchor); }
    std::size_t High() const { return std::max(caret, anchor); }
    static std::size_t Shown(const Bytes& bytes) { return text::DisplayForm(bytes).size(); }

    void Erase() {
        const std::size_t low = Low();
        data.erase(data.begin() + static_cast<std::ptrdiff_t>(low), data.begin() + static_cast<std::ptrdiff_t>(High()));
        caret = anchor = low;
    }
    void Insert(const Bytes& bytes, std::size_t maximum) {
        Erase();
        for (std::uint8_t byte : bytes) {
            if (maximum != 0 && Shown(data) + Shown({byte}) > maximum)
                return;
            data.insert(data.begin() + static_cast<std::ptrdiff_t>(caret), byte);
            anchor = ++caret;
        }
    }
    std::size_t Offset(std::size_t position) const {
        return Shown({data.begin(), data.begin() + static_cast<std::ptrdiff_t>(position)});
    }
};

struct Play {
    explicit Play(unsigned seed) : random(seed) {}

    std::size_t Below(std::size_t limit) { return random() % limit; }
    std::uint8_t Byte() { return static_cast<std::uint8_t>(Below(256)); }
    Bytes Some() {
        Bytes bytes(Below(5));
        std::generate(bytes.begin(), bytes.end(), [this] { return Byte(); });
        return bytes;
    }

    void Step() {
        const bool extend = Below(3) == 0;
        switch (Below(9)) {
        case 0: {
            const std::uint8_t byte = Byte();
            if (core.TypeCharacter(byte) && byte != 0)
                model.Insert({byte}, core.MaxLength());
            break;
        }
        case 1: {
            const std::uint8_t byte = Byte();
            core.InsertCC(byte);
            model.Insert({byte}, core.MaxLength());
            break;
        }
        case 2:
            if (const Bytes bytes = Some(); !bytes.empty()) {
                core.Paste(bytes);
                model.Insert(bytes, core.MaxLength());
            }
            break;
        case 3:
            core.Backspace();
            if (model.caret == model.anchor && model.caret > 0)
                --model.anchor;
            model.Erase();
            break;
        case 4:
            core.Delete();
            if (model.caret == model.anchor && model.caret < model.data.size())
                ++model.anchor;
            model.Erase();
            break;
        case 5:
            Move(false, extend);
            break;
        case 6:
            Move(true, extend);
            break;
        case 7: {
            const std::size_t to = Below(model.data.size() + 1);
            core.MoveCaret(model.Offset(to), extend);
            model.caret = to;
            if (!extend)
                model.anchor = to;
            break;
        }
        default:
            core.SetMaxLength(Below(3) == 0 ? 0 : 20 + Below(60));
        }
    }

    void Move(bool right, bool extend) {
        const bool collapse = !extend && model.caret != model.anchor;
        right ? core.StepRight(extend) : core.StepLeft(extend);
        if (collapse)
            model.caret = right ? model.High() : model.Low();
        else if (right ? model.caret < model.data.size() : model.caret > 0)
            model.caret += right ? 1 : static_cast<std::size_t>(-1);
        if (!extend)
            model.anchor = model.caret;
    }

    void Check() const {
        ASSERT_EQ(core.Data(), model.data);
        ASSERT_EQ(core.Text(), text::DisplayForm(model.data));
        ASSERT_EQ(core.Cells().size(), core.Text().size());
        ASSERT_EQ(core.Caret(), model.Offset(model.caret));
        ASSERT_EQ(core.SelStart(), model.Offset(model.Low()));
        ASSERT_EQ(core.SelStart() + core.SelLength(), model.Offset(model.High()));
        for (std::size_t i = 0; i < core.Cells().size();) {
            const ShadowCell cell = core.Cells()[i];
            for (std::int16_t within = 0; within < cell.tokenLength; ++within, ++i)
                ASSERT_EQ(core.Cells()[i], cell);
        }
    }

    std::mt19937 random;
    MBEditCore core;
    Model model;
};

TEST(MBEditRandom, TextShadowAndDataStayInStep) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        Play run(seed);
        for (int step = 0; step < 1000; ++step) {
            run.Step();
            run.Check();
            if (testing::Test::HasFatalFailure())
                FAIL() << "seed " << seed << ", step " << step;
        }
    }
}

TEST(MBEditRandom, UndoLeadsBackThroughEveryContent) {
    Play run(4711);
    run.core.SetMaxLength(200);
    std::vector<std::wstring> contents{run.core.Text()};
    for (int edit = 0; edit < 80; ++edit) {
        run.core.InsertCC(run.Byte());
        if (run.core.Text() != contents.back())
            contents.push_back(run.core.Text());
    }
    ASSERT_GT(contents.size(), 20u);
    for (std::size_t i = contents.size() - 1; i-- > 0;) {
        ASSERT_TRUE(run.core.Undo());
        ASSERT_EQ(run.core.Text(), contents[i]);
        ASSERT_EQ(run.core.Cells().size(), contents[i].size());
    }
    EXPECT_FALSE(run.core.Undo());
}

} // namespace
} // namespace orv::controls
