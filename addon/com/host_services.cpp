// The host's application and support objects, and the factory.
#include "addon/com/automation.h"
#include "addon/com/failure.h"
#include "addon/com/host_adapters.h"
#include "addon/com/values.h"

namespace orv::addon::com {
namespace {

class ApplicationAdapter final : public device::HostApplication {
  public:
    explicit ApplicationAdapter(ComPtr<IOrvApplication> application) : application_(std::move(application)) {}

    void SetCaption(const std::wstring& caption) override {
        Call(application_, &IOrvApplication::put_Caption, Bstr(caption).Get());
    }
    void CloseAddOn() override { Call(application_, &IOrvApplication::CloseAddOn); }
    void PrepareProgress(std::int32_t argument) override {
        Call(application_, &IOrvApplication::PrepareProgress, LONG{argument});
    }
    std::wstring HelpName() override { return Text(&IOrvApplication::get_HelpName); }
    std::int32_t HelpLanguage() override {
        LONG language = 0;
        Call(application_, &IOrvApplication::get_HelpLanguage, &language);
        return language;
    }
    std::wstring ExportNameFirst() override { return Text(&IOrvApplication::get_ExportNameFirst); }
    std::wstring ExportNameSecond() override { return Text(&IOrvApplication::get_ExportNameSecond); }

  private:
    template <typename Method>
    std::wstring Text(Method method) {
        Bstr text;
        Call(application_, method, text.Put());
        return text.Text();
    }

    ComPtr<IOrvApplication> application_;
};

// Window handles keep their value in 32 bits in both word sizes.
LONG AsLong(device::WindowHandle window) {
    return static_cast<LONG>(window);
}

class SupportAdapter final : public device::SupportObject {
  public:
    explicit SupportAdapter(ComPtr<IOrvSupport> support) : support_(std::move(support)) {}

    Bytes TextToBytes(const std::wstring& text, std::int32_t conversion, std::int32_t locale) override {
        Variant bytes;
        Call(support_, &IOrvSupport::TextToBytes, Bstr(text).Get(), LONG{conversion}, LONG{locale}, bytes.Put());
        return ToByteArray(bytes.Get());
    }
    std::wstring BytesToText(const Bytes& bytes, std::int32_t conversion, std::int32_t locale) override {
        const Variant array = FromByteArray(bytes);
        Bstr text;
        Call(support_, &IOrvSupport::BytesToText, VARIANT{array.Get()}, LONG{conversion}, LONG{locale}, text.Put());
        return text.Text();
    }
    std::wstring HexByte(std::uint8_t byte) override {
        Bstr text;
        Call(support_, &IOrvSupport::HexByte, byte, text.Put());
        return text.Text();
    }
    std::wstring AppendToList(const std::wstring& list, const std::wstring& item,
                              const std::wstring& separator) override {
        Bstr text;
        Call(support_, &IOrvSupport::AppendToList, Bstr(list).Get(), Bstr(item).Get(), Bstr(separator).Get(),
             text.Put());
        return text.Text();
    }
    std::int32_t Minimum(std::int32_t a, std::int32_t b) override {
        LONG smaller = 0;
        Call(support_, &IOrvSupport::Minimum, LONG{a}, LONG{b}, &smaller);
        return smaller;
    }
    void ResetProgress() override { Call(support_, &IOrvSupport::ResetProgress); }
    void SetProgressOwner(device::WindowHandle owner) override {
        Call(support_, &IOrvSupport::SetProgressOwner, AsLong(owner));
    }
    void ShowProgress(const std::wstring& text, const std::wstring& title) override {
        Call(support_, &IOrvSupport::ShowProgress, Bstr(text).Get(), Bstr(title).Get());
    }
    void SetProgress(float percent) override { Call(support_, &IOrvSupport::SetProgress, percent); }
    void SetProgressText(const std::wstring& text) override {
        Call(support_, &IOrvSupport::SetProgressText, Bstr(text).Get());
    }
    void Settle(float value) override { Call(support_, &IOrvSupport::Settle, value); }
    void HideProgress() override { Call(support_, &IOrvSupport::HideProgress); }
    void CommitPanel(device::WindowHandle panel) override { Call(support_, &IOrvSupport::CommitPanel, AsLong(panel)); }
    std::int32_t ComboValue(device::WindowHandle combo) override {
        LONG value = 0;
        Call(support_, &IOrvSupport::ComboValue, AsLong(combo), &value);
        return value;
    }
    void EditGotFocus(device::WindowHandle edit) override { Call(support_, &IOrvSupport::EditGotFocus, AsLong(edit)); }

  private:
    ComPtr<IOrvSupport> support_;
};

template <typename I>
ComPtr<I> Create(REFCLSID classId) {
    ComPtr<I> made;
    const HRESULT result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, __uuidof(I), made.PutVoid());
    if (FAILED(result))
        throw SystemError(result);
    return made;
}

} // namespace

std::shared_ptr<device::HostApplication> AdaptApplication(ComPtr<IOrvApplication> application) {
    return std::make_shared<ApplicationAdapter>(std::move(application));
}

std::shared_ptr<device::SupportObject> AdaptSupport(ComPtr<IOrvSupport> support) {
    return std::make_shared<SupportAdapter>(std::move(support));
}

std::shared_ptr<device::ConfigurationManager> ComHostFactory::CreateConfigurationManager() {
    return AdaptManager(Create<IOrvConfigurationManager>(CLSID_ConfigurationManager));
}

std::shared_ptr<device::SupportObject> ComHostFactory::CreateSupportObject() {
    return AdaptSupport(Create<IOrvSupport>(CLSID_Support));
}

} // namespace orv::addon::com
