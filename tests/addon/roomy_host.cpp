#include "tests/addon/roomy_host.h"

#include <new>
#include <utility>

#include "platform/guarded.h"
#include "tests/addon/short_memory.h"

namespace orv::test {
namespace {

using memory::Inside;
using memory::Outside;

template <typename Call>
auto Out(const Call& call) {
    const Outside outside;
    return call();
}

class Table final : public device::ParameterTable {
  public:
    explicit Table(std::shared_ptr<device::ParameterTable> to) : to_(std::move(to)) {}
    device::EntryHandle FindByNumber(std::int32_t number) override {
        return Out([&] { return to_->FindByNumber(number); });
    }
    device::EntryHandle FindByPath(const std::wstring& path, std::int32_t level) override {
        return Out([&] { return to_->FindByPath(path, level); });
    }
    std::wstring EntryName(device::EntryHandle entry, std::int16_t element, std::int32_t level) override {
        return Out([&] { return to_->EntryName(entry, element, level); });
    }
    device::Value GetValue(device::EntryHandle entry, std::int16_t element) override {
        return Out([&] { return to_->GetValue(entry, element); });
    }
    void SetValue(device::EntryHandle entry, const device::Value& value) override {
        Out([&] { to_->SetValue(entry, value); });
    }
    device::Description Describe(device::EntryHandle entry) override {
        return Out([&] { return to_->Describe(entry); });
    }
    void SetInteractiveMode(bool on) override {
        Out([&] { to_->SetInteractiveMode(on); });
    }

  private:
    std::shared_ptr<device::ParameterTable> to_;
};

class Record final : public device::DeviceRecord {
  public:
    explicit Record(std::shared_ptr<device::DeviceRecord> to) : to_(std::move(to)) {}
    std::shared_ptr<device::ParameterTable> GetParameterTable(std::int32_t argument) override {
        return Out([&] { return std::make_shared<Table>(to_->GetParameterTable(argument)); });
    }

  private:
    std::shared_ptr<device::DeviceRecord> to_;
};

class Records final : public device::DeviceRecords {
  public:
    explicit Records(std::shared_ptr<device::DeviceRecords> to) : to_(std::move(to)) {}
    std::shared_ptr<device::DeviceRecord> Record(std::int16_t cluster, std::int16_t device) override {
        return Out([&] { return std::make_shared<test::Record>(to_->Record(cluster, device)); });
    }

  private:
    std::shared_ptr<device::DeviceRecords> to_;
};

/// Through an automation face no failure of the receiver reaches the service.
class Events final : public device::MibSapEvents {
  public:
    explicit Events(std::shared_ptr<device::MibSapEvents> to) : to_(std::move(to)) {}
    void Connected() override {
        In([&] { to_->Connected(); });
    }
    void Error(std::int32_t code) override {
        In([&] { to_->Error(code); });
    }
    void ResponseReceived(const std::wstring& text) override {
        In([&] { to_->ResponseReceived(text); });
    }

  private:
    template <typename Call>
    void In(const Call& call) {
        const Inside inside;
        try {
            call();
        } catch (...) {
        }
    }
    std::shared_ptr<device::MibSapEvents> to_;
};

class Service final : public device::MibSapService {
  public:
    explicit Service(std::shared_ptr<device::MibSapService> to) : to_(std::move(to)) {}
    void Connect(std::int32_t address, std::shared_ptr<device::MibSapEvents> events) override {
        Out([&] { to_->Connect(address, std::make_shared<Events>(std::move(events))); });
    }
    void Disconnect() override {
        Out([&] { to_->Disconnect(); });
    }
    void StartSession(const std::wstring& level, const std::wstring& password) override {
        Out([&] { to_->StartSession(level, password); });
    }
    void EndSession(const std::wstring& mode) override {
        Out([&] { to_->EndSession(mode); });
    }
    void GetEntry(const std::wstring& entry) override {
        Out([&] { to_->GetEntry(entry); });
    }
    void SetNumericEntry(const std::wstring& entry, const std::wstring& decimal) override {
        Out([&] { to_->SetNumericEntry(entry, decimal); });
    }
    void SetStringEntry(const std::wstring& entry, const std::wstring& text) override {
        Out([&] { to_->SetStringEntry(entry, text); });
    }

  private:
    std::shared_ptr<device::MibSapService> to_;
};

class Configuration final : public device::Configuration {
  public:
    explicit Configuration(std::shared_ptr<device::Configuration> to) : to_(std::move(to)) {}
    std::int32_t AccessLevel() override {
        return Out([&] { return to_->AccessLevel(); });
    }
    void SetAccessLevel(std::int32_t level) override {
        Out([&] { to_->SetAccessLevel(level); });
    }
    bool InteractiveMode() override {
        return Out([&] { return to_->InteractiveMode(); });
    }
    void SetInteractiveMode(bool on) override {
        Out([&] { to_->SetInteractiveMode(on); });
    }
    std::shared_ptr<device::MibSapService> GetMibSapService() override {
        return Out([&] { return std::make_shared<Service>(to_->GetMibSapService()); });
    }
    std::shared_ptr<device::DeviceRecords> GetDeviceRecords() override {
        return Out([&] { return std::make_shared<Records>(to_->GetDeviceRecords()); });
    }
    const std::shared_ptr<device::Configuration>& To() const { return to_; }

