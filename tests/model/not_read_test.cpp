// What was never read or never understood is not written over, until the user puts a value of his own there.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>

#include "device/mib_param_cache.h"
#include "tests/model/fixture.h"
#include "tests/model/snapshot.h"
#include "tests/model/wire.h"

namespace orv::model {
namespace {

using device::LeftOut;
using device::Value;
using sim::DeviceDescription;
using test::Parameter;

/// A sample's master, changed before there is a host over it, loaded under a level.
struct Loaded {
    explicit Loaded(const std::function<void(DeviceDescription&)>& change = {}, std::int32_t level = 3,
                    const char* sample = "conveyor.json")
        : bench(Changed(sample, change), {}, 0) {
        bench.Open(level);
        root.Reload();
    }
    static sim::SystemDescription Changed(const char* sample, const std::function<void(DeviceDescription&)>& change) {
        sim::SystemDescription system = test::Sample(sample);
        // Its second slot has a fixed length, which every save changes.
        Parameter(system.devices.front(), 70).values.at(1) = std::int16_t{0};
        if (change)
            change(system.devices.front());
        return system;
    }
    /// "3002[1]" for each write.
    std::set<std::string> Writes() const {
        std::set<std::string> writes;
        for (const auto& write : root.Plan().writes)
            writes.insert(Name(write.entry));
        return writes;
    }
    std::set<std::string> LeftOutNumbers() const {
        std::set<std::string> left;
        for (const LeftOut& one : root.Plan().leftOut)
            left.insert(one.entry.empty() ? "none" : Name(one.entry));
        return left;
    }
    std::string Name(const std::wstring& entry) const {
        const sim::ParameterStore& store = *bench.host.Store(bench.cluster, 0);
        const auto address = store.FindName(entry);
        return std::to_string(store.Parameter(*address).number) + "[" + std::to_string(address->element) + "]";
    }
    /// Number of each value that a save made another of, in the host's configuration.
    std::set<std::int32_t> ChangedBySave() {
        const DeviceDescription before = bench.host.Store(bench.cluster, 0)->Contents();
        EXPECT_TRUE(root.Save(false));
        const DeviceDescription after = bench.host.Store(bench.cluster, 0)->Contents();
        std::set<std::int32_t> numbers;
        for (std::size_t i = 0; i < before.parameters.size(); ++i)
            if (before.parameters[i].values != after.parameters[i].values)
                numbers.insert(before.parameters[i].number);
        return numbers;
    }
    /// What the host does when it shows the control again under another level.
    void Show(std::int32_t level) {
        bench.host.SetAccessLevel(level);
        bench.state.current.accessLevel = level;
    }

