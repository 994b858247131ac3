#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
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
    std::vector<bool> breaks; ///< of each byte: shown as the break of a line
    static std::size_t Shown(const Bytes& bytes) { return text::DisplayForm(bytes).size(); }
    std::wstring Text() const {
        std::wstring text;
        for (std::size_t i = 0; i < data.size(); ++i)
            text += breaks[i] ? L"\r" : text::ByteToken(data[i], true, true);
        return text;
    }

    void Erase() {
        const std::size_t low = Low();
        const auto first = static_cast<std::ptrdiff_t>(low);
        const auto last = static_cast<std::ptrdiff_t>(High());
        data.erase(data.begin() + first, data.begin() + last);
        breaks.erase(breaks.begin() + first, breaks.begin() + last);
        caret = anchor = low;
    }
    void Insert(const Bytes& bytes, std::size_t maximum, bool breaksLine = false) {
        Erase();
        for (std::uint8_t byte : bytes) {
            const std::size_t shown = breaksLine ? 1 : Shown({byte});
            if (maximum != 0 && !data.empty() && Text().size() + shown > maximum)
                return;
            data.insert(data.begin() + static_cast<std::ptrdiff_t>(caret), byte);
            breaks.insert(breaks.begin() + static_cast<std::ptrdiff_t>(caret), breaksLine);
            anchor = ++caret;
        }
    }
    std::size_t Offset(std::size_t position) const {
        Model head = *this;
        head.data.resize(position);
        head.breaks.resize(position);
        return head.Text().size();
    }
    /// Takes over what undo has made of the box.
    void Follow(const MBEditCore& core) {
        data = core.Data();
        breaks.clear();
        for (std::size_t i = 0; i < core.TextLength(); i = core.Ceiling(i + 1))
            breaks.push_back(core.Text()[i] == L'\r');
        const auto bytesBefore = [&core](std::size_t offset) {
            std::size_t count = 0;
            for (std::size_t i = 0; i < offset; i = core.Ceiling(i + 1))
                ++count;
            return count;
        };
        const std::size_t start = bytesBefore(core.SelStart());
        const std::size_t end = bytesBefore(core.SelStart() + core.SelLength());
        caret = core.Caret() == core.SelStart() ? start : end;
        anchor = caret == start ? end : start;
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
        switch (Below(12)) {
        case 0: {
            const std::uint8_t byte = Below(8) == 0 ? 13 : Byte();
            if (core.TypeCharacter(byte) && byte != 0)
                model.Insert({byte}, core.MaxLength(), byte == 13 && core.MaskReturn());
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
        case 8:
            core.SetMaxLength(Below(3) == 0 ? 0 : Below(3) == 0 ? 1 + Below(4) : 20 + Below(60));
            break;
        case 9:
            core.SetMaskReturn(Below(2) == 0);
            core.SetMultiline(Below(2) == 0);
            break;
        default:
            TakeBack();
        }
    }

    /// Steps back and as many forth must lead to the same content; then one back stays.
    void TakeBack() {
        const std::wstring before = core.Text();
        std::size_t steps = Below(4);
        std::size_t taken = 0;
        while (taken < steps && core.Undo())
            ++taken;
        Check(false);
        for (std::size_t i = 0; i < taken; ++i)
            ASSERT_TRUE(core.Redo());
        ASSERT_EQ(core.Text(), before);
        if (Below(2) == 0)
            core.Undo();
        model.Follow(core);
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

    void Check(bool known = true) const {
        if (known) {
            ASSERT_EQ(core.Data(), model.data);
            ASSERT_EQ(core.Text(), model.Text());
            ASSERT_EQ(core.Caret(), model.Offset(model.caret));
            ASSERT_EQ(core.SelStart(), model.Offset(model.Low()));
            ASSERT_EQ(core.SelStart() + core.SelLength(), model.Offset(model.High()));
        }
        ASSERT_EQ(core.Cells().size(), core.Text().size());
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

/// The variable asks for a longer run than every build can afford.
int Edits() {
    const char* asked = std::getenv("ORV_RANDOM_EDITS");
    return asked != nullptr ? std::max(1, std::atoi(asked)) : 20'000;
}

void PlayOne(unsigned seed, int steps) {
    Play run(seed);
    for (int step = 0; step < steps; ++step) {
        run.Step();
        run.Check();
        if (testing::Test::HasFatalFailure())
            FAIL() << "seed " << seed << ", step " << step;
    }
    const std::wstring last = run.core.Text();
    while (run.core.Undo())
        run.Check(false);
    ASSERT_EQ(run.core.Text(), L"") << "seed " << seed;
    while (run.core.Redo())
        run.Check(false);
    // What was undone before the end can be done again as well: the last value is on the way.
    while (run.core.Text() != last)
        ASSERT_TRUE(run.core.Undo()) << "seed " << seed;
}

TEST(MBEditRandom, TextShadowAndDataStayInStep) {
    constexpr int kSteps = 1000;
    const int edits = Edits();
    for (int done = 0; done < edits && !HasFatalFailure(); done += kSteps)
        PlayOne(static_cast<unsigned>(1 + done / kSteps), std::min(kSteps, edits - done));
}

} // namespace
} // namespace orv::controls