  private:
    std::shared_ptr<device::Configuration> to_;
};

class Manager final : public device::ConfigurationManager {
  public:
    explicit Manager(std::shared_ptr<device::ConfigurationManager> to) : to_(std::move(to)) {}
    std::shared_ptr<device::Configuration> GetConfiguration() override {
        return Out([&] { return std::make_shared<Configuration>(to_->GetConfiguration()); });
    }
    void ReleaseConfiguration(const std::shared_ptr<device::Configuration>& configuration) override {
        const auto* wrapped = dynamic_cast<const Configuration*>(configuration.get());
        Out([&] { to_->ReleaseConfiguration(wrapped ? wrapped->To() : nullptr); });
    }

  private:
    std::shared_ptr<device::ConfigurationManager> to_;
};

class Support final : public device::SupportObject {
  public:
    explicit Support(std::shared_ptr<device::SupportObject> to) : to_(std::move(to)) {}
    Bytes TextToBytes(const std::wstring& text, std::int32_t conversion, std::int32_t locale) override {
        return Out([&] { return to_->TextToBytes(text, conversion, locale); });
    }
    std::wstring BytesToText(const Bytes& bytes, std::int32_t conversion, std::int32_t locale) override {
        return Out([&] { return to_->BytesToText(bytes, conversion, locale); });
    }
    std::wstring HexByte(std::uint8_t byte) override {
        return Out([&] { return to_->HexByte(byte); });
    }
    std::wstring AppendToList(const std::wstring& list, const std::wstring& item,
                              const std::wstring& separator) override {
        return Out([&] { return to_->AppendToList(list, item, separator); });
    }
    std::int32_t Minimum(std::int32_t a, std::int32_t b) override {
        return Out([&] { return to_->Minimum(a, b); });
    }
    void ResetProgress() override {
        Out([&] { to_->ResetProgress(); });
    }
    void SetProgressOwner(device::WindowHandle owner) override {
        Out([&] { to_->SetProgressOwner(owner); });
    }
    void ShowProgress(const std::wstring& text, const std::wstring& title) override {
        Out([&] { to_->ShowProgress(text, title); });
    }
    void SetProgress(float percent) override {
        Out([&] { to_->SetProgress(percent); });
    }
    void SetProgressText(const std::wstring& text) override {
        Out([&] { to_->SetProgressText(text); });
    }
    void Settle(float value) override {
        Out([&] { to_->Settle(value); });
    }
    void HideProgress() override {
        Out([&] { to_->HideProgress(); });
    }
    void CommitPanel(device::WindowHandle panel) override {
        Out([&] { to_->CommitPanel(panel); });
    }
    std::int32_t ComboValue(device::WindowHandle combo) override {
        return Out([&] { return to_->ComboValue(combo); });
    }
    void EditGotFocus(device::WindowHandle edit) override {
        Out([&] { to_->EditGotFocus(edit); });
    }

  private:
    std::shared_ptr<device::SupportObject> to_;
};

class RoomyApplication final : public device::HostApplication {
  public:
    explicit RoomyApplication(std::shared_ptr<device::HostApplication> to) : to_(std::move(to)) {}
    void SetCaption(const std::wstring& caption) override {
        Out([&] { to_->SetCaption(caption); });
    }
    void CloseAddOn() override {
        Out([&] { to_->CloseAddOn(); });
    }
    void PrepareProgress(std::int32_t argument) override {
        Out([&] { to_->PrepareProgress(argument); });
    }
    std::wstring HelpName() override {
        return Out([&] { return to_->HelpName(); });
    }
    std::int32_t HelpLanguage() override {
        return Out([&] { return to_->HelpLanguage(); });
    }
    std::wstring ExportNameFirst() override {
        return Out([&] { return to_->ExportNameFirst(); });
    }
    std::wstring ExportNameSecond() override {
        return Out([&] { return to_->ExportNameSecond(); });
    }

  private:
    std::shared_ptr<device::HostApplication> to_;
};

class Boxes final : public platform::MessageBoxes {
  public:
    explicit Boxes(platform::MessageBoxes& to) : to_(to) {}
    platform::Answer Show(const platform::MessageBox& box) override {
        return Out([&] { return to_.Show(box); });
    }
    void ShowPlain(const wchar_t* text, const wchar_t* title) noexcept override {
        Out([&] { to_.ShowPlain(text, title); });
    }
    void Beep() override {
        Out([&] { to_.Beep(); });
    }
    void Close() override {
        Out([&] { to_.Close(); });
    }

