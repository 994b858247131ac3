#include <algorithm>
#include <optional>
#include <ostream>
#include <set>
#include <utility>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/table.h"
#include "cli/values.h"
#include "device/parameter_access.h"
#include "host/sim/utf8.h"

namespace orv::cli {
namespace {

using Parameters = std::vector<const sim::ParameterDescription*>;

/// By number, without copies of what may be millions of values.
Parameters Sorted(const sim::DeviceDescription& device) {
    Parameters sorted;
    sorted.reserve(device.parameters.size());
    for (const sim::ParameterDescription& parameter : device.parameters)
        sorted.push_back(&parameter);
    std::ranges::sort(sorted, {}, [](const sim::ParameterDescription* parameter) { return parameter->number; });
    return sorted;
}

std::wstring NameOf(const sim::ParameterDescription& parameter, std::int32_t element) {
    return parameter.details.elementCount > 1 ? parameter.path + L"[" + std::to_wstring(element) + L"]"
                                              : parameter.path;
}

std::optional<device::Value> ValueOf(const sim::ParameterDescription* parameter, std::int32_t element) {
    if (parameter == nullptr || element >= parameter->details.elementCount)
        return std::nullopt;
    return parameter->values.at(static_cast<std::size_t>(element));
}

/// Two descriptions, entry by entry.
class Comparison {
  public:
    Comparison(const sim::SystemDescription& before, const sim::SystemDescription& after)
        : before_(before), after_(after), host_({}), state_(platform_.services, host_), access_(state_) {}

    bool Print(std::ostream& out) {
        std::set<std::pair<std::int16_t, std::int16_t>> devices;
        for (const sim::SystemDescription* system : {&before_, &after_})
            for (const sim::DeviceDescription& device : system->devices)
                devices.emplace(device.cluster, device.device);
        bool differ = false;
        for (const auto& [cluster, device] : devices)
            differ = Compare(cluster, device, out) || differ;
        return differ;
    }

  private:
    bool Compare(std::int16_t cluster, std::int16_t index, std::ostream& out) {
        const sim::DeviceDescription* before = before_.Find(cluster, index);
        const sim::DeviceDescription* after = after_.Find(cluster, index);
        const std::string caption = "cluster " + std::to_string(cluster) + ", device " + std::to_string(index);
        if (before == nullptr || after == nullptr) {
            out << caption << ": only in the " << (before != nullptr ? "first" : "second") << " file\n";
            return true;
        }
        const Table table = Rows(Sorted(*before), Sorted(*after));
        if (table.Empty())
            return false;
        out << caption << '\n';
        table.Print(out, "  ");
        return true;
    }

    Table Rows(const Parameters& before, const Parameters& after) {
        Table table("rrllll");
        auto was = before.begin();
        auto is = after.begin();
        while (was != before.end() || is != after.end()) {
            const bool takeWas = is == after.end() || (was != before.end() && (*was)->number <= (*is)->number);
            const bool takeIs = was == before.end() || (is != after.end() && (*is)->number <= (*was)->number);
            AddNumber(table, takeWas ? *was++ : nullptr, takeIs ? *is++ : nullptr);
        }
        return table;
    }

    /// A number whose path has changed is two parameters, side by side.
    void AddNumber(Table& table, const sim::ParameterDescription* was, const sim::ParameterDescription* is) {
        const std::int32_t count = std::max(was ? was->details.elementCount : 0, is ? is->details.elementCount : 0);
        const bool moved = was != nullptr && is != nullptr && was->path != is->path;
        const bool backwards = moved && is->path < was->path;
        for (std::int32_t element = 0; element < count; ++element) {
            if (!moved) {
                AddElement(table, element, was, is);
                continue;
            }
            AddElement(table, element, backwards ? nullptr : was, backwards ? is : nullptr);
            AddElement(table, element, backwards ? was : nullptr, backwards ? nullptr : is);
        }
    }

    void AddElement(Table& table, std::int32_t element, const sim::ParameterDescription* was,
                    const sim::ParameterDescription* is) {
        const auto before = ValueOf(was, element);
        const auto after = ValueOf(is, element);
        if (before == after)
            return;
        const sim::ParameterDescription& named = before ? *was : *is;
        table.Add({std::to_wstring(named.number), std::to_wstring(element), NameOf(named, element),
                   Shown(before, after), L"->", Shown(after, before)});
    }

    /// The type stands there where it makes the difference.
    std::wstring Shown(const std::optional<device::Value>& value, const std::optional<device::Value>& other) {
        if (!value)
            return L"(absent)";
        if (std::holds_alternative<std::monostate>(*value))
            return L"(no value)";
        const bool sameType = !other || value->index() == other->index();
        return (sameType ? L"" : TypeName(device::TypeOf(*value)) + L" ") + DisplayValue(*value, access_);
    }

    const sim::SystemDescription& before_;
    const sim::SystemDescription& after_;
    sim::PortablePlatform platform_;
    sim::BenchHost host_;
    device::DeviceState state_;
    device::ParameterAccess access_;
};

} // namespace

int Diff(const std::string& before, const std::string& after, std::ostream& out) {
    const sim::SystemDescription first = sim::LoadDescription(std::filesystem::u8path(before));
    const sim::SystemDescription second = sim::LoadDescription(std::filesystem::u8path(after));
    return Comparison(first, second).Print(out) ? status::kFound : status::kDone;
}

} // namespace orv::cli
