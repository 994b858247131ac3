// The host's MIB/SAP service.
#include "addon/com/automation.h"
#include "addon/com/event_sink.h"
#include "addon/com/failure.h"
#include "addon/com/host_adapters.h"

namespace orv::addon::com {
namespace {

class MibSapAdapter final : public device::MibSapService {
  public:
    explicit MibSapAdapter(ComPtr<IOrvMIBSAPMonitor> service) : service_(std::move(service)) {}
    MibSapAdapter(const MibSapAdapter&) = delete;
    MibSapAdapter& operator=(const MibSapAdapter&) = delete;
    ~MibSapAdapter() override { Silence(); }

    void Connect(std::int32_t deviceAddress, std::shared_ptr<device::MibSapEvents> events) override {
        Silence();
        sink_ = ComPtr<EventSink>(new EventSink(std::move(events)));
        Call(service_, &IOrvMIBSAPMonitor::Connect, LONG{deviceAddress}, static_cast<IOrvMIBSAPEvents*>(sink_.Get()));
    }
    void Disconnect() override {
        // Silent even when the service refuses: an answer to a given-up connection is nobody's.
        Silence();
        Call(service_, &IOrvMIBSAPMonitor::Disconnect);
    }
    void StartSession(const std::wstring& accessLevel, const std::wstring& password) override {
        Call(service_, &IOrvMIBSAPMonitor::StartSession, Bstr(accessLevel).Get(), Bstr(password).Get());
    }
    void EndSession(const std::wstring& mode) override {
        Call(service_, &IOrvMIBSAPMonitor::EndSession, Bstr(mode).Get());
    }
    void GetEntry(const std::wstring& entry) override {
        Call(service_, &IOrvMIBSAPMonitor::GetEntry, Bstr(entry).Get());
    }
    void SetNumericEntry(const std::wstring& entry, const std::wstring& decimal) override {
        Call(service_, &IOrvMIBSAPMonitor::SetNumericEntry, Bstr(entry).Get(), Bstr(decimal).Get());
    }
    void SetStringEntry(const std::wstring& entry, const std::wstring& text) override {
        Call(service_, &IOrvMIBSAPMonitor::SetStringEntry, Bstr(entry).Get(), Bstr(text).Get());
    }

  private:
    void Silence() {
        if (sink_)
            sink_->Silence();
        sink_ = nullptr;
    }

    ComPtr<IOrvMIBSAPMonitor> service_;
    ComPtr<EventSink> sink_;
};

} // namespace

std::shared_ptr<device::MibSapService> AdaptMibSap(ComPtr<IOrvMIBSAPMonitor> service) {
    return std::make_shared<MibSapAdapter>(std::move(service));
}

} // namespace orv::addon::com
