#include "host/com/service_face.h"

#include "host/com/values.h"

namespace orv::host {
namespace {

/// Hands the service's events on to the sink. What a sink answers is its own affair: the service has nobody to tell.
class SinkProxy final : public device::MibSapEvents {
  public:
    explicit SinkProxy(IOrvMIBSAPEvents* sink) : sink_(sink) {}
    void Connected() override { Hold()->Connected(); }
    void Error(std::int32_t code) override { Hold()->Error(code); }
    void ResponseReceived(const std::wstring& text) override { Hold()->ResponseReceived(ComText(text).Get()); }

  private:
    // A sink may disconnect from inside an event, which lets go of this proxy.
    ComPtr<IOrvMIBSAPEvents> Hold() const { return sink_; }
    ComPtr<IOrvMIBSAPEvents> sink_;
};

} // namespace

STDMETHODIMP MibSapFace::Connect(LONG deviceAddress, IOrvMIBSAPEvents* events) {
    return Try([&] {
        Require(events);
        service_->Connect(deviceAddress, std::make_shared<SinkProxy>(events));
    });
}

STDMETHODIMP MibSapFace::Disconnect() {
    return Try([&] { service_->Disconnect(); });
}

STDMETHODIMP MibSapFace::StartSession(BSTR accessLevel, BSTR password) {
    return Try([&] { service_->StartSession(TextOf(accessLevel), TextOf(password)); });
}

STDMETHODIMP MibSapFace::EndSession(BSTR mode) {
    return Try([&] { service_->EndSession(TextOf(mode)); });
}

STDMETHODIMP MibSapFace::GetEntry(BSTR entry) {
    return Try([&] { service_->GetEntry(TextOf(entry)); });
}

STDMETHODIMP MibSapFace::SetNumericEntry(BSTR entry, BSTR decimal) {
    return Try([&] { service_->SetNumericEntry(TextOf(entry), TextOf(decimal)); });
}

STDMETHODIMP MibSapFace::SetStringEntry(BSTR entry, BSTR text) {
    return Try([&] { service_->SetStringEntry(TextOf(entry), TextOf(text)); });
}

} // namespace orv::host
