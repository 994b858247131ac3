#include "bench/host_script.h"

#include <stdexcept>
#include <string_view>
#include <utility>

namespace orv::bench {
namespace {

using Call = HostStep::Call;

constexpr std::int32_t kWideToBytes = 128;
constexpr std::int32_t kBytesToWide = 64;
constexpr std::int32_t kUsEnglish = 1033;

/// Splits the arguments of a call from the back, since only the first may hold a comma.
std::vector<std::wstring> Split(std::wstring arguments, int count) {
    std::vector<std::wstring> parts;
    for (; count > 1; --count) {
        const auto comma = arguments.rfind(L", ");
        parts.insert(parts.begin(), arguments.substr(comma + 2));
        arguments.resize(comma);
    }
    parts.insert(parts.begin(), arguments);
    return parts;
}

class LogReader {
  public:
    LogReader(const std::vector<sim::CallGate::Call>& log, const std::vector<device::MIBParameter>& writes)
        : log_(log), write_(writes.begin()) {}

    bool AtEnd() const { return at_ == log_.size(); }

    HostStep Step() {
        HostStep step;
        if (Next("SupportObject.Minimum"))
            return Minimum(step);
        if (Next("HostApplication.PrepareProgress"))
            return Progress(step);
        if (Next("SupportObject.TextToBytes")) {
            step.convertsText = true;
            step.text = Split(Arguments(), 3)[0];
        }
        if (Next("Configuration.AccessLevel")) {
            step.setsLevel = true;
            Expect("Configuration.SetAccessLevel");
            step.level = std::stoi(Arguments());
        }
        FindParameter(step);
        Use(step);
        if (step.setsLevel)
            Expect("Configuration.SetAccessLevel");
        step.convertsBytes = Next("SupportObject.BytesToText");
        return step;
    }

  private:
    bool Next(std::string_view name) {
        if (AtEnd() || log_[at_].name != name)
            return false;
        ++at_;
        return true;
    }
    void Expect(std::string_view name) {
        if (!Next(name))
            throw std::runtime_error("another call than " + std::string(name) + " at " + std::to_string(at_));
    }
    const std::wstring& Arguments() const { return log_[at_ - 1].arguments; }

    HostStep Minimum(HostStep step) const {
        const auto parts = Split(Arguments(), 2);
        step.call = Call::Minimum;
        step.minimumOf[0] = std::stoi(parts[0]);
        step.minimumOf[1] = std::stoi(parts[1]);
        return step;
    }
    HostStep Progress(HostStep step) {
        step.call = Call::Progress;
        Expect("SupportObject.ResetProgress");
        Expect("SupportObject.SetProgressOwner");
        return step;
    }
    void FindParameter(HostStep& step) {
        Expect("Configuration.GetDeviceRecords");
        Expect("DeviceRecords.Record");
        Expect("DeviceRecord.GetParameterTable");
        if (Next("ParameterTable.FindByNumber")) {
            step.number = std::stoi(Arguments());
            return;
        }
        Expect("ParameterTable.FindByPath");
        const auto parts = Split(Arguments(), 2);
        step.path = parts[0];
        step.level = std::stoi(parts[1]);
    }
    void Use(HostStep& step) {
        if (Next("ParameterTable.GetValue")) {
            step.call = Call::GetValue;
            step.element = static_cast<std::int16_t>(std::stoi(Split(Arguments(), 2)[1]));
        } else if (Next("ParameterTable.Describe")) {
            step.call = Call::Describe;
        } else if (Next("ParameterTable.EntryName")) {
            const auto parts = Split(Arguments(), 3);
            step.call = Call::EntryName;
            step.element = static_cast<std::int16_t>(std::stoi(parts[1]));
            step.level = std::stoi(parts[2]);
        } else {
            Expect("ParameterTable.SetValue");
            step.call = Call::SetValue;
            step.value = (write_++)->value;
            step.line = L"  Writing " + step.path + L" = " + device::LogForm(step.value) + L"...";
        }
    }

