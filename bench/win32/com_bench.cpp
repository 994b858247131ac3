// A load and a save through the host's COM objects against the same COM calls made by a bare loop.
#include "platform/win32/system.h"

#include <deque>
#include <memory>

#include "addon/com/automation.h"
#include "addon/com/host_adapters.h"
#include "addon/com/values.h"
#include "bench/host_script.h"
#include "bench/large_device.h"
#include "bench/rig.h"
#include "bench/win32/rows.h"
#include "host/com/application_face.h"
#include "host/com/class_objects.h"
#include "model/out_format_config.h"

namespace orv::bench {
namespace {

using addon::com::Bstr;
using addon::com::ComPtr;
using addon::com::Variant;

constexpr double kAim = 1.10;
constexpr LONG kWideToBytes = 128;
constexpr LONG kBytesToWide = 64;
constexpr LONG kUsEnglish = 1033;

void Must(HRESULT result) {
    Require(SUCCEEDED(result), "a COM call failed");
}

template <typename I>
ComPtr<I> Made(REFCLSID classId) {
    ComPtr<I> made;
    Must(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, __uuidof(I), made.PutVoid()));
    return made;
}

ComPtr<IOrvConfiguration> FirstConfiguration(const ComPtr<IOrvConfigurationManager>& manager) {
    ComPtr<IOrvConfiguration> configuration;
    Must(manager->GetConfiguration(Variant::Missing().Get(), Variant::Missing().Get(), configuration.Put()));
    return configuration;
}

/// One step with what it hands over made beforehand.
struct Step {
    explicit Step(const HostStep& given)
        : step(given), path(given.path), text(given.text), value(addon::com::ToVariant(given.value)) {}
    const HostStep& step;
    Bstr path;
    Bstr text;
    Variant value;
};

class BareLoop {
  public:
    BareLoop(ComPtr<IOrvApplication> application, platform::DebugOutput& debug)
        : application_(std::move(application)), debug_(debug) {}

    void Play(const std::deque<Step>& steps) const {
        for (const Step& step : steps) {
            if (step.step.call == HostStep::Call::Minimum)
                Minimum(step.step);
            else if (step.step.call == HostStep::Call::Progress)
                Progress();
            else
                AtParameter(step);
        }
    }

  private:
    void Minimum(const HostStep& step) const {
        LONG smaller = 0;
        Must(support_->Minimum(step.minimumOf[0], step.minimumOf[1], &smaller));
    }
    void Progress() const {
        Must(application_->PrepareProgress(0));
        Must(support_->ResetProgress());
        Must(support_->SetProgressOwner(0));
    }
    ComPtr<IOrvParameterTable> Table() const {
        ComPtr<IOrvDeviceRecords> records;
        ComPtr<IOrvDeviceRecord> record;
        ComPtr<IOrvParameterTable> table;
        Must(configuration_->GetDeviceRecords(records.Put()));
        Must(records->Record(0, 0, record.Put()));
        Must(record->GetParameterTable(0, table.Put()));
        return table;
    }
    void AtParameter(const Step& step) const {
        if (step.step.convertsText) {
            Variant bytes;
            Must(support_->TextToBytes(step.text.Get(), kWideToBytes, kUsEnglish, bytes.Put()));
        }
        LONG level = 0;
        if (step.step.setsLevel) {
            Must(configuration_->get_AccessLevel(&level));
            Must(configuration_->put_AccessLevel(step.step.level));
        }
        Variant value;
        Use(step, value);
        if (step.step.setsLevel)
            Must(configuration_->put_AccessLevel(level));
        if (step.step.convertsBytes) {
            Bstr text;
            Must(support_->BytesToText(value.Get(), kBytesToWide, kUsEnglish, text.Put()));
        }
    }
    void Use(const Step& step, Variant& value) const {
        const auto table = Table();
        if (step.step.call == HostStep::Call::SetValue) {
            Write(step, *table.Get());
            return;
        }
        const LONG entry = Entry(step, *table.Get());
        Bstr name;
        if (step.step.call == HostStep::Call::EntryName)
            Must(table->EntryName(entry, step.step.element, step.step.level, name.Put()));
        else if (step.step.call == HostStep::Call::Describe)
            Describe(*table.Get(), entry);
        else
            Must(table->GetValue(entry, step.step.element, value.Put()));
    }
    static LONG Entry(const Step& step, IOrvParameterTable& table) {
        LONG entry = 0;
        Must(step.step.path.empty() ? table.FindByNumber(step.step.number, &entry)
                                    : table.FindByPath(step.path.Get(), step.step.level, &entry));
        return entry;
    }
    void Write(const Step& step, IOrvParameterTable& table) const {
        debug_.Line(L"  Writing " + step.step.path + L" = " + device::LogForm(step.step.value) + L"...");
        LONG entry = 0;
        Must(table.FindByPath(step.path.Get(), step.step.level, &entry));
        Must(table.SetValue(entry, step.value.Get()));
        debug_.Line(L"  Write OK!");
    }
    static void Describe(IOrvParameterTable& table, LONG entry) {
        ComPtr<IOrvParameterDescription> description;
        Must(table.Describe(entry, description.Put()));
        LONG number = 0;
        LONG choices = 0;
        VARIANT_BOOL hasRange = VARIANT_FALSE;
        Must(description->get_ElementCount(&number));
        Must(description->get_ChoicesCount(&choices));
        for (LONG i = 0; i < choices; ++i) {
            Bstr label;
            Must(description->get_ChoiceValue(i, &number));
            Must(description->get_ChoiceLabel(i, label.Put()));
        }
        Must(description->get_HasRange(&hasRange));
        Must(description->get_Minimum(&number));
        Must(description->get_Maximum(&number));
        Must(description->get_MaximumStringLength(&number));
    }

