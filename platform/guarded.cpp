#include "platform/guarded.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <new>

#include "text/excerpt.h"
#include "text/texts.h"

namespace orv::platform {
namespace {

constexpr std::size_t kPlainText = 512;

/// A text in place; what does not fit is cut off.
class PlainText {
  public:
    void Append(std::wstring_view part) {
        part = part.substr(0, characters_.size() - 1 - length_);
        std::copy(part.begin(), part.end(), characters_.data() + length_);
        length_ += part.size();
    }
    void Append(std::int32_t number) {
        char digits[16];
        const char* const end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
        for (const char* digit = digits; digit != end; ++digit) {
            const auto wide = static_cast<wchar_t>(*digit);
            Append({&wide, 1});
        }
    }
    const wchar_t* Text() const { return characters_.data(); }

  private:
    std::array<wchar_t, kPlainText> characters_{};
    std::size_t length_ = 0;
};

void ReportPlainly(MessageBoxes& boxes, const HandlerName& handler, std::int32_t number,
                   std::wstring_view description) {
    PlainText text;
    for (const std::wstring_view part :
         {handler.owner, handler.prefix, handler.stem, handler.event, std::wstring_view(L"\n")})
        text.Append(part);
    text.Append(number);
    text.Append(L": ");
    std::array<wchar_t, text::kLongestExcerpt> excerpt;
    text.Append({excerpt.data(), text::ExcerptInto(description, excerpt)});
    std::array<wchar_t, 64> title{};
    text::LoadInto(text::Id::AddOnTitle, title.data(), title.size());
    boxes.ShowPlain(text.Text(), title.data());
}

MessageBox ErrorBox(const HandlerName& handler, std::int32_t number, std::wstring_view description) {
    MessageBox box;
    box.text.append(handler.owner).append(handler.prefix).append(handler.stem).append(handler.event);
    box.text.append(L"\n").append(std::to_wstring(number)).append(L": ");
    text::AppendExcerpt(box.text, description);
    box.title = text::Load(text::Id::AddOnTitle);
    box.icon = Icon::Critical;
    return box;
}

void ReportOutOfMemory(MessageBoxes& boxes, const HandlerName& handler) {
    std::array<wchar_t, 128> description{};
    const std::size_t length = text::LoadInto(text::Id::ErrOutOfMemory, description.data(), description.size());
    ReportPlainly(boxes, handler, error_number::kOutOfMemory, {description.data(), length});
}

void Report(MessageBoxes& boxes, const HandlerName& handler) {
    try {
        throw;
    } catch (const WaitAbandoned&) {
    } catch (const Error& error) {
        ReportError(boxes, handler, error.Number(), error.Description());
    } catch (const std::bad_alloc&) {
        ReportOutOfMemory(boxes, handler);
    } catch (const std::exception& error) {
        const std::string_view narrow = error.what();
        ReportError(boxes, handler, error_number::kInvalidArgument, std::wstring(narrow.begin(), narrow.end()));
    }
}

} // namespace

void ReportError(MessageBoxes& boxes, const HandlerName& handler, std::int32_t number,
                 std::wstring_view description) noexcept {
    try {
        boxes.Show(ErrorBox(handler, number, description));
    } catch (const std::bad_alloc&) {
        ReportPlainly(boxes, handler, number, description);
    } catch (...) {
        // The box itself failed: the sound is all that can still be said.
        boxes.Beep();
    }
}

void ReportCurrentException(MessageBoxes& boxes, const HandlerName& handler) noexcept {
    try {
        Report(boxes, handler);
    } catch (const std::bad_alloc&) {
        ReportOutOfMemory(boxes, handler);
    } catch (...) {
        boxes.Beep();
    }
}

} // namespace orv::platform
