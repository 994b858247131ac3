#pragma once
// Device records, parameter tables and descriptions as COM objects.
#include <OrvAddon.h>

#include <memory>

#include "host/com/dual.h"
#include "host/sim/bench_host.h"

namespace orv::host {

class DeviceRecordsFace final : public Dual<IOrvDeviceRecords> {
  public:
    explicit DeviceRecordsFace(std::shared_ptr<device::DeviceRecords> records) : records_(std::move(records)) {}
    STDMETHODIMP Record(SHORT cluster, SHORT device, IOrvDeviceRecord** record) override;

  private:
    std::shared_ptr<device::DeviceRecords> records_;
};

class DeviceRecordFace final : public Dual<IOrvDeviceRecord> {
  public:
    explicit DeviceRecordFace(std::shared_ptr<device::DeviceRecord> record) : record_(std::move(record)) {}
    STDMETHODIMP GetParameterTable(LONG argument, IOrvParameterTable** table) override;

  private:
    std::shared_ptr<device::DeviceRecord> record_;
};

class ParameterTableFace final : public Dual<IOrvParameterTable> {
  public:
    explicit ParameterTableFace(std::shared_ptr<device::ParameterTable> table) : table_(std::move(table)) {}
    STDMETHODIMP FindByNumber(LONG number, LONG* entry) override;
    STDMETHODIMP FindByPath(BSTR path, LONG accessLevel, LONG* entry) override;
    STDMETHODIMP EntryName(LONG entry, SHORT element, LONG accessLevel, BSTR* name) override;
    STDMETHODIMP GetValue(LONG entry, SHORT element, VARIANT* value) override;
    STDMETHODIMP SetValue(LONG entry, VARIANT value) override;
    STDMETHODIMP Describe(LONG entry, IOrvParameterDescription** description) override;
    STDMETHODIMP put_InteractiveMode(VARIANT_BOOL on) override;

  private:
    std::shared_ptr<device::ParameterTable> table_;
};

class DescriptionFace final : public Dual<IOrvParameterDescription> {
  public:
    explicit DescriptionFace(device::Description description) : description_(std::move(description)) {}
    STDMETHODIMP get_ElementCount(LONG* count) override;
    STDMETHODIMP get_ChoicesCount(LONG* count) override;
    STDMETHODIMP get_ChoiceValue(LONG index, LONG* value) override;
    STDMETHODIMP get_ChoiceLabel(LONG index, BSTR* label) override;
    STDMETHODIMP get_HasRange(VARIANT_BOOL* hasRange) override;
    STDMETHODIMP get_Minimum(LONG* minimum) override;
    STDMETHODIMP get_Maximum(LONG* maximum) override;
    STDMETHODIMP get_MaximumStringLength(LONG* length) override;

  private:
    const device::Choice& At(LONG index) const;
    device::Description description_;
};

} // namespace orv::host