    const std::vector<sim::CallGate::Call>& log_;
    std::vector<device::MIBParameter>::const_iterator write_;
    std::size_t at_ = 0;
};

void Write(const HostStep& step, const HostObjects& host, device::ParameterTable& table, Lines lines) {
    if (lines == Lines::Prepared)
        host.debug.Line(step.line);
    if (lines == Lines::Built)
        host.debug.Line(L"  Writing " + step.path + L" = " + device::LogForm(step.value) + L"...");
    table.SetValue(table.FindByPath(step.path, step.level), step.value);
    if (lines != Lines::None)
        host.debug.Line(L"  Write OK!");
}

void Read(const HostStep& step, const HostObjects& host, device::ParameterTable& table) {
    const device::EntryHandle entry =
        step.path.empty() ? table.FindByNumber(step.number) : table.FindByPath(step.path, step.level);
    if (step.call == Call::EntryName) {
        table.EntryName(entry, step.element, step.level);
    } else if (step.call == Call::Describe) {
        table.Describe(entry);
    } else {
        const device::Value value = table.GetValue(entry, step.element);
        if (step.convertsBytes)
            host.support.BytesToText(std::get<Bytes>(value), kBytesToWide, kUsEnglish);
    }
}

void AtParameter(const HostStep& step, const HostObjects& host, Lines lines) {
    if (step.convertsText)
        host.support.TextToBytes(step.text, kWideToBytes, kUsEnglish);
    const auto table = host.configuration.GetDeviceRecords()->Record(0, 0)->GetParameterTable(0);
    if (step.call == Call::SetValue)
        Write(step, host, *table, lines);
    else
        Read(step, host, *table);
}

/// The conversion of a read comes after the level is put back; its bytes have to outlive the table.
void ReadUnderLevel(const HostStep& step, const HostObjects& host, Kept* kept) {
    const std::int32_t before = host.configuration.AccessLevel();
    host.configuration.SetAccessLevel(step.level);
    device::Value value;
    {
        const auto table = host.configuration.GetDeviceRecords()->Record(0, 0)->GetParameterTable(0);
        const device::EntryHandle entry =
            step.path.empty() ? table->FindByNumber(step.number) : table->FindByPath(step.path, step.level);
        if (step.call == Call::GetValue)
            value = table->GetValue(entry, step.element);
        else
            table->Describe(entry);
    }
    host.configuration.SetAccessLevel(before);
    if (step.convertsBytes)
        value = host.support.BytesToText(std::get<Bytes>(value), kBytesToWide, kUsEnglish);
    if (kept)
        kept->Keep(std::move(value));
}

} // namespace

void Kept::Keep(device::Value&& value) {
    auto* text = std::get_if<std::wstring>(&value);
    if (text && textCount_ == texts_.size())
        texts_.emplace_back();
    if (!text && numberCount_ == numbers_.size())
        numbers_.emplace_back();
    if (text)
        texts_[textCount_++] = std::move(*text);
    else
        numbers_[numberCount_++] = device::ToInt32(value);
}

std::vector<HostStep> ScriptOf(const std::vector<sim::CallGate::Call>& log,
                               const std::vector<device::MIBParameter>& writes) {
    std::vector<HostStep> steps;
    for (LogReader reader(log, writes); !reader.AtEnd();)
        steps.push_back(reader.Step());
    return steps;
}

void Play(const std::vector<HostStep>& steps, const HostObjects& host, Lines lines, Kept* kept) {
    if (kept)
        kept->Restart();
    for (const HostStep& step : steps) {
        if (step.call == Call::Minimum) {
            host.support.Minimum(step.minimumOf[0], step.minimumOf[1]);
        } else if (step.call == Call::Progress) {
            host.application.PrepareProgress(0);
            host.support.ResetProgress();
            host.support.SetProgressOwner(0);
        } else if (step.setsLevel) {
            ReadUnderLevel(step, host, kept);
        } else {
            AtParameter(step, host, lines);
        }
    }
}

} // namespace orv::bench
