#include "addon/com/in_place_faces.h"

#include "addon/com/control.h"

namespace orv::addon::com {

HRESULT InPlaceFaces::GetWindow(HWND* window) {
    return Answer(
        [&] {
            *window = control_.Pane().Handle();
            return *window ? S_OK : E_FAIL;
        },
        window);
}

HRESULT InPlaceFaces::InPlaceDeactivate() {
    return Run([&] { control_.InPlaceDeactivate(); });
}

HRESULT InPlaceFaces::UIDeactivate() {
    return Run([&] { control_.UIDeactivate(); });
}

HRESULT InPlaceFaces::SetObjectRects(LPCRECT position, LPCRECT clip) {
    if (!position)
        return E_POINTER;
    return Run([&] { control_.Activation().SetRects(*position, clip); });
}

HRESULT InPlaceFaces::TranslateAccelerator(LPMSG message) {
    if (!message)
        return E_POINTER;
    return Run([&] { return control_.Pane().TranslateKey(*message) ? S_OK : S_FALSE; });
}

HRESULT InPlaceFaces::OnDocWindowActivate(BOOL activate) {
    // The document's window came to the front again: the keyboard belongs where it was.
    return Run([&] {
        if (activate)
            control_.Activation().UIActivate(true);
    });
}

} // namespace orv::addon::com
