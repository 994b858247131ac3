// One format's items: their list and what they carry.
#include "model/out_items.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <random>

#include "model/catalogue.h"
#include "tests/model/fixture.h"

namespace orv::model {
namespace {

using device::Value;

constexpr std::uint32_t kSeed = 314159;

class ItemsTest : public test::ModelTest {};

TEST_F(ItemsTest, EveryPropertyComesFromItsOwnParameter) {
    const struct {
        std::int32_t parameter;
        std::int32_t value;
        std::int32_t (*property)(const OutItem&);
    } numbers[] = {
        {351, 70351, [](const OutItem& i) { return i.ItemCategory(); }},
        {352, 70352, [](const OutItem& i) { return i.Alignment(); }},
        {353, 353, [](const OutItem& i) { return std::int32_t{i.AlignLength()}; }},
        {355, 70355, [](const OutItem& i) { return i.CodeRelType(); }},
        {356, 70356, [](const OutItem& i) { return i.GlobalType(); }},
        {357, 70357, [](const OutItem& i) { return i.DiagnosticEvent(); }},
        {358, 158, [](const OutItem& i) { return std::int32_t{i.CodeNumber()}; }},
        {359, 70359, [](const OutItem& i) { return i.CodeCut(); }},
        {360, 160, [](const OutItem& i) { return std::int32_t{i.CodeCutLeading()}; }},
        {361, 161, [](const OutItem& i) { return std::int32_t{i.CodeCutTrailing()}; }},
        {363, 70363, [](const OutItem& i) { return i.CodeCutPatternMode(); }},
        {364, 70364, [](const OutItem& i) { return i.FormatType(); }},
        {365, 165, [](const OutItem& i) { return std::int32_t{i.FormatLength()}; }},
        {366, 70366, [](const OutItem& i) { return i.LinkTo(); }},
        {367, 70367, [](const OutItem& i) { return i.ScaleType(); }},
        {369, 369, [](const OutItem& i) { return std::int32_t{i.DeviceNumber()}; }},
    };
    for (const auto& c : numbers)
        Set(c.parameter, c.value, 1);
    Set(354, Bytes{0xFF, 0}, 1);
    Set(362, std::wstring(L"pattern \x4e00"), 1);
    Set(368, std::wstring(L"text \x20ac"), 1);
    root.Reload();
    const OutItem& item = Format(1).OutItems().Item(2);
    for (const auto& c : numbers)
        EXPECT_EQ(c.property(item), c.value) << c.parameter;
    EXPECT_EQ(item.AlignFiller(), std::wstring(L"\xFF\0", 2));
    EXPECT_EQ(item.CodeCutPattern(), L"pattern \x4e00");
    EXPECT_EQ(item.StringText(), L"text \x20ac");
    // Texts are no byte strings: they come back as they are, while a filler goes through the code page.
    Format(1).OutItems().Item(2).AlignFiller(L"\x4e00");
    root.Save(false);
    EXPECT_EQ(Get(362, 1), Value(std::wstring(L"pattern \x4e00")));
    EXPECT_EQ(Get(354, 1), Value(Bytes{'?'}));
}

std::vector<std::int32_t> IndexesOf(const OutItems& items) {
    std::vector<std::int32_t> indexes;
    for (const OutItem& item : items)
        indexes.push_back(item.Index());
    return indexes;
}

OutItems Three() {
    OutItems items;
    for (std::int16_t i = 1; i <= 3; ++i)
        items.Create(i, L"Item" + std::to_wstring(i)).StringText(std::wstring(1, static_cast<wchar_t>(L'a' + i - 1)));
    return items;
}

std::wstring LettersOf(const OutItems& items) {
    std::wstring letters;
    for (const OutItem& item : items)
        letters += item.StringText().empty() ? L"+" : item.StringText();
    return letters;
}

TEST(OutItems, CreatingAndRemovingRenumbersWhatFollows) {
    const struct {
        std::int16_t at;
        const wchar_t* letters;
        std::vector<std::int32_t> indexes;
    } creates[] = {
        {1, L"+abc", {1, 2, 3, 4}}, {2, L"a+bc", {1, 2, 3, 4}}, {3, L"ab+c", {1, 2, 3, 4}},
        {4, L"abc+", {1, 2, 3, 4}}, {9, L"abc+", {1, 2, 3, 9}}, // callers pass Count + 1 at most
    };
    for (const auto& c : creates) {
        OutItems items = Three();
        EXPECT_EQ(items.Create(c.at, L"").Index(), c.at);
        EXPECT_EQ(LettersOf(items), c.letters);
        EXPECT_EQ(IndexesOf(items), c.indexes) << c.at;
    }
    const std::pair<std::int32_t, const wchar_t*> removes[] = {{1, L"bc"}, {2, L"ac"}, {3, L"ab"}};
    for (const auto& [at, letters] : removes) {
        OutItems byPosition = Three();
        OutItems byKey = Three();
        byPosition.Remove(at);
        byKey.Remove(L"Item" + std::to_wstring(at));
        for (const OutItems* items : {&byPosition, &byKey}) {
            EXPECT_EQ(LettersOf(*items), letters);
            EXPECT_EQ(IndexesOf(*items), (std::vector<std::int32_t>{1, 2}));
        }
    }
}

TEST(OutItems, WhatDoesNotExistOrIsTakenRaisesAndChangesNothing) {
    OutItems items = Three();
    for (const auto& action : std::vector<std::function<void()>>{
             [&] { items.Item(0); }, [&] { items.Item(4); }, [&] { items.Item(L"Item4"); }, [&] { items.Remove(0); },
             [&] { items.Remove(4); }, [&] { items.Remove(L"other"); }, [&] { items.Create(0, L""); },
             [&] { items.Create(-1, L""); }, [&] { items.Create(1, L"Item3"); }, [&] { items.Create(4, L"Item1"); }}) {
        EXPECT_EQ(test::ErrorOf(action), 5);
        EXPECT_EQ(LettersOf(items), L"abc");
        EXPECT_EQ(IndexesOf(items), (std::vector<std::int32_t>{1, 2, 3}));
    }
    OutItems full;
    for (std::int32_t i = 1; i <= 32767; ++i)
        full.Create(static_cast<std::int16_t>(i), L"");
    EXPECT_EQ(test::ErrorOf([&] { full.Create(1, L""); }), 6);
    EXPECT_EQ(full.Count(), 32767);
    EXPECT_EQ(full.Item(32767).Index(), 32767);
}

TEST(OutItems, AKeyIsKnownInWhateverOrderTheKeysCame) {
    const struct {
        std::vector<std::wstring> keys;
        std::int32_t taken; ///< position of the one that is asked for once more
    } cases[] = {
        {{L"Item8", L"Item9", L"Item10"}, 3},
        {{L"Item8", L"Item9", L"Item10"}, 2},
        {{L"Item10", L"Item9"}, 1},
        {{L"Item10", L"Item9"}, 2},
        {{L"b", L"a", L"c"}, 1},
        {{L"a", L"", L"b"}, 1},
        {{L"", L"b", L"a"}, 3},
    };
    for (const auto& c : cases) {
        OutItems items;
        for (const std::wstring& key : c.keys)
            items.Create(static_cast<std::int16_t>(items.Count() + 1), key);
        const std::wstring& taken = c.keys[static_cast<std::size_t>(c.taken) - 1];
        SCOPED_TRACE(testing::Message() << testing::PrintToString(c.keys) << " " << c.taken);
        const auto end = static_cast<std::int16_t>(c.keys.size() + 1);
        EXPECT_EQ(test::ErrorOf([&] { items.Create(end, taken); }), 5);
        EXPECT_EQ(test::ErrorOf([&] { items.Create(1, taken); }), 5);
        EXPECT_EQ(&items.Item(taken), &items.Item(c.taken));
        items.Remove(taken);
        EXPECT_EQ(test::ErrorOf([&] { items.Item(taken); }), 5);
        const OutItem& anew = items.Create(1, taken);
        EXPECT_EQ(&items.Item(taken), &anew);
    }
}

/// Create, move, add and remove at random, against a plain list of texts.
TEST(OutItems, StayInStepWithAPlainListUnderRandomChanges) {
    std::mt19937 random(kSeed);
    OutItems items;
    std::vector<std::wstring> plain;
    for (int step = 0; step < 3000; ++step) {
        SCOPED_TRACE(testing::Message() << "seed " << kSeed << ", step " << step);
        const auto at = static_cast<std::int16_t>(1 + random() % (plain.size() + 1));
        const bool there = at <= static_cast<std::int16_t>(plain.size());
        const std::wstring name = L"K" + std::to_wstring(step);
        switch (random() % 5) {
        case 0:
        case 1:
            items.Create(at, name).StringText(name);
            plain.insert(plain.begin() + at - 1, name);
            break;
        case 2: // a move: taken out and put in elsewhere
            if (there) {
                auto item = items.Remove(at);
                const std::wstring moved = plain[static_cast<std::size_t>(at) - 1];
                plain.erase(plain.begin() + at - 1);
                const auto to = static_cast<std::int16_t>(1 + random() % (plain.size() + 1));
                items.Add(std::move(item), to, moved);
                plain.insert(plain.begin() + to - 1, moved);
            }
            break;
        case 3:
            if (there) {
                items.Remove(at);
                plain.erase(plain.begin() + at - 1);
            }
            break;
        default:
            if (there) {
                items.Remove(plain[static_cast<std::size_t>(at) - 1]);
                plain.erase(plain.begin() + at - 1);
            }
        }
        ASSERT_EQ(items.Count(), static_cast<std::int32_t>(plain.size()));
        for (std::size_t i = 0; i < plain.size(); ++i) {
            const OutItem& item = items.Item(static_cast<std::int32_t>(i) + 1);
            ASSERT_EQ(item.StringText(), plain[i]);
            ASSERT_EQ(item.Index(), static_cast<std::int16_t>(i + 1));
            ASSERT_EQ(&items.Item(plain[i]), &item);
        }
    }
}

TEST(OutItem, ItsKeyComesFromTheTypeOfItsCategory) {
    const auto keyOf = [](std::int32_t category, std::int32_t codeRelType, std::int32_t globalType) {
        OutItem item;
        item.ItemCategory(category);
        item.CodeRelType(codeRelType);
        item.GlobalType(globalType);
        return item.GetItemTypeKey();
    };
    std::map<std::pair<std::int32_t, std::int32_t>, std::wstring> keys;
    for (const CatalogueEntry& entry : Catalogue())
        keys[{entry.category, entry.type}] = entry.key;
    for (std::int32_t type = -2; type < 300; ++type) {
        EXPECT_EQ(keyOf(0, type, 3), (keys[{0, type}])) << type;
        EXPECT_EQ(keyOf(1, 3, type), (keys[{1, type}])) << type;
        EXPECT_EQ(keyOf(2, type, type), L"MiscString") << type;
        EXPECT_EQ(keyOf(3, type, type), L"") << type;
        EXPECT_EQ(keyOf(-1, type, type), L"") << type;
    }
    EXPECT_EQ(keyOf(0, 29, 29), L"") << "it has a picture, and no entry";
}

} // namespace
} // namespace orv::model
