// Configuration manager, configuration, device records and parameter tables.
#include "addon/com/automation.h"
#include "addon/com/failure.h"
#include "addon/com/host_adapters.h"
#include "addon/com/values.h"

namespace orv::addon::com {
namespace {

/// An object that the host reports success for and does not give.
template <typename I>
ComPtr<I> Present(ComPtr<I> object) {
    if (!object)
        throw Error(error_number::kObjectNotSet);
    return object;
}

device::Description ReadDescription(const ComPtr<IOrvParameterDescription>& source) {
    using I = IOrvParameterDescription;
    device::Description read;
    LONG number = 0;
    const auto get = [&](auto method) {
        number = 0;
        Call(source, method, &number);
        return static_cast<std::int32_t>(number);
    };
    read.elementCount = get(&I::get_ElementCount);
    const std::int32_t choices = get(&I::get_ChoicesCount);
    for (std::int32_t i = 0; i < choices; ++i) {
        Bstr label;
        Call(source, &I::get_ChoiceValue, LONG{i}, &number);
        Call(source, &I::get_ChoiceLabel, LONG{i}, label.Put());
        read.choices.push_back({static_cast<std::int32_t>(number), label.Text()});
    }
    VARIANT_BOOL hasRange = VARIANT_FALSE;
    Call(source, &I::get_HasRange, &hasRange);
    read.hasRange = hasRange != VARIANT_FALSE;
    read.minimum = get(&I::get_Minimum);
    read.maximum = get(&I::get_Maximum);
    read.maximumStringLength = get(&I::get_MaximumStringLength);
    return read;
}

class TableAdapter final : public device::ParameterTable {
  public:
    explicit TableAdapter(ComPtr<IOrvParameterTable> table) : table_(std::move(table)) {}

    device::EntryHandle FindByNumber(std::int32_t number) override {
        LONG entry = 0;
        Call(table_, &IOrvParameterTable::FindByNumber, LONG{number}, &entry);
        return entry;
    }
    device::EntryHandle FindByPath(const std::wstring& path, std::int32_t accessLevel) override {
        LONG entry = 0;
        Call(table_, &IOrvParameterTable::FindByPath, Bstr(path).Get(), LONG{accessLevel}, &entry);
        return entry;
    }
    std::wstring EntryName(device::EntryHandle entry, std::int16_t element, std::int32_t accessLevel) override {
        Bstr name;
        Call(table_, &IOrvParameterTable::EntryName, LONG{entry}, SHORT{element}, LONG{accessLevel}, name.Put());
        return name.Text();
    }
    device::Value GetValue(device::EntryHandle entry, std::int16_t element) override {
        Variant value;
        Call(table_, &IOrvParameterTable::GetValue, LONG{entry}, SHORT{element}, value.Put());
        return ToValue(value.Get());
    }
    void SetValue(device::EntryHandle entry, const device::Value& value) override {
        const Variant variant = ToVariant(value);
        Call(table_, &IOrvParameterTable::SetValue, LONG{entry}, VARIANT{variant.Get()});
    }
    device::Description Describe(device::EntryHandle entry) override {
        ComPtr<IOrvParameterDescription> description;
        Call(table_, &IOrvParameterTable::Describe, LONG{entry}, description.Put());
        return ReadDescription(Present(std::move(description)));
    }
    void SetInteractiveMode(bool on) override { Call(table_, &IOrvParameterTable::put_InteractiveMode, FromBool(on)); }

  private:
    ComPtr<IOrvParameterTable> table_;
};

class RecordAdapter final : public device::DeviceRecord {
  public:
    explicit RecordAdapter(ComPtr<IOrvDeviceRecord> record) : record_(std::move(record)) {}
    std::shared_ptr<device::ParameterTable> GetParameterTable(std::int32_t argument) override {
        ComPtr<IOrvParameterTable> table;
        Call(record_, &IOrvDeviceRecord::GetParameterTable, LONG{argument}, table.Put());
        return std::make_shared<TableAdapter>(Present(std::move(table)));
    }

  private:
    ComPtr<IOrvDeviceRecord> record_;
};

class RecordsAdapter final : public device::DeviceRecords {
  public:
    explicit RecordsAdapter(ComPtr<IOrvDeviceRecords> records) : records_(std::move(records)) {}
    std::shared_ptr<device::DeviceRecord> Record(std::int16_t cluster, std::int16_t device) override {
        ComPtr<IOrvDeviceRecord> record;
        Call(records_, &IOrvDeviceRecords::Record, SHORT{cluster}, SHORT{device}, record.Put());
        return std::make_shared<RecordAdapter>(Present(std::move(record)));
    }

  private:
    ComPtr<IOrvDeviceRecords> records_;
};

class ConfigurationAdapter final : public device::Configuration {
  public:
    explicit ConfigurationAdapter(ComPtr<IOrvConfiguration> configuration) : configuration_(std::move(configuration)) {}
    IOrvConfiguration* Object() const { return configuration_.Get(); }

    std::int32_t AccessLevel() override {
        LONG level = 0;
        Call(configuration_, &IOrvConfiguration::get_AccessLevel, &level);
        return level;
    }
    void SetAccessLevel(std::int32_t level) override {
        Call(configuration_, &IOrvConfiguration::put_AccessLevel, LONG{level});
    }
    bool InteractiveMode() override {
        VARIANT_BOOL on = VARIANT_FALSE;
        Call(configuration_, &IOrvConfiguration::get_InteractiveMode, &on);
        return on != VARIANT_FALSE;
    }
    void SetInteractiveMode(bool on) override {
        Call(configuration_, &IOrvConfiguration::put_InteractiveMode, FromBool(on));
    }
    std::shared_ptr<device::MibSapService> GetMibSapService() override {
        ComPtr<IOrvMIBSAPMonitor> service;
        Call(configuration_, &IOrvConfiguration::GetMIBSAPMonitor, service.Put());
        return AdaptMibSap(Present(std::move(service)));
    }
    std::shared_ptr<device::DeviceRecords> GetDeviceRecords() override {
        ComPtr<IOrvDeviceRecords> records;
        Call(configuration_, &IOrvConfiguration::GetDeviceRecords, records.Put());
        return std::make_shared<RecordsAdapter>(Present(std::move(records)));
    }

  private:
    ComPtr<IOrvConfiguration> configuration_;
};

class ManagerAdapter final : public device::ConfigurationManager {
  public:
    explicit ManagerAdapter(ComPtr<IOrvConfigurationManager> manager) : manager_(std::move(manager)) {}
    std::shared_ptr<device::Configuration> GetConfiguration() override {
        ComPtr<IOrvConfiguration> configuration;
        Call(manager_, &IOrvConfigurationManager::GetConfiguration, VARIANT{Variant::Missing().Get()},
             VARIANT{Variant::Missing().Get()}, configuration.Put());
        return std::make_shared<ConfigurationAdapter>(Present(std::move(configuration)));
    }
    void ReleaseConfiguration(const std::shared_ptr<device::Configuration>& configuration) override {
        const auto* adapter = dynamic_cast<const ConfigurationAdapter*>(configuration.get());
        Call(manager_, &IOrvConfigurationManager::ReleaseConfiguration, adapter ? adapter->Object() : nullptr);
    }

  private:
    ComPtr<IOrvConfigurationManager> manager_;
};

} // namespace

std::shared_ptr<device::ConfigurationManager> AdaptManager(ComPtr<IOrvConfigurationManager> manager) {
    return std::make_shared<ManagerAdapter>(Present(std::move(manager)));
}

} // namespace orv::addon::com
