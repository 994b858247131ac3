#include "host/com/application_face.h"
#include "host/com/values.h"

namespace orv::host {

STDMETHODIMP SupportFace::TextToBytes(BSTR text, LONG conversion, LONG locale, VARIANT* bytes) {
    return Give(bytes, [&] { return ToVariant(support_->TextToBytes(TextOf(text), conversion, locale)).Detach(); });
}

STDMETHODIMP SupportFace::BytesToText(VARIANT bytes, LONG conversion, LONG locale, BSTR* text) {
    return Give(text, [&] { return ToBstr(support_->BytesToText(BytesOf(bytes), conversion, locale)); });
}

STDMETHODIMP SupportFace::HexByte(BYTE value, BSTR* text) {
    return Give(text, [&] { return ToBstr(support_->HexByte(value)); });
}

STDMETHODIMP SupportFace::AppendToList(BSTR list, BSTR item, BSTR separator, BSTR* text) {
    return Give(text, [&] { return ToBstr(support_->AppendToList(TextOf(list), TextOf(item), TextOf(separator))); });
}

STDMETHODIMP SupportFace::Minimum(LONG a, LONG b, LONG* smaller) {
    return Give(smaller, [&] { return support_->Minimum(a, b); });
}

STDMETHODIMP SupportFace::ResetProgress() {
    return Try([&] { support_->ResetProgress(); });
}

STDMETHODIMP SupportFace::SetProgressOwner(LONG window) {
    return Try([&] { support_->SetProgressOwner(window); });
}

STDMETHODIMP SupportFace::ShowProgress(BSTR text, BSTR title) {
    return Try([&] { support_->ShowProgress(TextOf(text), TextOf(title)); });
}

STDMETHODIMP SupportFace::SetProgress(FLOAT percent) {
    return Try([&] { support_->SetProgress(percent); });
}

STDMETHODIMP SupportFace::SetProgressText(BSTR text) {
    return Try([&] { support_->SetProgressText(TextOf(text)); });
}

STDMETHODIMP SupportFace::Settle(FLOAT value) {
    return Try([&] { support_->Settle(value); });
}

STDMETHODIMP SupportFace::HideProgress() {
    return Try([&] { support_->HideProgress(); });
}

STDMETHODIMP SupportFace::CommitPanel(LONG window) {
    return Try([&] { support_->CommitPanel(window); });
}

STDMETHODIMP SupportFace::ComboValue(LONG window, LONG* value) {
    return Give(value, [&] { return support_->ComboValue(window); });
}

STDMETHODIMP SupportFace::EditGotFocus(LONG window) {
    return Try([&] { support_->EditGotFocus(window); });
}

} // namespace orv::host
