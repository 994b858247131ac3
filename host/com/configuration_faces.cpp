#include "host/com/configuration_faces.h"

#include "host/com/record_faces.h"
#include "host/com/service_face.h"
#include "host/com/values.h"

namespace orv::host {
namespace {

// Answered by our own faces only, so that a configuration handed back is known to be ours.
constexpr IID kOwnConfiguration = {0x1d0c6f5a, 0x55a3, 0x4b7e, {0x9b, 0x1f, 0x62, 0xd4, 0x0c, 0x1e, 0x88, 0x37}};

/// Left out arguments arrive as an error value; scripts may pass nothing at all.
bool IsOmitted(const VARIANT& argument) {
    return argument.vt == VT_EMPTY || (argument.vt == VT_ERROR && argument.scode == DISP_E_PARAMNOTFOUND);
}

} // namespace

ConfigurationFace::ConfigurationFace(std::shared_ptr<device::Configuration> configuration)
    : configuration_(std::move(configuration)) {}

void* ConfigurationFace::Find(REFIID iid) {
    return iid == kOwnConfiguration ? this : Dual::Find(iid);
}

std::shared_ptr<device::Configuration> ConfigurationFace::Behind(IOrvConfiguration* face) {
    Require(face);
    void* own = nullptr;
    if (FAILED(face->QueryInterface(kOwnConfiguration, &own)))
        throw Error(error_number::kInvalidArgument);
    const auto held = ComPtr<ConfigurationFace>::Adopt(static_cast<ConfigurationFace*>(own));
    return held->configuration_;
}

STDMETHODIMP ConfigurationFace::get_AccessLevel(LONG* level) {
    return Give(level, [&] { return configuration_->AccessLevel(); });
}

STDMETHODIMP ConfigurationFace::put_AccessLevel(LONG level) {
    return Try([&] { configuration_->SetAccessLevel(level); });
}

STDMETHODIMP ConfigurationFace::get_InteractiveMode(VARIANT_BOOL* on) {
    return Give(on, [&] { return ToVariantBool(configuration_->InteractiveMode()); });
}

STDMETHODIMP ConfigurationFace::put_InteractiveMode(VARIANT_BOOL on) {
    return Try([&] { configuration_->SetInteractiveMode(on != VARIANT_FALSE); });
}

STDMETHODIMP ConfigurationFace::GetMIBSAPMonitor(IOrvMIBSAPMonitor** service) {
    return Give(service, [&] { return Make<MibSapFace>(configuration_->GetMibSapService()).Detach(); });
}

STDMETHODIMP ConfigurationFace::GetDeviceRecords(IOrvDeviceRecords** records) {
    return Give(records, [&] { return Make<DeviceRecordsFace>(configuration_->GetDeviceRecords()).Detach(); });
}

ConfigurationManagerFace::ConfigurationManagerFace(std::shared_ptr<device::ConfigurationManager> manager)
    : manager_(std::move(manager)) {}

STDMETHODIMP ConfigurationManagerFace::GetConfiguration(VARIANT selector, VARIANT detail,
                                                        IOrvConfiguration** configuration) {
    return Give(configuration, [&] {
        // The bench has one configuration: there is nothing to select.
        if (!IsOmitted(selector) || !IsOmitted(detail))
            throw Error(error_number::kInvalidArgument);
        return Make<ConfigurationFace>(manager_->GetConfiguration()).Detach();
    });
}

STDMETHODIMP ConfigurationManagerFace::ReleaseConfiguration(IOrvConfiguration* configuration) {
    return Try([&] { manager_->ReleaseConfiguration(ConfigurationFace::Behind(configuration)); });
}

} // namespace orv::host
