// The advanced-format slots.
#include "model/advanced_formats.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/model/fixture.h"

namespace orv::model {
namespace {

using device::Value;

class FormatsTest : public test::ModelTest {};

/// The sample's device in another shape.
sim::SystemDescription Reshaped(std::int32_t formats, std::int32_t itemSlots) {
    sim::SystemDescription system = test::Sample("conveyor.json");
    auto& device = system.devices.front();
    test::Parameter(device, 340).values = {static_cast<std::int16_t>(formats)};
    for (const std::int32_t number : {341, 342, 343, 344, 345, 346, 348, 349})
        test::Resize(test::Parameter(device, number), formats);
    for (std::int32_t number = 351; number <= 369; ++number)
        test::Resize(test::Parameter(device, number), formats * itemSlots);
    for (Value& count : test::Parameter(device, 349).values)
        count = std::int16_t{0};
    return system;
}

struct Reloaded {
    explicit Reloaded(const sim::SystemDescription& system) : bench(system, {}, 0), root(bench.state) { bench.Open(3); }
    sim::ParameterStore& Store() { return *bench.host.Store(0, 0); }
    test::Bench bench;
    OutFormatConfig root;
};

TEST_F(FormatsTest, EveryPropertyComesFromItsOwnParameterAtItsElement) {
    Set(341, 70341, 2);
    Set(342, 70342, 2);
    Set(343, std::int16_t{-343}, 2);
    Set(344, Bytes{0}, 2);
    Set(345, Bytes{'h', 0xFE}, 2);
    Set(346, Bytes{'t'}, 2);
    Set(348, -70348, 2);
    Set(350, std::int16_t{350});
    root.Reload();
    const AdvancedFormat& format = Format(3);
    EXPECT_EQ(format.Index(), 3);
    EXPECT_EQ(format.Transports(), 70341);
    EXPECT_EQ(format.Alignment(), 70342);
    EXPECT_EQ(format.AlignLength(), -343);
    EXPECT_EQ(format.AlignFiller(), std::wstring(1, L'\0'));
    EXPECT_EQ(format.Header(), L"h\xFE");
    EXPECT_EQ(format.Terminator(), L"t");
    EXPECT_EQ(format.GlobalScaleType(), -70348);
    EXPECT_EQ(format.MaxItemsCount(), 350);
    EXPECT_EQ(&root.AdvancedFormats().Item(L"Format3"), &format);
}

TEST_F(FormatsTest, TheLabelListsTheTransportsBoundToIt) {
    constexpr auto kLast = static_cast<std::int32_t>(0x80000000U);
    const struct {
        std::int32_t transports;
        const wchar_t* names;
        const wchar_t* label;
    } cases[] = {
        {0, L"A,B,C", L"(None)"},
        {5, L"A,B,C", L"A,C"},
        {5, L"", L"SerMain,DeviceNet"},
        {3, L",B", L"SerMain,B"},
        {1 << 30, L"A", L"(None)"}, // nobody has a name for it
        {1 | 1 << 16, L"A", L"A"},
        {kLast, L"A", L"(None)"},
        {kLast, L"0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28,29,30,last", L"last"},
        {kLast | 1, L"0,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,last", L"0,last"},
        {1 << 15, L"A", L"UserSocket3"},
    };
    for (const auto& c : cases) {
        Set(603, std::wstring(c.names));
        Set(341, c.transports, 0);
        root.Reload();
        EXPECT_EQ(Format(1).GetLabel(), c.label) << c.transports;
    }
}

TEST_F(FormatsTest, ItemsLieBehindTheSlotsOfTheFormatsBeforeThem) {
    // Four formats and 80 item slots: 20 each. Item 2 of format 2 is element 21.
    Set(368, std::wstring(L"mine"), 21);
    Set(358, std::uint8_t{9}, 63);
    Set(349, std::int16_t{4}, 3);
    root.Reload();
    EXPECT_EQ(root.AdvancedFormats().ItemSlots(), 20);
    EXPECT_EQ(Format(2).OutItems().Item(2).StringText(), L"mine");
    EXPECT_EQ(Format(4).OutItems().Item(4).CodeNumber(), 9);
    Format(2).OutItems().Item(2).StringText(L"yours");
    Format(2).OutItems().Create(5, L"").StringText(L"new");
    root.Save(false);
    EXPECT_EQ(Get(368, 21), Value(std::wstring(L"yours")));
    EXPECT_EQ(Get(368, 24), Value(std::wstring(L"new")));
    EXPECT_EQ(Get(349, 1), Value(std::int16_t{5}));
}

TEST_F(FormatsTest, TheItemCountSavedIsAtMostWhatTheDeviceHolds) {
    const struct {
        std::int16_t items, most, saved;
    } cases[] = {{5, 20, 5}, {5, 5, 5}, {5, 4, 4}, {5, 0, 0}, {0, 3, 0}, {-1, 3, 0}};
    for (const auto& c : cases) {
        Set(349, c.items, 0);
        Set(350, c.most);
        root.Reload();
        EXPECT_EQ(Format(1).OutItems().Count(), std::max<std::int16_t>(c.items, 0));
        root.Save(false);
        EXPECT_EQ(Get(349, 0), Value(c.saved)) << c.items << ' ' << c.most;
        EXPECT_EQ(Get(350), Value(c.most));
    }
}

TEST_F(FormatsTest, OneThatDoesNotExistRaisesAndAReloadMakesTheSameAnew) {
    root.Reload();
    for (const std::int32_t position : {0, 5, -1})
        EXPECT_EQ(test::ErrorOf([&] { Format(position); }), 5) << position;
    EXPECT_EQ(test::ErrorOf([&] { root.AdvancedFormats().Item(L"Format5"); }), 5);
    Format(1).Header(L"changed");
    Format(1).OutItems().Remove(1);
    root.Reload();
    EXPECT_EQ(root.AdvancedFormats().Count(), 4);
    EXPECT_EQ(&root.AdvancedFormats().Item(L"Format4"), &Format(4));
    EXPECT_EQ(Format(1).Header(), L"\x02");
    EXPECT_EQ(Format(1).OutItems().Count(), 5);
    Set(340, std::int16_t{1});
    root.Reload();
    EXPECT_EQ(root.AdvancedFormats().Count(), 1);
    EXPECT_EQ(root.AdvancedFormats().ItemSlots(), 80);
}

TEST_F(FormatsTest, WithoutFormatsNothingIsWrittenOfThem) {
    for (const std::int16_t none : {std::int16_t{0}, std::int16_t{-1}}) {
        Set(340, none);
        root.Reload();
        EXPECT_EQ(root.AdvancedFormats().Count(), 0);
        for (const auto& write : root.Plan().writes) {
            EXPECT_FALSE(write.entry.starts_with(L"/OutputFormat/Formats"));
            EXPECT_FALSE(write.entry.starts_with(L"/OutputFormat/Items"));
        }
    }
}

TEST(FormatShapes, AnElementPastSixteenBitsOverflows) {
    // 3 formats of 16384 slots: the third begins at element 32768. One parameter says how many there are.
    sim::SystemDescription system = Reshaped(3, 1);
    test::Resize(test::Parameter(system.devices.front(), 351), 3 * 16384);
    Reloaded device(system);
    device.root.Reload();
    ASSERT_EQ(device.root.AdvancedFormats().ItemSlots(), 16384);
    device.root.AdvancedFormats().Item(3).OutItems().Create(1, L"");
    EXPECT_EQ(test::ErrorOf([&] { device.root.Plan(); }), 6);
    device.Store().Set(349, 2, std::int16_t{1});
    EXPECT_EQ(test::ErrorOf([&] { device.root.Reload(); }), 6);
}

TEST(FormatShapes, SlotsThatDoNotDivideEvenlyLeaveARest) {
    sim::SystemDescription system = Reshaped(3, 4);
    for (std::int32_t number = 351; number <= 369; ++number)
        test::Resize(test::Parameter(system.devices.front(), number), 14);
    Reloaded device(system);
    device.Store().Set(349, 2, std::int16_t{1});
    device.Store().Set(368, 8, std::wstring(L"third"));
    device.root.Reload();
    EXPECT_EQ(device.root.AdvancedFormats().ItemSlots(), 4);
    EXPECT_EQ(device.root.AdvancedFormats().Item(3).OutItems().Item(1).StringText(), L"third");
}

TEST(Formats, ItemsKeepTheirPlacesUnderALevelThatHidesTheirCategory) {
    sim::SystemDescription system = test::Sample("conveyor.json");
    test::Parameter(system.devices.front(), 351).level = 3;
    test::Bench bench(system, {}, 0);
    bench.Open(2);
    OutFormatConfig root(bench.state);
    root.Reload();
    EXPECT_EQ(root.AdvancedFormats().ItemSlots(), 20);
    EXPECT_TRUE(root.Save(false));
    for (std::int32_t element = 0; element < 80; ++element)
        for (const std::int32_t number : {351, 355, 368})
            EXPECT_EQ(bench.host.Store(0, 0)->Get(number, element), bench.device->Store().Get(number, element))
                << number << " " << element;
}

} // namespace
} // namespace orv::model