  private:
    platform::MessageBoxes& to_;
};

class Debug final : public platform::DebugOutput {
  public:
    explicit Debug(platform::DebugOutput& to) : to_(to) {}
    void Line(std::wstring_view line) override {
        Out([&] { to_.Line(line); });
    }

  private:
    platform::DebugOutput& to_;
};

/// A posted task that fails is told by whoever runs the queue.
class Pump final : public platform::MessagePump {
  public:
    Pump(platform::MessagePump& to, platform::MessageBoxes& boxes) : to_(to), boxes_(boxes) {}
    platform::Wait PumpUntil(const std::function<bool()>& predicate) override {
        return Out([&] {
            return to_.PumpUntil([&] {
                const Inside inside;
                return predicate();
            });
        });
    }
    void ProcessPending() override {
        Out([&] { to_.ProcessPending(); });
    }
    void Post(std::function<void()> task) override {
        // A queue of the system's grows with the component's memory.
        ::operator delete(::operator new(1));
        Out([&] {
            to_.Post([this, kept = std::move(task)] {
                const Inside inside;
                platform::Guarded(boxes_, L"AddOnControl.Post", kept);
            });
        });
    }
    void Close() override {
        Out([&] { to_.Close(); });
    }

  private:
    platform::MessagePump& to_;
    platform::MessageBoxes& boxes_;
};

class RoomyRegistry final : public platform::Registry {
  public:
    explicit RoomyRegistry(platform::Registry& to) : to_(to) {}
    std::optional<std::wstring> LocalMachineValue(const std::wstring& key, const std::wstring& value) override {
        return Out([&] { return to_.LocalMachineValue(key, value); });
    }

  private:
    platform::Registry& to_;
};

class RoomyDesktop final : public platform::Desktop {
  public:
    explicit RoomyDesktop(platform::Desktop& to) : to_(to) {}
    bool FileExists(const std::wstring& path) override {
        return Out([&] { return to_.FileExists(path); });
    }
    Bytes ReadStart(const std::wstring& path, std::size_t count) override {
        return Out([&] { return to_.ReadStart(path, count); });
    }
    bool RemoveFile(const std::wstring& path) override {
        return Out([&] { return to_.RemoveFile(path); });
    }
    void DuplicateFile(const std::wstring& from, const std::wstring& to) override {
        Out([&] { to_.DuplicateFile(from, to); });
    }
    void StartProcess(const std::wstring& path) override {
        Out([&] { to_.StartProcess(path); });
    }
    void OpenDocument(const std::wstring& path) override {
        Out([&] { to_.OpenDocument(path); });
    }
    std::wstring ChooseSaveFile(const platform::SaveFileRequest& request) override {
        return Out([&] { return to_.ChooseSaveFile(request); });
    }
    std::wstring ComponentFolder() override {
        return Out([&] { return to_.ComponentFolder(); });
    }
    std::wstring TemporaryFolder() override {
        return Out([&] { return to_.TemporaryFolder(); });
    }
    platform::Version ComponentVersion() override {
        return Out([&] { return to_.ComponentVersion(); });
    }

  private:
    platform::Desktop& to_;
};

class Factory final : public device::HostFactory {
  public:
    explicit Factory(device::HostFactory& to) : to_(to) {}
    std::shared_ptr<device::ConfigurationManager> CreateConfigurationManager() override {
        return Out([&] { return std::make_shared<Manager>(to_.CreateConfigurationManager()); });
    }
    std::shared_ptr<device::SupportObject> CreateSupportObject() override {
        return Out([&] { return std::make_shared<Support>(to_.CreateSupportObject()); });
    }

  private:
    device::HostFactory& to_;
};

class Roomy final : public Surroundings {
  public:
    explicit Roomy(Bench& bench)
        : boxes_(bench.platform.boxes), debug_(bench.platform.debug), pump_(bench.platform.pump, boxes_),
          registry_(bench.platform.registry), desktop_(bench.platform.desktop), factory_(bench.host),
          application_(std::make_shared<RoomyApplication>(bench.host.Application())) {
        state_.current = bench.state.current;
    }
    addon::ProcessState& State() override { return state_; }
    std::shared_ptr<device::HostApplication> Application() override { return application_; }
    void Enter(const std::function<void()>& call) override {
        const Inside inside;
        call();
    }

  private:
    Boxes boxes_;
    Debug debug_;
    Pump pump_;
    RoomyRegistry registry_;
    RoomyDesktop desktop_;
    Factory factory_;
    std::shared_ptr<RoomyApplication> application_;
    platform::Services services_{boxes_, debug_, pump_, registry_, desktop_};
    addon::ProcessState state_{services_, factory_};
};

} // namespace

std::unique_ptr<Surroundings> RoomyHost(Bench& bench) {
    return std::make_unique<Roomy>(bench);
}

} // namespace orv::test
