#include "host/com/application_face.h"

#include "host/com/values.h"

namespace orv::host {

STDMETHODIMP ApplicationFace::put_Caption(BSTR caption) {
    return Try([&] { application_->SetCaption(TextOf(caption)); });
}

STDMETHODIMP ApplicationFace::CloseAddOn() {
    return Try([&] { application_->CloseAddOn(); });
}

STDMETHODIMP ApplicationFace::PrepareProgress(LONG argument) {
    return Try([&] { application_->PrepareProgress(argument); });
}

STDMETHODIMP ApplicationFace::get_HelpName(BSTR* name) {
    return Give(name, [&] { return ToBstr(application_->HelpName()); });
}

STDMETHODIMP ApplicationFace::get_HelpLanguage(LONG* language) {
    return Give(language, [&] { return application_->HelpLanguage(); });
}

STDMETHODIMP ApplicationFace::get_ExportNameFirst(BSTR* text) {
    return Give(text, [&] { return ToBstr(application_->ExportNameFirst()); });
}

STDMETHODIMP ApplicationFace::get_ExportNameSecond(BSTR* text) {
    return Give(text, [&] { return ToBstr(application_->ExportNameSecond()); });
}

} // namespace orv::host
