#include <algorithm>
#include <map>
#include <ostream>
#include <set>
#include <tuple>
#include <utility>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/table.h"
#include "cli/values.h"
#include "device/parameter_access.h"
#include "host/sim/utf8.h"

namespace orv::cli {
namespace {

struct Key {
    std::int32_t number;
    std::int32_t element;
    std::wstring path;
    bool operator<(const Key& other) const {
        return std::tie(number, element, path) < std::tie(other.number, other.element, other.path);
    }
};

struct Entry {
    std::wstring name;
    const device::Value* value;
};

using Entries = std::map<Key, Entry>;

Entries EntriesOf(const sim::DeviceDescription* device) {
    Entries entries;
    if (device == nullptr)
        return entries;
    for (const sim::ParameterDescription& parameter : device->parameters)
        for (std::int32_t element = 0; element < parameter.details.elementCount; ++element) {
            const std::wstring suffix =
                parameter.details.elementCount > 1 ? L"[" + std::to_wstring(element) + L"]" : std::wstring();
            entries[{parameter.number, element, parameter.path}] = {
                parameter.path + suffix, &parameter.values.at(static_cast<std::size_t>(element))};
        }
    return entries;
}

/// Two descriptions, entry by entry.
class Comparison {
  public:
    Comparison(const sim::SystemDescription& before, const sim::SystemDescription& after)
        : before_(before), after_(after), host_(before), state_(platform_.services, host_), access_(state_) {}

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
        const Table table = Rows(EntriesOf(before), EntriesOf(after));
        if (table.Empty())
            return false;
        out << caption << '\n';
        table.Print(out, "  ");
        return true;
    }

    Table Rows(const Entries& before, const Entries& after) {
        Entries all = before;
        all.insert(after.begin(), after.end());
        Table table("rrllll");
        for (const auto& [key, entry] : all) {
            const auto was = before.find(key);
            const auto is = after.find(key);
            if (was != before.end() && is != after.end() && *was->second.value == *is->second.value)
                continue;
            table.Add({std::to_wstring(key.number), std::to_wstring(key.element), entry.name,
                       Shown(was == before.end() ? nullptr : was->second.value,
                             is == after.end() ? nullptr : is->second.value),
                       L"->",
                       Shown(is == after.end() ? nullptr : is->second.value,
                             was == before.end() ? nullptr : was->second.value)});
        }
        return table;
    }

    /// The type stands there where it makes the difference.
    std::wstring Shown(const device::Value* value, const device::Value* other) {
        if (value == nullptr)
            return L"(absent)";
        if (std::holds_alternative<std::monostate>(*value))
            return L"(no value)";
        const bool sameType = other == nullptr || value->index() == other->index();
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
