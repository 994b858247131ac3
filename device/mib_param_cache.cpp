#include "device/mib_param_cache.h"

#include <algorithm>

#include "device/mibsap_monitor.h"
#include "platform/guarded.h"
#include "text/excerpt.h"
#include "text/texts.h"

namespace orv::device {
namespace {

using platform::Restoring;
using text::Id;
using text::Load;

// The table's refusals to leave interactive mode that have a message of their own, or none.
constexpr auto kRefusedWithReason = static_cast<std::int32_t>(0x8004040A);
constexpr auto kRefusedSilently = static_cast<std::int32_t>(0x8004040B);
constexpr float kSettleValue = 7.0F;

} // namespace

MIBParamCache::MIBParamCache(DeviceState& state, Keeps keeps)
    : state_(state), access_(state), target_(state.current), keeps_(keeps) {}

void MIBParamCache::Clear() {
    entries_.clear();
    queue_.clear();
    leftOut_.clear();
    withoutEntry_.clear();
    target_ = state_.current;
}

void MIBParamCache::Reserve(std::size_t count, std::size_t characters) {
    queue_.reserve(count);
    entries_.reserve(characters);
}

std::optional<std::wstring> MIBParamCache::NameOf(std::int32_t number, std::int16_t element) {
    try {
        return access_.EntryName(number, element, target_);
    } catch (const Error& error) {
        if (error.Number() != error_number::kSubscript)
            throw;
        return std::nullopt;
    }
}

bool MIBParamCache::HasEntry(std::int32_t number, std::int16_t element) {
    const auto name = NameOf(number, element);
    return name && !name->empty();
}

void MIBParamCache::Add(std::int32_t number, WireType type, Value value, std::int16_t element) {
    if (keeps_ == Keeps::WhatIsLeftOut)
        return;
    const auto name = NameOf(number, element);
    if (!name)
        LeaveOutForWantOfPlace(std::to_wstring(number) + L"[" + std::to_wstring(element) + L"]");
    if (!name || name->empty())
        return;
    const std::wstring& entry = *name;
    queue_.push_back({entries_.size() + entry.size(), Convert(std::move(value), type)});
    try {
        entries_ += entry;
    } catch (...) {
        queue_.pop_back();
        throw;
    }
}

void MIBParamCache::LeaveOut(LeftOut::Why why, std::int32_t number, std::int16_t element, std::wstring reason) {
    // Most of what is marked lies above the level: for all items of a format it is asked once.
    if (std::find(withoutEntry_.begin(), withoutEntry_.end(), number) != withoutEntry_.end())
        return;
    // An element that does not exist is one that was never read, too.
    std::wstring entry =
        NameOf(number, element).value_or(std::to_wstring(number) + L"[" + std::to_wstring(element) + L"]");
    if (entry.empty())
        withoutEntry_.push_back(number);
    else
        leftOut_.push_back({why, number, element, std::move(entry), std::move(reason)});
}

std::wstring_view MIBParamCache::EntryOf(std::size_t position) const {
    const std::size_t begin = position == 0 ? 0 : queue_[position - 1].entryEnd;
    return std::wstring_view(entries_).substr(begin, queue_[position].entryEnd - begin);
}

std::vector<MIBParameter> MIBParamCache::Parameters() const {
    std::vector<MIBParameter> parameters;
    parameters.reserve(queue_.size());
    for (std::size_t i = 0; i < queue_.size(); ++i)
        parameters.push_back({std::wstring(EntryOf(i)), queue_[i].value});
    return parameters;
}

bool MIBParamCache::Save(bool interactive, bool validate) {
    written_ = 0;
    stoppedAt_.clear();
    endError_ = 0;
    if (!state_.application)
        throw Error(error_number::kObjectNotSet);
    state_.application->PrepareProgress(0);
    state_.Support().ResetProgress();
    state_.Support().SetProgressOwner(state_.progressOwner);
    return interactive ? SaveToDevice(validate) : SaveToConfiguration();
}

bool MIBParamCache::SaveToConfiguration() {
    std::wstring entry;
    for (; written_ < queue_.size(); ++written_) {
        entry = EntryOf(written_);
        access_.Write(entry, queue_[written_].value, target_);
    }
    return true;
}

bool MIBParamCache::SaveToDevice(bool validate) {
    lastSapError_ = 0;
    const auto configuration = state_.configuration;
    if (!configuration)
        throw Error(error_number::kObjectNotSet);
    const bool switchedOff = configuration->InteractiveMode();
    if (switchedOff)
        configuration->SetInteractiveMode(false);
    const Restoring restore([&] {
        if (switchedOff)
            configuration->SetInteractiveMode(true);
    });
    // Each host has one of the two switches; the table's is asked only where the configuration's is not on.
    if (!switchedOff && !SwitchTableInteractiveOff())
        return false;
    return Commit(validate);
}

bool MIBParamCache::SwitchTableInteractiveOff() {
    try {
        access_.Table(target_)->SetInteractiveMode(false);
        return true;
    } catch (const Error& error) {
        platform::MessageBox box;
        box.title = Load(Id::ErrorTitle);
        box.icon = platform::Icon::Warning;
        box.text = text::Excerpt(error.Description());
        if (error.Number() == kRefusedSilently)
            return false;
        if (error.Number() != kRefusedWithReason) {
            box.icon = platform::Icon::Critical;
            box.text = Load(Id::InteractiveModeFailed) + text::Excerpt(error.Description()) + L")";
        }
        state_.platform.boxes.Show(box);
        return false;
    }
}

/// The password of an access level; other levels keep the monitor's own.
void MIBParamCache::ConfigureMonitor(COrvMIBSAPMonitor& monitor) {
    static constexpr const wchar_t* kPasswords[] = {L"", L"VLPX", L"RRNN", L"QMVRTK4826"};
    if (target_.accessLevel >= 0 && target_.accessLevel < 4)
        monitor.Password(kPasswords[target_.accessLevel]);
    monitor.DeviceAddress(ParameterAccess::DeviceAddress(target_));
}

bool MIBParamCache::Commit(bool validate) {
    SupportObject& support = state_.Support();
    bool allWritten = false;
    {
        support.ShowProgress(Load(Id::SavingParameters), Load(Id::AddOnTitle));
        // Hidden on every way out: a display left behind would look like a save that still runs.
        const Restoring hide([&] { support.HideProgress(); });
        if (!state_.mibSap)
            state_.mibSap = state_.configuration->GetMibSapService();
        if (!state_.mibSap)
            throw Error(error_number::kObjectNotSet);
        COrvMIBSAPMonitor monitor(state_, target_);
        ConfigureMonitor(monitor);
        if (!monitor.Connect()) {
            state_.common->lastTransportError = monitor.LastError();
            return false;
        }
        {
            const Restoring disconnect([&] { monitor.Disconnect(); });
            if (!monitor.StartSession()) {
                state_.common->lastTransportError = monitor.LastError();
                return false;
            }
            allWritten = WriteAll(monitor);
            if (allWritten) {
                support.SetProgressText(Load(Id::PleaseWait));
                if (!monitor.EndSession(validate ? L"V" : L"P"))
                    state_.common->lastTransportError = endError_ = monitor.LastError();
            }
        }
        support.Settle(kSettleValue);
        state_.platform.pump.ProcessPending();
    }
    // Only a save that wrote everything: after any other the host's values are not the device's.
    if (allWritten)
        access_.Table(target_)->SetInteractiveMode(true);
    return allWritten;
}

bool MIBParamCache::WriteAll(COrvMIBSAPMonitor& monitor) {
    SupportObject& support = state_.Support();
    std::wstring entry;
    while (written_ < queue_.size()) {
        entry = EntryOf(written_);
        const Value& value = queue_[written_].value;
        if (!monitor.SetEntry(entry, value)) {
            lastSapError_ = monitor.LastError();
            stoppedAt_ = entry;
            return false;
        }
        access_.Write(entry, value, target_);
        ++written_;
        support.SetProgress(static_cast<float>(written_) / static_cast<float>(queue_.size()) * 100.0F);
    }
    return true;
}

} // namespace orv::device
