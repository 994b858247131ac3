#include "host/sim/bench_core.h"
#include "text/error.h"

namespace orv::sim {
namespace {

class BenchTable final : public device::ParameterTable {
  public:
    BenchTable(std::shared_ptr<HostCore> core, ParameterStore& store) : core_(std::move(core)), store_(store) {}

    device::EntryHandle FindByNumber(std::int32_t number) override {
        core_->gate.Enter("ParameterTable.FindByNumber", [&] { return std::to_wstring(number); });
        return Visible(store_.FindNumber(number), core_->accessLevel);
    }

    device::EntryHandle FindByPath(const std::wstring& path, std::int32_t accessLevel) override {
        core_->gate.Enter("ParameterTable.FindByPath", [&] { return Arguments({path, std::to_wstring(accessLevel)}); });
        return Visible(store_.FindName(path), accessLevel);
    }

    std::wstring EntryName(device::EntryHandle entry, std::int16_t element, std::int32_t accessLevel) override {
        core_->gate.Enter("ParameterTable.EntryName", [&] {
            return Arguments({std::to_wstring(entry), std::to_wstring(element), std::to_wstring(accessLevel)});
        });
        const ElementAddress address = Element(entry, element);
        return store_.Parameter(address).level > accessLevel ? std::wstring() : store_.Name(address);
    }

    device::Value GetValue(device::EntryHandle entry, std::int16_t element) override {
        core_->gate.Enter("ParameterTable.GetValue", [&] {
            return Arguments({std::to_wstring(entry), std::to_wstring(element)});
        });
        return store_.Get(Element(entry, element));
    }

    void SetValue(device::EntryHandle entry, const device::Value& value) override {
        core_->gate.Enter("ParameterTable.SetValue", [&] {
            return Arguments({std::to_wstring(entry), device::LogForm(value)});
        });
        store_.Set(Element(entry, 0), value);
    }

    device::Description Describe(device::EntryHandle entry) override {
        core_->gate.Enter("ParameterTable.Describe", [&] { return std::to_wstring(entry); });
        return store_.Parameter(Element(entry, 0)).details;
    }

    void SetInteractiveMode(bool on) override {
        core_->gate.Enter("ParameterTable.SetInteractiveMode", [&] { return std::to_wstring(on ? 1 : 0); });
        core_->tableInteractive = on;
    }

  private:
    device::EntryHandle Visible(const std::optional<ElementAddress>& address, std::int32_t accessLevel) const {
        if (!address || store_.Parameter(*address).level > accessLevel)
            return 0;
        return store_.Ordinal(*address) + 1;
    }

    /// `element` counts from the element that the handle names.
    ElementAddress Element(device::EntryHandle entry, std::int16_t element) const {
        if (entry < 1)
            throw Error(error_number::kInvalidArgument);
        ElementAddress address = store_.At(entry - 1);
        address.element += element;
        if (address.element < 0 || address.element >= store_.Parameter(address).details.elementCount)
            throw Error(error_number::kSubscript);
        return address;
    }

    std::shared_ptr<HostCore> core_;
    ParameterStore& store_; ///< owned by the core
};

} // namespace

std::shared_ptr<device::ParameterTable> MakeTable(std::shared_ptr<HostCore> core, ParameterStore& store) {
    return std::make_shared<BenchTable>(std::move(core), store);
}

} // namespace orv::sim
