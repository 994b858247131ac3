#include "platform/guarded.h"

#include <new>

#include "text/texts.h"

namespace orv::platform {

void ReportError(MessageBoxes& boxes, std::wstring_view handler, std::int32_t number, std::wstring_view description) {
    MessageBox box;
    box.text.append(handler).append(L"\n").append(std::to_wstring(number)).append(L": ").append(description);
    box.title = text::Load(text::Id::AddOnTitle);
    box.icon = Icon::Critical;
    boxes.Show(box);
}

void ReportCurrentException(MessageBoxes& boxes, std::wstring_view handler) {
    try {
        try {
            throw;
        } catch (const WaitAbandoned&) {
        } catch (const Error& error) {
            ReportError(boxes, handler, error.Number(), error.Description());
        } catch (const std::bad_alloc&) {
            ReportError(boxes, handler, error_number::kOutOfMemory, text::Load(text::Id::ErrOutOfMemory));
        } catch (const std::exception& error) {
            const std::string narrow = error.what();
            ReportError(boxes, handler, error_number::kInvalidArgument, std::wstring(narrow.begin(), narrow.end()));
        }
    } catch (...) {
        // No memory left even for the message: the beep is all that can still be said.
        boxes.Beep();
    }
}

} // namespace orv::platform
