#pragma once
// The application object and the support object as COM objects.
#include <OrvAddon.h>

#include <memory>

#include "host/com/dual.h"
#include "host/sim/bench_host.h"

namespace orv::host {

class ApplicationFace final : public Dual<IOrvApplication> {
  public:
    explicit ApplicationFace(std::shared_ptr<device::HostApplication> application)
        : application_(std::move(application)) {}
    STDMETHODIMP put_Caption(BSTR caption) override;
    STDMETHODIMP CloseAddOn() override;
    STDMETHODIMP PrepareProgress(LONG argument) override;
    STDMETHODIMP get_HelpName(BSTR* name) override;
    STDMETHODIMP get_HelpLanguage(LONG* language) override;
    STDMETHODIMP get_ExportNameFirst(BSTR* text) override;
    STDMETHODIMP get_ExportNameSecond(BSTR* text) override;

  private:
    std::shared_ptr<device::HostApplication> application_;
};

class SupportFace final : public Dual<IOrvSupport> {
  public:
    explicit SupportFace(std::shared_ptr<device::SupportObject> support) : support_(std::move(support)) {}
    STDMETHODIMP TextToBytes(BSTR text, LONG conversion, LONG locale, VARIANT* bytes) override;
    STDMETHODIMP BytesToText(VARIANT bytes, LONG conversion, LONG locale, BSTR* text) override;
    STDMETHODIMP HexByte(BYTE value, BSTR* text) override;
    STDMETHODIMP AppendToList(BSTR list, BSTR item, BSTR separator, BSTR* text) override;
    STDMETHODIMP Minimum(LONG a, LONG b, LONG* smaller) override;
    STDMETHODIMP ResetProgress() override;
    STDMETHODIMP SetProgressOwner(LONG window) override;
    STDMETHODIMP ShowProgress(BSTR text, BSTR title) override;
    STDMETHODIMP SetProgress(FLOAT percent) override;
    STDMETHODIMP SetProgressText(BSTR text) override;
    STDMETHODIMP Settle(FLOAT value) override;
    STDMETHODIMP HideProgress() override;
    STDMETHODIMP CommitPanel(LONG window) override;
    STDMETHODIMP ComboValue(LONG window, LONG* value) override;
    STDMETHODIMP EditGotFocus(LONG window) override;

  private:
    std::shared_ptr<device::SupportObject> support_;
};

} // namespace orv::host