    mutable test::Bench bench;
    OutFormatConfig root{bench.state};
};

auto Put(std::int32_t number, std::size_t element, Value value) {
    return [=](DeviceDescription& device) { Parameter(device, number).values.at(element) = value; };
}

std::set<std::string> Without(std::set<std::string> all, const std::vector<std::string>& names) {
    for (const std::string& name : names)
        EXPECT_EQ(all.erase(name), 1U) << name;
    return all;
}

TEST(NotRead, ASlotIsNotWrittenFromTheValueOnThatCannotBeConverted) {
    const auto whole = Loaded().Writes();
    Loaded loaded(Put(3002, 1, std::int16_t{300}));
    std::vector<std::string> behind;
    bool failed = false;
    for (const wire::Row& row : wire::kCodeSlot)
        if (failed = failed || row.number == 3002; failed)
            behind.push_back(std::to_string(row.number) + "[1]");
    EXPECT_EQ(loaded.Writes(), Without(whole, behind));
    EXPECT_EQ(loaded.LeftOutNumbers(), (std::set<std::string>(behind.begin(), behind.end())));
    EXPECT_EQ(loaded.root.Plan().leftOut.front().reason, L"Overflow");
    EXPECT_EQ(loaded.root.Plan().leftOut.back().reason, L"not asked for");

    // The same number that the model holds counts as a change; so does one switch of seven.
    CodeDef& slot = *loaded.root.Codes().Code(2);
    Store(slot, &CodeDef::DMColumns, std::uint8_t{0});
    Store(slot, &CodeDef::MaxicodeEnable, 3, false);
    std::erase(behind, "3002[1]");
    std::erase(behind, "3016[1]");
    EXPECT_EQ(loaded.Writes(), Without(whole, behind));
}

TEST(NotRead, AnEmptyAnswerLeavesOutThatValueAlone) {
    const auto whole = Loaded().Writes();
    std::vector<wire::Row> rows{
        {330, device::WireType::Int16}, {399, device::WireType::Int32}, {372, device::WireType::Int32}};
    for (const auto* table :
         {&wire::kCodes, &wire::kCodeSlot, &wire::kGroup, &wire::kStandardFormat, &wire::kFormat, &wire::kItem})
        rows.insert(rows.end(), table->begin(), table->end());
    for (const wire::Row& row : rows) {
        if (row.number == 72 || row.number == 191)
            continue; // the groups go with them, see below
        const std::string name = std::to_string(row.number) + "[0]";
        Loaded loaded(Put(row.number, 0, Value()));
        EXPECT_EQ(loaded.Writes(), Without(whole, {name}));
        EXPECT_EQ(loaded.LeftOutNumbers(), std::set<std::string>{name});
        if (row.type != device::WireType::Text && row.type != device::WireType::ByteArray)
            continue;
        const bool isText = row.type == device::WireType::Text;
        Loaded empty(Put(row.number, 0, isText ? Value(std::wstring()) : Value(Bytes())));
        EXPECT_EQ(empty.Writes(), whole) << name << ": an empty text is a value";
    }
}

TEST(NotRead, AStringThatCannotBeReadStaysUntilTheUserTypes) {
    const auto whole = Loaded().Writes();
    for (const std::int32_t number : {9, 16, 18, 328, 17, 327, 401}) {
        const std::string name = std::to_string(number) + "[0]";
        Loaded loaded(Put(number, 0, std::int16_t{5}));
        EXPECT_EQ(loaded.LeftOutNumbers(), std::set<std::string>{name});
        EXPECT_FALSE(loaded.Writes().contains(name));
        EXPECT_EQ(loaded.ChangedBySave(), std::set<std::int32_t>{});
    }
    Loaded loaded(Put(9, 0, std::int16_t{5}));
    Store(loaded.root.Codes(), &Codes::NoReadString, std::wstring());
    EXPECT_EQ(loaded.Writes(), whole);
}

TEST(NotRead, AnIdentifierOfAnEarlierLoadIsNotWrittenOverWhenItFailsNow) {
    Loaded loaded;
    ASSERT_TRUE(loaded.root.CustomCodeIDDefined(1));
    loaded.bench.host.Gate().FailNamed("ParameterTable.GetValue", 4, -7, L"gone"); // 330, 399, 400, 401
    loaded.root.Reload();
    EXPECT_FALSE(loaded.Writes().contains("401[0]"));
    loaded.root.CustomCodeID(1, L"x");
    EXPECT_TRUE(loaded.Writes().contains("401[0]"));
}

TEST(NotRead, AnExpressionThatDoesNotParseStaysUntilTheGroupsAreTheUsers) {
    const auto broken = [](DeviceDescription& device) {
        Put(191, 0, std::wstring(L"1|2^3&4"))(device);
        Put(72, 0, std::int32_t{2})(device);
    };
    Loaded loaded(broken);
    Codes& codes = loaded.root.Codes();
    EXPECT_EQ(codes.Groups().Count(), 0);
    EXPECT_EQ(codes.KeptExpression(), L"1|2^3&4");
    EXPECT_EQ(loaded.LeftOutNumbers(), std::set<std::string>{"191[0]"});
    EXPECT_NE(loaded.root.Plan().leftOut.front().reason.find(L"character 4 "), std::wstring::npos);
    for (const char* name : {"191[0]", "17[0]", "327[0]"})
        EXPECT_FALSE(loaded.Writes().contains(name)) << name;
    EXPECT_FALSE(loaded.ChangedBySave().contains(191));
    EXPECT_EQ(codes.KeptExpression(), L"1|2^3&4") << "a save is no understanding";

    codes.Groups().Add().AddCode(L"1");
    codes.GroupsChanged();
    for (const char* name : {"191[0]", "17[0]", "327[0]"})
        EXPECT_TRUE(loaded.Writes().contains(name)) << name;
    EXPECT_EQ(codes.KeptExpression(), L"");
    // With another combination the expression is none of anybody's business.
    Loaded other([&](DeviceDescription& device) {
        broken(device);
        Put(72, 0, std::int32_t{1})(device);
    });
    EXPECT_EQ(other.LeftOutNumbers(), std::set<std::string>{});
    EXPECT_EQ(other.root.Codes().KeptExpression(), L"");
}

TEST(NotRead, WithoutAWordOnHowManyItemsThereMayBeTheirNumberStays) {
    const auto whole = Loaded().Writes();
    std::vector<std::string> counts;
    for (const std::string& name : whole)
        if (name.starts_with("349["))
            counts.push_back(name);
    ASSERT_GT(counts.size(), 1U);
    Loaded empty(Put(350, 0, Value()));
    EXPECT_EQ(empty.Writes(), Without(whole, counts));
    EXPECT_FALSE(empty.root.AdvancedFormats().Item(1).ItemCountIsRead());
    EXPECT_EQ(empty.ChangedBySave(), std::set<std::int32_t>{});

    Loaded above([](DeviceDescription& device) { Parameter(device, 350).level = 3; }, 2);
    EXPECT_FALSE(above.Writes().contains("349[0]"));

    Loaded uncounted(Put(349, 0, Value()));
    EXPECT_FALSE(uncounted.Writes().contains("349[0]"));
    EXPECT_TRUE(uncounted.Writes().contains("349[1]"));
    EXPECT_FALSE(uncounted.root.AdvancedFormats().Item(1).ItemCountIsRead());
    EXPECT_TRUE(uncounted.root.AdvancedFormats().Item(2).ItemCountIsRead());

    // A device that says 0 is taken at its word.
    Loaded none(Put(350, 0, std::int16_t{0}));
    EXPECT_EQ(none.Writes(), whole);
    EXPECT_EQ(none.ChangedBySave(), std::set<std::int32_t>{349});
}

TEST(NotRead, AFixedLengthStaysWholeWhereMinimumOrMaximumCannotBeWritten) {
    const auto fixed = [](std::int32_t hidden) {
        return [hidden](DeviceDescription& device) {
            Put(3, 0, std::int16_t{1})(device);
            Put(4, 0, std::int16_t{40})(device);
            Put(70, 0, std::int16_t{12})(device);
            if (hidden != 0)
                Parameter(device, hidden).level = 3;
        };
    };
    for (const std::int32_t hidden : {3, 4}) {
        Loaded loaded(fixed(hidden), 2);
        EXPECT_TRUE(loaded.LeftOutNumbers().contains("70[0]"));
        EXPECT_TRUE(loaded.Writes().contains("70[1]")) << "a 0 is written as ever";
        EXPECT_EQ(loaded.ChangedBySave(), std::set<std::int32_t>{});
    }
    Loaded visible(fixed(0), 2);
    EXPECT_EQ(visible.ChangedBySave(), (std::set<std::int32_t>{3, 4, 70}));

    // Whoever gives a fixed length gives minimum and maximum with it.
    Loaded unread(Put(3, 0, Value()));
    EXPECT_EQ(unread.LeftOutNumbers(), std::set<std::string>{"3[0]"});
    Store(*unread.root.Codes().Code(1), &CodeDef::Length, std::int16_t{9});
    EXPECT_EQ(unread.LeftOutNumbers(), std::set<std::string>{});
    EXPECT_EQ(unread.root.Codes().Code(1)->MinLength(), 9);
}

TEST(NotRead, WhatADeviceHasNoPlaceForDoesNotKeepTheRestFromBeingSaved) {
    Loaded groups([](DeviceDescription& device) {
        Put(72, 0, std::int32_t{2})(device);
        Put(191, 0, std::wstring(L"1&2&3"))(device);
        test::Resize(Parameter(device, 17), 2);
    });
    EXPECT_EQ(groups.LeftOutNumbers(), std::set<std::string>{"none"});
    EXPECT_EQ(groups.root.Plan().leftOut.front().reason, L"the strings of group 3");
    EXPECT_TRUE(groups.Writes().contains("17[1]"));
    EXPECT_TRUE(groups.Writes().contains("191[0]"));
    EXPECT_EQ(groups.ChangedBySave(), std::set<std::int32_t>{});

    // Fewer strings of the other sort.
    Loaded uneven([](DeviceDescription& device) {
        Put(72, 0, std::int32_t{2})(device);
        Put(191, 0, std::wstring(L"1&2"))(device);
        test::Resize(Parameter(device, 327), 1);
    });
    EXPECT_TRUE(uneven.Writes().contains("17[1]"));
    EXPECT_EQ(uneven.ChangedBySave(), std::set<std::int32_t>{});

    const std::int32_t slots = Loaded().root.AdvancedFormats().ItemSlots();
    for (const std::size_t format : {std::size_t{0}, std::size_t{3}}) {
        Loaded items([&](DeviceDescription& device) {
            Put(349, format, static_cast<std::int16_t>(slots + 1))(device);
            Put(350, 0, static_cast<std::int16_t>(slots + 5))(device);
        });
        const AdvancedFormat& crowded = items.root.AdvancedFormats().Item(static_cast<std::int32_t>(format) + 1);
        EXPECT_EQ(crowded.OutItems().Count(), slots + 1);
        EXPECT_EQ(items.LeftOutNumbers(), std::set<std::string>{"none"});
        EXPECT_EQ(items.root.Plan().leftOut.front().reason,
                  L"item " + std::to_wstring(slots + 1) + L" of format " + std::to_wstring(format + 1));
        EXPECT_EQ(items.ChangedBySave(), std::set<std::int32_t>{}) << "nothing lands in another format's place";
    }
}

TEST(NotRead, ShownAgainUnderAHigherLevelOnlyWhatTheUserChangedIsWritten) {
    for (const std::int32_t level : {0, 1, 2}) {
        Loaded loaded({}, level);
        loaded.Show(3);
        EXPECT_FALSE(loaded.LeftOutNumbers().empty());
        Store(loaded.root.StandardFormat(), &StandardFormat::Header, std::wstring(L"typed"));
        EXPECT_EQ(loaded.ChangedBySave(), std::set<std::int32_t>{6}) << "opened at level " << level;
        loaded.root.Reload();
        EXPECT_EQ(loaded.LeftOutNumbers(), std::set<std::string>{}) << "read again, all of it is known";
    }
}

TEST(NotRead, AnExpressionStaysWhenTheUserChoosesACombinationThatWasNotRead) {
    Loaded loaded(Put(72, 0, Value()));
    Store(loaded.root.Codes(), &Codes::Combination, kCombinationByExpression);
    EXPECT_EQ(loaded.ChangedBySave(), std::set<std::int32_t>{72}) << "nobody saw the groups that were there";
}

TEST(NotRead, ASlotBeyondTheElementsOfItsLengthCanStillBeSaved) {
    Loaded loaded([](DeviceDescription& device) { test::Resize(Parameter(device, 70), 5); });
    CodeDef& slot = *loaded.root.Codes().Code(8);
    slot.ChooseLength(0, slot.MinLength(), slot.MaxLength());
    EXPECT_NO_THROW(loaded.ChangedBySave());
}

TEST(NotRead, BytesStandForATextAndATextForItsBytes) {
    Loaded plain;
    const std::wstring expected = test::Snapshot(plain.root);
    Loaded swapped([](DeviceDescription& device) {
        for (sim::ParameterDescription& parameter : device.parameters)
            for (Value& value : parameter.values) {
                // What is read as a number may be given as a text of it, never as bytes.
                if (const auto* bytes = std::get_if<Bytes>(&value))
                    value = std::wstring(bytes->begin(), bytes->end());
                else if (const auto* text = std::get_if<std::wstring>(&value))
                    value = Bytes(text->begin(), text->end());
            }
    });
    EXPECT_EQ(test::Snapshot(swapped.root), expected);
    EXPECT_EQ(swapped.LeftOutNumbers(), std::set<std::string>{});
    device::ParameterAccess access(swapped.bench.state);
    EXPECT_EQ(access.BytesToDisplayText(std::wstring(L"A\r"), device::BytesForm::Display), L"A<CR>");
    EXPECT_EQ(test::ErrorOf([&] { access.AsByteString(std::int16_t{5}); }), 13) << "what is neither";
}

TEST(NotRead, PlanningChangesNothing) {
    Loaded loaded([](DeviceDescription& device) {
        Put(70, 0, std::int16_t{12})(device);
        Put(72, 0, std::int32_t{2})(device);
        Put(191, 0, std::wstring(L" 1 | 2"))(device);
    });
    const std::wstring before = test::Snapshot(loaded.root);
    const auto first = loaded.root.Plan().writes;
    EXPECT_EQ(test::Snapshot(loaded.root), before);
    EXPECT_EQ(loaded.root.Codes().Code(1)->Length(), 12);
    EXPECT_TRUE(loaded.root.Save(false));
    EXPECT_EQ(loaded.root.Codes().Code(1)->Length(), 0) << "a save does";
    const auto second = loaded.root.Plan().writes;
    ASSERT_EQ(first.size(), second.size());
    for (std::size_t i = 0; i < first.size(); ++i)
        EXPECT_EQ(first[i].value, second[i].value) << "the plan is what a save writes: " << i;
}

} // namespace
} // namespace orv::model
