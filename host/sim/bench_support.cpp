#include <algorithm>

#include "host/sim/bench_core.h"
#include "host/sim/code_page.h"
#include "text/bytes.h"
#include "text/error.h"

namespace orv::sim {
namespace {

constexpr std::int32_t kToBytes = 128;
constexpr std::int32_t kToText = 64;
constexpr std::int32_t kLocale = 1033;

void Require(bool condition) {
    if (!condition)
        throw Error(error_number::kInvalidArgument);
}

class BenchSupport final : public device::SupportObject {
  public:
    explicit BenchSupport(std::shared_ptr<HostCore> core) : core_(std::move(core)) {}

    Bytes TextToBytes(const std::wstring& text, std::int32_t conversion, std::int32_t locale) override {
        core_->gate.Enter("SupportObject.TextToBytes", [&] {
            return Arguments({text, std::to_wstring(conversion), std::to_wstring(locale)});
        });
        Require(conversion == kToBytes && locale == kLocale);
        return ToCodePage(std::wstring_view(text));
    }
    std::wstring BytesToText(const Bytes& bytes, std::int32_t conversion, std::int32_t locale) override {
        core_->gate.Enter("SupportObject.BytesToText", [&] {
            return Arguments({text::Hex(bytes), std::to_wstring(conversion), std::to_wstring(locale)});
        });
        Require(conversion == kToText && locale == kLocale);
        return FromCodePage(bytes);
    }
    std::wstring HexByte(std::uint8_t byte) override {
        core_->gate.Enter("SupportObject.HexByte", [&] { return std::to_wstring(byte); });
        return text::Hex2(byte);
    }
    std::wstring AppendToList(const std::wstring& list, const std::wstring& item,
                              const std::wstring& separator) override {
        core_->gate.Enter("SupportObject.AppendToList", [&] { return Arguments({list, item, separator}); });
        return list.empty() ? item : list + separator + item;
    }
    std::int32_t Minimum(std::int32_t a, std::int32_t b) override {
        core_->gate.Enter("SupportObject.Minimum", [&] { return Arguments({std::to_wstring(a), std::to_wstring(b)}); });
        return std::min(a, b);
    }

    void ResetProgress() override {
        core_->gate.Enter("SupportObject.ResetProgress");
        ++core_->progress.resetCount;
        core_->ProgressChanged();
    }
    void SetProgressOwner(device::WindowHandle owner) override {
        core_->gate.Enter("SupportObject.SetProgressOwner", [&] { return std::to_wstring(owner); });
        core_->progress.owner = owner;
        core_->ProgressChanged();
    }
    void ShowProgress(const std::wstring& text, const std::wstring& title) override {
        core_->gate.Enter("SupportObject.ShowProgress", [&] { return Arguments({text, title}); });
        core_->progress.shown = true;
        ++core_->progress.showCount;
        core_->progress.title = title;
        core_->progress.percent = 0;
        RecordText(text);
    }
    void SetProgress(float percent) override {
        core_->gate.Enter("SupportObject.SetProgress", [&] { return std::to_wstring(percent); });
        core_->progress.percent = percent;
        core_->progress.percents.push_back(percent);
        core_->ProgressChanged();
    }
    void SetProgressText(const std::wstring& text) override {
        core_->gate.Enter("SupportObject.SetProgressText", [&] { return text; });
        RecordText(text);
    }
    void Settle(float value) override {
        core_->gate.Enter("SupportObject.Settle", [&] { return std::to_wstring(value); });
        core_->progress.settled.push_back(value);
        core_->ProgressChanged();
    }
    void HideProgress() override {
        core_->gate.Enter("SupportObject.HideProgress");
        core_->progress.shown = false;
        ++core_->progress.hideCount;
        core_->ProgressChanged();
    }

    void CommitPanel(device::WindowHandle panel) override {
        core_->gate.Enter("SupportObject.CommitPanel", [&] { return std::to_wstring(panel); });
        Require(static_cast<bool>(core_->windows.commitPanel));
        core_->windows.commitPanel(panel);
    }
    std::int32_t ComboValue(device::WindowHandle combo) override {
        core_->gate.Enter("SupportObject.ComboValue", [&] { return std::to_wstring(combo); });
        Require(static_cast<bool>(core_->windows.comboValue));
        return core_->windows.comboValue(combo);
    }
    void EditGotFocus(device::WindowHandle edit) override {
        core_->gate.Enter("SupportObject.EditGotFocus", [&] { return std::to_wstring(edit); });
        Require(static_cast<bool>(core_->windows.editGotFocus));
        core_->windows.editGotFocus(edit);
    }

  private:
    void RecordText(const std::wstring& text) {
        core_->progress.text = text;
        core_->progress.texts.push_back(text);
        core_->ProgressChanged();
    }

    std::shared_ptr<HostCore> core_;
};

} // namespace

std::shared_ptr<device::SupportObject> MakeSupport(std::shared_ptr<HostCore> core) {
    return std::make_shared<BenchSupport>(std::move(core));
}

} // namespace orv::sim
