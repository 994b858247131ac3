// The edit box without a window against bare containers that are given the same cells.
#include <random>

#include "bench/pair.h"
#include "controls/mb_edit_core.h"

namespace orv::bench {
namespace {

using controls::MBEditCore;
using controls::ShadowCell;
using controls::TokenText;

constexpr std::size_t kBytes = 64 * 1024;
constexpr Aim kAim{Ratio::TimeAtMost, 1.5};

Bytes Mixed() {
    std::mt19937 random(1);
    Bytes data(kBytes);
    for (std::uint8_t& byte : data)
        byte = static_cast<std::uint8_t>(random());
    return data;
}

void SetAndRead(benchmark::State& state) {
    const Bytes data = Mixed();
    const auto ours = [&data] {
        MBEditCore box;
        box.SetData(data);
        benchmark::DoNotOptimize(box.Data().data());
    };
    const auto theirs = [&data] {
        std::vector<ShadowCell> cells;
        for (std::uint8_t byte : data) {
            const auto length = static_cast<std::int16_t>(TokenText::LengthOf(byte));
            for (std::int16_t i = 0; i < length; ++i)
                cells.push_back({byte, length});
        }
        Bytes read;
        for (std::size_t i = 0; i < cells.size(); i += static_cast<std::size_t>(cells[i].tokenLength))
            read.push_back(cells[i].value);
        benchmark::DoNotOptimize(read.data());
    };
    MeasurePair(state, "append of the cells", kAim, ours, theirs);
}
BENCHMARK(SetAndRead)->Name("set and read 64 KB in the box")->UseManualTime();

/// Keys in the middle of a long value, each taken back: an undo that copied the content would show here.
void TypeAndUndo(benchmark::State& state) {
    constexpr int kKeys = 100;
    MBEditCore box;
    box.SetData(Mixed());
    const std::size_t middle = box.Floor(box.TextLength() / 2);
    const auto ours = [&] {
        box.MoveCaret(middle, false);
        for (int i = 0; i < kKeys; ++i) {
            box.TypeCharacter('x');
            box.EndStep();
        }
        while (box.Undo()) {
        }
    };
    std::wstring text = box.Text();
    std::vector<ShadowCell> cells = box.Cells();
    const auto theirs = [&] {
        for (std::size_t i = 0; i < kKeys; ++i) {
            text.insert(middle + i, 1, L'x');
            cells.insert(cells.begin() + static_cast<std::ptrdiff_t>(middle + i), ShadowCell{'x', 1});
        }
        for (std::size_t i = kKeys; i-- > 0;) {
            text.erase(middle + i, 1);
            cells.erase(cells.begin() + static_cast<std::ptrdiff_t>(middle + i));
        }
        benchmark::DoNotOptimize(cells.data());
    };
    MeasurePair(state, "insert and erase of the same", kAim, ours, theirs);
}
BENCHMARK(TypeAndUndo)->Name("100 keys in 64 KB and back")->UseManualTime();

} // namespace
} // namespace orv::bench
