// The order of reads and writes over a whole load and a whole save.
#include <gtest/gtest.h>

#include "tests/model/fixture.h"
#include "tests/model/wire.h"

namespace orv::model {
namespace {

using device::WireType;

constexpr std::int32_t kSlots = 10;
constexpr std::int32_t kItemSlots = 20;
constexpr std::int32_t kItems[] = {5, 4, 1, 0}; ///< of the sample's formats
constexpr std::int32_t kGroups = 2;             ///< of the sample's expression

const std::wstring kModelPath = L"/SystemInfo/Model/ModelIndex";

std::string Narrow(const std::wstring& text) {
    return {text.begin(), text.end()};
}

/// Says "number[element] level", or "count of number level".
class ExpectedReads {
  public:
    explicit ExpectedReads(std::int32_t level) : level_(level) {}

    void Read(std::int32_t number, std::int32_t element = 0) { Read(std::to_string(number), element, level_); }
    void Read(const std::string& id, std::int32_t element, std::int32_t level) {
        list.push_back(id + "[" + std::to_string(element) + "] " + std::to_string(level));
    }
    void Code(std::int32_t number, std::int32_t element) { Read(std::to_string(number), element, 3); }
    void CodeCount(std::int32_t number) { list.push_back("count of " + std::to_string(number) + " 3"); }

    std::vector<std::string> list;

  private:
    std::int32_t level_;
};

void ReadCodes(ExpectedReads& reads) {
    for (const auto& row : wire::kCodes)
        reads.Code(row.number, 0);
    reads.CodeCount(1);
    for (std::int32_t slot = 0; slot < kSlots; ++slot)
        for (const auto& row : wire::kCodeSlot)
            reads.Code(row.number, slot);
    reads.CodeCount(17);
    for (std::int32_t group = 0; group < kGroups; ++group)
        for (const auto& row : wire::kGroup)
            reads.Code(row.number, group);
}

void ReadFormats(ExpectedReads& reads) {
    reads.Read(340);
    for (std::int32_t format = 0; format < 4; ++format) {
        for (const auto& row : wire::kFormat)
            reads.Read(row.number, format);
        reads.Read(350);
        reads.Read(349, format);
        for (std::int32_t item = 0; item < kItems[format]; ++item)
            for (const auto& row : wire::kItem)
                reads.Read(row.number, format * kItemSlots + item);
    }
}

std::vector<std::string> WholeLoad(std::int32_t level) {
    ExpectedReads reads(level);
    reads.Read(330);
    reads.Read(399);
    for (std::int32_t number = 400; number <= 418; ++number)
        reads.Read(number);
    ReadCodes(reads);
    for (const auto& row : wire::kStandardFormat)
        reads.Read(row.number);
    ReadFormats(reads);
    for (const std::int32_t number : {370, 371, 372})
        reads.Read(number);
    reads.Read(Narrow(kModelPath), 0, level);
    reads.Read(601);
    reads.Read(603);
    return reads.list;
}

/// The reads among the calls that a host saw. Where the item slots are counted is nobody's business.
std::vector<std::string> ReadsOf(const std::vector<sim::CallGate::Call>& log) {
    std::vector<std::string> reads;
    std::string level = "before the first level";
    std::string id;
    for (const auto& call : log) {
        const std::string arguments = Narrow(call.arguments);
        if (call.name == "Configuration.SetAccessLevel")
            level = arguments;
        else if (call.name.starts_with("ParameterTable.Find"))
            id = arguments.substr(0, arguments.find(','));
        else if (call.name == "ParameterTable.GetValue")
            reads.push_back(id + "[" + arguments.substr(arguments.find(' ') + 1) + "] " + level);
        else if (call.name == "ParameterTable.Describe" && id != "351")
            reads.push_back("count of " + id + " " + level);
    }
    return reads;
}

TEST(WireOrder, AWholeLoadReadsCodesUnderLevelThreeAndTheRestUnderTheCurrentOne) {
    sim::SystemDescription system = test::Sample("conveyor.json");
    for (auto& parameter : system.devices.front().parameters)
        parameter.level = 0; // so that a read under a wrong level is made all the same
    for (const std::int32_t level : {2, 3}) {
        test::Bench bench(system, {}, 0);
        bench.Open(level);
        OutFormatConfig root(bench.state);
        bench.host.Gate().KeepLog(true);
        root.Reload();
        EXPECT_EQ(ReadsOf(bench.host.Gate().Log()), WholeLoad(level));
        EXPECT_EQ(bench.host.AccessLevel(), level);
    }
}

TEST(WireOrder, WhatStandsAboveTheLevelIsLookedUpAndNotRead) {
    test::Bench bench("conveyor.json");
    bench.Open(0);
    OutFormatConfig root(bench.state);
    bench.host.Gate().KeepLog(true);
    root.Reload();
    std::vector<std::string> outsideOfCodes;
    for (const std::string& read : ReadsOf(bench.host.Gate().Log()))
        if (!read.ends_with(" 3"))
            outsideOfCodes.push_back(read);
    EXPECT_EQ(outsideOfCodes,
              (std::vector<std::string>{"340[0] 0", "350[0] 0", "350[0] 0", "350[0] 0", "350[0] 0", "370[0] 0",
                                        "371[0] 0", Narrow(kModelPath) + "[0] 0", "601[0] 0", "603[0] 0"}));
    EXPECT_EQ(root.Codes().Count(), kSlots);
    EXPECT_EQ(root.Codes().Groups().Count(), kGroups);
}

struct Written {
    std::int32_t number;
    std::int32_t element;
    WireType type;
    bool operator==(const Written&) const = default;
};

void PrintTo(const Written& written, std::ostream* out) {
    *out << written.number << '[' << written.element << "] as " << static_cast<int>(written.type);
}

std::vector<Written> WholeSave() {
    std::vector<Written> writes = {{330, 0, WireType::Int16}, {399, 0, WireType::Int32}};
    const auto add = [&](const std::vector<wire::Row>& rows, std::int32_t element) {
        for (const auto& row : rows)
            writes.push_back({row.number, element, row.type});
    };
    for (std::int32_t number = 400; number <= 418; ++number)
        if (number != 408 && number != 411 && number != 417) // the sample's device does not define these
            writes.push_back({number, 0, WireType::ByteArray});
    writes.push_back({372, 0, WireType::Int32});
    add(wire::kCodes, 0);
    for (std::int32_t slot = 0; slot < kSlots; ++slot)
        add(wire::kCodeSlot, slot);
    for (std::int32_t group = 0; group < kGroups; ++group)
        add(wire::kGroup, group);
    add(wire::kStandardFormat, 0);
    for (std::int32_t format = 0; format < 4; ++format) {
        for (std::int32_t item = 0; item < kItems[format]; ++item)
            add(wire::kItem, format * kItemSlots + item);
        writes.push_back({349, format, WireType::Int16});
        add(wire::kFormat, format);
    }
    return writes;
}

class SaveOrder : public test::ModelTest {
  protected:
    SaveOrder() {
        root.Reload();
        plan = root.Plan().writes;
        bench.host.Gate().KeepLog(true);
    }