    ComPtr<IOrvApplication> application_;
    platform::DebugOutput& debug_;
    ComPtr<IOrvSupport> support_ = Made<IOrvSupport>(CLSID_Support);
    ComPtr<IOrvConfigurationManager> manager_ = Made<IOrvConfigurationManager>(CLSID_ConfigurationManager);
    ComPtr<IOrvConfiguration> configuration_ = FirstConfiguration(manager_);
};

/// The model over the component's adapters, the host's COM faces and the bench host behind them.
struct Both {
    Both() {
        state.application = addon::com::AdaptApplication(Application());
        state.manager = factory.CreateConfigurationManager();
        state.configuration = state.manager->GetConfiguration();
        state.current.accessLevel = 3;
        state.Support();
        loadSteps = ScriptOf(Calls([this] { Load(); }), {});
        Save();
        saveSteps = ScriptOf(Calls([this] { Save(); }), root.Plan().writes);
        for (const HostStep& step : loadSteps)
            load.emplace_back(step);
        for (const HostStep& step : saveSteps)
            save.emplace_back(step);
    }

    ComPtr<IOrvApplication> Application() const {
        return ComPtr<IOrvApplication>(host::Make<host::ApplicationFace>(bench->Application()).Get());
    }
    void Load() { root.Reload(); }
    void Save() { Require(root.Save(false), "the save failed"); }

    std::vector<sim::CallGate::Call> Calls(const Action& action) const {
        bench->Gate().KeepLog(true);
        action();
        bench->Gate().KeepLog(false);
        auto calls = bench->Gate().Log();
        bench->Gate().Reset();
        return calls;
    }
    /// What reaches the bench behind the faces must be the same.
    void Compare(const Action& ours, const Action& theirs) const {
        const auto same = [](const auto& a, const auto& b) { return a.name == b.name && a.arguments == b.arguments; };
        const auto one = Calls(ours);
        const auto other = Calls(theirs);
        Require(std::equal(one.begin(), one.end(), other.begin(), other.end(), same),
                "the bare loop makes other calls than the model");
    }

    DeviceSize size{32, 32, 16, 32};
    std::shared_ptr<sim::BenchHost> bench = std::make_shared<sim::BenchHost>(LargeSystem(size));
    host::ClassObjects classes{bench};
    addon::com::ComHostFactory factory;
    sim::PortablePlatform platform;
    CountingDebug debug;
    platform::Services services{platform.boxes, debug, platform.pump, platform.registry, platform.desktop};
    device::DeviceState state{services, factory};
    model::OutFormatConfig root{state};
    std::vector<HostStep> loadSteps;
    std::vector<HostStep> saveSteps;
    std::deque<Step> load;
    std::deque<Step> save;
};

void Measure(const Rows& rows) {
    Both both;
    const BareLoop loop(both.Application(), both.debug);
    const Sides load{[&] { both.Load(); }, [&] { loop.Play(both.load); }};
    const Sides save{[&] { both.Save(); }, [&] { loop.Play(both.save); }};
    both.Compare(load.ours, load.theirs);
    both.Compare(save.ours, save.theirs);
    rows.Measure({"load through COM, large device", "bare loop of the same COM calls", kAim}, load);
    rows.Measure({"save through COM, large device", "bare loop, builds its debug lines", kAim}, save);
}

} // namespace
} // namespace orv::bench

int main(int argc, char** argv) {
    return orv::bench::Run(argc, argv, orv::bench::Measure);
}