    std::vector<std::wstring> Arguments(std::string_view name) {
        std::vector<std::wstring> all;
        for (const auto& call : bench.host.Gate().Log())
            if (call.name == name)
                all.push_back(call.arguments);
        return all;
    }
    /// Entries written into the configuration: each is found by its name, then set.
    std::vector<std::wstring> IntoTheConfiguration() {
        std::vector<std::wstring> all;
        std::wstring found;
        for (const auto& call : bench.host.Gate().Log()) {
            if (call.name == "ParameterTable.FindByPath")
                found = call.arguments.substr(0, call.arguments.rfind(L", "));
            if (call.name == "ParameterTable.SetValue")
                all.push_back(found + L" = " + call.arguments.substr(call.arguments.find(L' ') + 1));
        }
        return all;
    }
    std::vector<std::wstring> Planned() const {
        std::vector<std::wstring> all;
        for (const auto& write : plan)
            all.push_back(write.entry + L" = " + device::LogForm(write.value));
        return all;
    }

    std::vector<device::MIBParameter> plan;
};

TEST_F(SaveOrder, ThePlanHasEveryParameterInItsPlaceAndType) {
    std::vector<Written> written;
    for (const auto& write : plan) {
        const auto address = Store().FindName(write.entry);
        ASSERT_TRUE(address) << Narrow(write.entry);
        written.push_back({Store().Parameter(*address).number, address->element, device::TypeOf(write.value)});
    }
    EXPECT_EQ(written, WholeSave());
    ASSERT_GT(plan.size(), 500U);
}

TEST_F(SaveOrder, ASaveWritesThePlanIntoTheConfigurationAndAsksNoDevice) {
    EXPECT_TRUE(root.Save(false));
    EXPECT_EQ(IntoTheConfiguration(), Planned());
    EXPECT_TRUE(Arguments("MibSapService.Connect").empty());
    EXPECT_EQ(root.LastSave().queued, plan.size());
    EXPECT_EQ(root.LastSave().written, plan.size());
}

TEST_F(SaveOrder, AnInteractiveSaveSendsEachWriteBeforeTheConfigurationTakesIt) {
    EXPECT_TRUE(root.Save(true));
    EXPECT_EQ(IntoTheConfiguration(), Planned());
    std::vector<std::wstring> sent;
    std::vector<std::wstring> sets;
    std::vector<char> order;
    for (const auto& call : bench.host.Gate().Log()) {
        const bool number = call.name == "MibSapService.SetNumericEntry";
        const bool text = call.name == "MibSapService.SetStringEntry";
        if (number || text)
            sent.push_back((number ? L"number " : L"text ") + call.arguments.substr(0, call.arguments.find(L", ")));
        if (number || text)
            order.push_back('d');
        else if (call.name == "ParameterTable.SetValue")
            order.push_back('c');
    }
    for (const auto& write : plan) {
        const auto type = device::TypeOf(write.value);
        const bool text = type == WireType::Text || type == WireType::ByteArray;
        sets.push_back((text ? L"text " : L"number ") + write.entry);
    }
    EXPECT_EQ(sent, sets);
    for (std::size_t i = 0; i < order.size(); ++i)
        ASSERT_EQ(order[i], i % 2 == 0 ? 'd' : 'c') << i;
    for (const auto& write : plan)
        EXPECT_EQ(bench.device->Store().Get(*bench.device->Store().FindName(write.entry)), write.value)
            << Narrow(write.entry);
}

} // namespace
} // namespace orv::model
